// SPDX-License-Identifier: MIT
// The program itself, started as a user starts it, without a window system.
#include "support/MonitorFolder.h"

#include <QProcess>
#include <gtest/gtest.h>

namespace lumenvale {
namespace {

TEST(Program, EndsWithItsStatusAndWritesNumbersAlikeInEveryLanguage)
{
    MonitorFolder files;
    files.write("1.json", R"({"name": "Panel", "native": {"brightness": 0.625}})");
    const QString folder = QString::fromStdString(files.path());
    const struct {
        QStringList arguments;
        int status;
        std::string out;
        std::string err;
    } rows[] = {
        {{"--simulate", folder, "get", "Panel"}, 0, "62.5%\n", ""},
        {{"--simulate", folder, "--verbose", "set", "Panel", "-0.5%"},
         0,
         "Panel: Hardware brightness verified at 62.0%.\n",
         "native write"},
        {{"--simulate", folder, "get", "Office"}, 3, "", "There is no display \"Office\".\n"},
        {{"dance"}, 2, "", "dance"},
        {{"--simulate", "/nowhere", "list"}, 2, "", "There is no folder /nowhere.\n"},
        {{"--simulate", "/nowhere"}, 2, "", "There is no folder /nowhere.\n"},
    };
    for (const auto& row : rows) {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            environment.remove(name);
        environment.insert("LC_ALL", "de_DE.UTF-8");
        process.setProcessEnvironment(environment);
        process.start(LUMENVALE_PROGRAM, row.arguments);
        ASSERT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitCode(), row.status) << row.arguments.join(' ').toStdString();
        EXPECT_EQ(process.readAllStandardOutput().toStdString(), row.out);
        EXPECT_NE(process.readAllStandardError().toStdString().find(row.err), std::string::npos) << row.err;
    }
    EXPECT_EQ(files.monitor("1.json").at("native").at("brightness"), 0.62);
}

} // namespace
} // namespace lumenvale
