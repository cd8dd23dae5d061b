// SPDX-License-Identifier: MIT
// The program itself, started as a user starts it.
#include "support/MonitorFolder.h"

#include <QProcess>
#include <gtest/gtest.h>

namespace lumenvale {
namespace {

struct Ended {
    int status = -1;
    std::string out;
    std::string err;
};

Ended runProgram(const QStringList& arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(name);
    environment.insert("LC_ALL", "de_DE.UTF-8");
    process.setProcessEnvironment(environment);
    process.start(LUMENVALE_PROGRAM, arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), process.readAllStandardOutput().toStdString(),
            process.readAllStandardError().toStdString()};
}

TEST(Program, GetsAndSetsWithoutAWindowSystem)
{
    MonitorFolder files;
    files.write("1.json", R"({"name": "Panel", "native": {"brightness": 0.625}})");
    const QString folder = QString::fromStdString(files.path());
    EXPECT_EQ(runProgram({"--simulate", folder, "get", "Panel"}).out, "62.5%\n");
    const Ended set = runProgram({"--simulate", folder, "--verbose", "set", "Panel", "-0.5%"});
    EXPECT_EQ(set.status, 0);
    EXPECT_EQ(set.out, "Panel: Hardware brightness verified at 62.0%.\n");
    EXPECT_NE(set.err.find("native write"), std::string::npos) << set.err;
    EXPECT_EQ(files.monitor("1.json").at("native").at("brightness"), 0.62);
    EXPECT_EQ(runProgram({"--simulate", folder, "get", "Office"}).status, 3);
}

TEST(Program, EndsWithTwoAfterWrongUse)
{
    for (const QStringList& arguments : {QStringList{"dance"}, QStringList{"set", "all", "much"},
                                         QStringList{"--simulate", "/nowhere", "list"}}) {
        const Ended ended = runProgram(arguments);
        EXPECT_EQ(ended.status, 2) << arguments.join(' ').toStdString();
        EXPECT_EQ(ended.out, "");
        EXPECT_NE(ended.err, "");
    }
}

} // namespace
} // namespace lumenvale
