// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QStandardPaths>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
