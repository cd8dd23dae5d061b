// SPDX-License-Identifier: MIT
#include "platform/linux/displays/Logind.h"
#include "support/PrivateBus.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <atomic>
#include <cerrno>
#include <gtest/gtest.h>
#include <thread>

namespace lumenvale {
namespace {

/// The caller's session, as the login service shows it: keeps the calls, answers with `error` where there is one.
struct SessionStandIn final : QDBusVirtualObject {
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        calls << message.member();
        for (const QVariant& each : message.arguments())
            calls << each.toString();
        return connection.send(error.isEmpty() ? message.createReply() : message.createErrorReply(error, ""));
    }

    QStringList calls;
    QString error;
};

struct LogindTest : testing::Test {
    LogindTest() { service.registerVirtualObject("/org/freedesktop/login1/session/auto", &session); }

    /// Calls from another thread, as the hardware thread does, while this one answers.
    int setBrightness()
    {
        std::atomic<bool> isDone = false;
        int result = -1;
        std::thread caller([&] {
            result = setBrightnessThroughLogind(client, "intel_backlight", 515);
            isDone = true;
            QMetaObject::invokeMethod(
                &session, [] {}, Qt::QueuedConnection); // turns the waiting loop
        });
        EXPECT_TRUE(turnLoopUntil([&] { return isDone.load(); }));
        caller.join();
        return result;
    }

    PrivateBus bus;
    QDBusConnection service = bus.connect();
    QDBusConnection client = bus.connect();
    SessionStandIn session;
};

TEST_F(LogindTest, TheSessionIsAskedForTheRawValueAndItsRefusalIsSaid)
{
    EXPECT_EQ(setBrightness(), ENOTCONN) << "no service yet";
    EXPECT_EQ(setBrightnessThroughLogind(QDBusConnection("none"), "x", 1), ENOTCONN);
    ASSERT_TRUE(service.registerService("org.freedesktop.login1"));
    EXPECT_EQ(setBrightness(), 0);
    EXPECT_EQ(session.calls, (QStringList{"SetBrightness", "backlight", "intel_backlight", "515"}));
    session.error = "org.freedesktop.DBus.Error.AccessDenied";
    EXPECT_EQ(setBrightness(), EACCES);
    session.error = "org.freedesktop.DBus.Error.UnknownMethod"; // an old service
    EXPECT_EQ(setBrightness(), ENOSYS);
}

TEST_F(LogindTest, GoingToSleepAndWakingAreReported)
{
    ASSERT_TRUE(service.registerService("org.freedesktop.login1"));
    std::vector<bool> seen;
    const SleepWatch watch(client, [&seen](bool isGoingToSleep) { seen.push_back(isGoingToSleep); });
    for (const bool begins : {true, false}) {
        QDBusMessage signal = QDBusMessage::createSignal("/org/freedesktop/login1",
                                                         "org.freedesktop.login1.Manager", "PrepareForSleep");
        service.send(signal << begins);
    }
    EXPECT_TRUE(turnLoopUntil([&] { return seen.size() == 2; }));
    EXPECT_EQ(seen, (std::vector<bool>{true, false}));
}

} // namespace
} // namespace lumenvale
