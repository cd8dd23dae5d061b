// SPDX-License-Identifier: MIT
// The tests, or the process that one of them starts: it sets the keys PREFIX1 to PREFIXn in the preferences FILE,
// each with a save of its own.
#include "platform/qt/JsonUserDefaults.h"
#include "support/ManualClock.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 5 && arguments[1] == "--save-keys") {
        lumenvale::ManualClock clock;
        lumenvale::JsonUserDefaults defaults(arguments[2].toStdString(), "", clock, nullptr);
        for (int i = 1; i <= arguments[4].toInt(); ++i) {
            defaults.set(arguments[3].toStdString() + std::to_string(i), i);
            defaults.flush();
        }
        return 0;
    }
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
