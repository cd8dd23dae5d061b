// SPDX-License-Identifier: MIT
#include "platform/linux/LauncherDock.h"
#include "BusCall.h"
#include "platform/linux/X11.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace lumenvale {
namespace {

TEST(LauncherDock, LaunchersReachTheProgramOverTheBus)
{
    const auto bus = tryStartBus();
    if (!bus)
        GTEST_SKIP() << "dbus-daemon is not installed";
    const QTemporaryDir directory;
    const ProgramIdentity identity = {"app.example.Test", "/app/example/Test", "Test", {"/usr/bin/test"}};
    std::vector<std::string> log;
    {
        LauncherDock dock(bus->connect(), identity, LauncherEntry(identity, {directory.path().toStdString(), {}}),
                          true);
        dock.setContent({[&log] { log.push_back("reopen"); }, nullptr,
                         [&log] {
                             return Menu{{"settings",
                                          "Settings…",
                                          false,
                                          false,
                                          [&log] { log.push_back("settings"); },
                                          {"--open-settings"}}};
                         }});
        dock.setActivationPolicy(ActivationPolicy::regular);
        EXPECT_TRUE(QFile::exists(directory.filePath("app.example.Test.desktop")));
        const QDBusConnection launcher = bus->connect();
        const auto call = [&launcher](const QString& method, const QVariantList& arguments) {
            auto message = QDBusMessage::createMethodCall("app.example.Test", "/app/example/Test",
                                                          "org.freedesktop.Application", method);
            message.setArguments(arguments);
            EXPECT_EQ(callOverBus(launcher, message).type(), QDBusMessage::ReplyMessage) << method.toStdString();
        };
        call("Activate", {QVariantMap()});
        call("Open", {QStringList("file:///x"), QVariantMap()});
        call("ActivateAction", {"settings", QVariantList(), QVariantMap()});
        call("ActivateAction", {"nonsense", QVariantList(), QVariantMap()});
    }
    EXPECT_EQ(log, (std::vector<std::string>{"reopen", "reopen", "settings"}));
    EXPECT_FALSE(QFile::exists(directory.filePath("app.example.Test.desktop"))); // it was a temporary one
}

TEST(X11, RoundedRegionCoversEveryRowOnceAndIsSymmetrical)
{
    const auto region = x11::roundedRegion(340, 284, 12);
    ASSERT_EQ(region.size(), 4u * (12 + 1 + 12));
    std::uint32_t next = 0;
    for (std::size_t i = 0; i < region.size(); i += 4) {
        EXPECT_EQ(region[i + 1], next);
        EXPECT_EQ(region[i + 2], 340 - 2 * region[i]);
        EXPECT_EQ(region[i], region[region.size() - 4 - i]);
        next += region[i + 3];
    }
    EXPECT_EQ(next, 284u);
    EXPECT_GT(region[0], 6u); // the corner
    EXPECT_EQ(x11::roundedRegion(10, 10, 0), (std::vector<std::uint32_t>{0, 0, 10, 10}));
}

} // namespace
} // namespace lumenvale
