// SPDX-License-Identifier: MIT
// The tests, or one of the processes that they start.
#include "SavingProcess.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (const auto status = lumenvale::runSavingProcess(QCoreApplication::arguments()))
        return *status;
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
