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
    const auto run = [&](QStringList arguments, QByteArray& out, QByteArray& err) {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* name :
             {"DISPLAY", "WAYLAND_DISPLAY", "WAYLAND_SOCKET", "QT_QPA_PLATFORM", "XDG_SESSION_TYPE"})
            environment.remove(name);
        environment.insert("LC_ALL", "de_DE.UTF-8");
        environment.insert("XDG_DATA_HOME", "/dev/null");
        process.setProcessEnvironment(environment);
        process.start(LUMENVALE_PROGRAM, arguments);
        process.waitForFinished();
        out = process.readAllStandardOutput();
        err = process.readAllStandardError();
        return process.exitCode();
    };
    QByteArray out, err;
    EXPECT_EQ(run({"--simulate", folder, "--verbose", "set", "Panel", "-0.5%"}, out, err), 0);
    EXPECT_EQ(out, "Panel: Hardware brightness verified at 62.0%.\n");
    EXPECT_TRUE(err.contains("native write"));
    EXPECT_EQ(run({"--simulate", "/nowhere", "list"}, out, err), 2);
    EXPECT_EQ(err, "There is no folder /nowhere.\n");
    EXPECT_EQ(run({"--simulate", folder, "--apply-preset", "Typo"}, out, err), 3);
    EXPECT_EQ(err, "There is no preset \"Typo\".\n");
    EXPECT_EQ(run({"--simulate", folder}, out, err), 1);
    EXPECT_TRUE(err.startsWith("There is no desktop to show the program on. "));
    EXPECT_EQ(run({"--show-panel"}, out, err), 1) << "there is no folder for the lock";
    EXPECT_EQ(err, "The folder /dev/null/app.lumenvale.Lumenvale cannot be used: Not a directory (20).\n");
    EXPECT_EQ(files.monitor("1.json").at("native").at("brightness").get<double>(), 0.62);
}

TEST(Program, CopiesThatAreStartedAtOnceAllMakeTheirStep)
{
    MonitorFolder files;
    files.write("1.json", R"({"name": "Panel", "native": {"brightness": 0.2, "maximum": 15}})");
    files.write("2.json", R"({"name": "Desk", "ddc": {"maximum": 100, "current": 20}})");
    QProcess processes[5];
    for (QProcess& each : processes)
        each.start(LUMENVALE_PROGRAM, {"--simulate", QString::fromStdString(files.path()), "set", "all", "+3%"});
    for (QProcess& each : processes) {
        EXPECT_TRUE(each.waitForFinished());
        EXPECT_EQ(each.exitCode(), 0) << each.readAllStandardError().toStdString();
    }
    EXPECT_EQ(files.monitor("1.json").at("native").at("brightness").get<double>(), 8.0 / 15) << "five levels";
    EXPECT_EQ(files.monitor("2.json").at("ddc").at("current").get<int>(), 35);
}

} // namespace
} // namespace lumenvale
