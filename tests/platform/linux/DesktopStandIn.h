// SPDX-License-Identifier: MIT
// The desktop's programs, portal, status notifier watcher and login service, on a bus of the test's own.
#pragma once

#include "support/PrivateBus.h"

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QDBusVirtualObject>
#include <functional>
#include <gtest/gtest.h>

namespace lumenvale {

constexpr char portalName[] = "org.freedesktop.portal.Desktop";

/// Notes every call and answers it by its member's name; with nothing where `answers` has no such name.
struct DesktopStandIn final : QDBusVirtualObject {
    explicit DesktopStandIn(const QDBusConnection& connection) : bus(connection)
    {
        for (const char* path :
             {"/org/freedesktop/portal/desktop", "/StatusNotifierWatcher", "/org/freedesktop/login1/session/auto"})
            bus.registerVirtualObject(path, this, QDBusConnection::SubPath);
    }
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection&) override
    {
        calls.append(message);
        if (!error.isEmpty())
            return bus.send(message.createErrorReply(error, ""));
        const auto answer = answers.value(message.member());
        return bus.send(answer ? message.createReply(answer(message)) : message.createReply());
    }
    void emitSignal(const QString& path, const QString& interface, const QString& name,
                    const QVariantList& arguments)
    {
        auto signal = QDBusMessage::createSignal(path, interface, name);
        signal.setArguments(arguments);
        bus.send(signal);
    }
    /// Gets or loses a name, and returns once `client` has heard of it.
    void setRunning(const QString& name, bool isRunning, const QDBusConnection& client)
    {
        bool isHeard = false;
        const QDBusServiceWatcher watcher(name, client, QDBusServiceWatcher::WatchForOwnerChange);
        QObject::connect(&watcher, &QDBusServiceWatcher::serviceOwnerChanged, [&] { isHeard = true; });
        EXPECT_TRUE(isRunning ? bus.registerService(name) : bus.unregisterService(name));
        EXPECT_TRUE(turnLoopUntil([&] { return isHeard; }));
    }

    QMap<QString, std::function<QVariant(const QDBusMessage&)>> answers;
    QString error; ///< the answer to everything, where it is not empty
    QList<QDBusMessage> calls;

private:
    QDBusConnection bus;
};

struct DesktopBusTest : testing::Test {
    void SetUp() override
    {
        if (!bus.isRunning())
            GTEST_SKIP() << "dbus-daemon is not installed";
    }

    PrivateBus bus;
    QDBusConnection host = bus.connect();    ///< the desktop's
    QDBusConnection program = bus.connect(); ///< ours
    DesktopStandIn desktop{host};
};

} // namespace lumenvale
