// SPDX-License-Identifier: MIT
#include "platform/linux/displays/Logind.h"
#include "support/PrivateBus.h"

#include <QDBusContext>
#include <QDBusError>
#include <QDBusMessage>
#include <atomic>
#include <cerrno>
#include <gtest/gtest.h>
#include <thread>

namespace lumenvale {

/// The caller's session, as the login service shows it.
class SessionStandIn final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Session")

public:
    QStringList calls;
    QString error;

public Q_SLOTS:
    void SetBrightness(const QString& subsystem, const QString& name, quint32 value)
    {
        calls.append(subsystem + ' ' + name + ' ' + QString::number(value));
        if (!error.isEmpty())
            sendErrorReply(error, "Refused");
    }
};

namespace {

class LogindTest : public testing::Test {
protected:
    LogindTest()
    {
        service.registerObject("/org/freedesktop/login1/session/auto", &session, QDBusConnection::ExportAllSlots);
    }

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

TEST_F(LogindTest, TheSessionIsAskedForTheRawValue)
{
    ASSERT_TRUE(service.registerService("org.freedesktop.login1"));
    EXPECT_EQ(setBrightness(), 0);
    EXPECT_EQ(session.calls, QStringList{"backlight intel_backlight 515"});
    session.error = "org.freedesktop.DBus.Error.AccessDenied";
    EXPECT_EQ(setBrightness(), EACCES);
    session.error = "org.freedesktop.DBus.Error.UnknownMethod"; // an old service
    EXPECT_EQ(setBrightness(), ENOSYS);
}

TEST_F(LogindTest, WithoutTheServiceOrTheBusItIsSaidSo)
{
    EXPECT_EQ(setBrightness(), ENOTCONN);
    EXPECT_EQ(setBrightnessThroughLogind(QDBusConnection("none"), "x", 1), ENOTCONN);
}

TEST_F(LogindTest, GoingToSleepAndWakingAreReported)
{
    ASSERT_TRUE(service.registerService("org.freedesktop.login1"));
    std::vector<bool> seen;
    const SleepWatch watch(client, [&seen](bool isGoingToSleep) { seen.push_back(isGoingToSleep); });
    for (const bool begins : {true, false}) {
        QDBusMessage signal = QDBusMessage::createSignal("/org/freedesktop/login1",
                                                         "org.freedesktop.login1.Manager", "PrepareForSleep");
        signal << begins;
        service.send(signal);
    }
    EXPECT_TRUE(turnLoopUntil([&] { return seen.size() == 2; }));
    EXPECT_EQ(seen, (std::vector<bool>{true, false}));
}

} // namespace
} // namespace lumenvale

#include "LogindTest.moc"
