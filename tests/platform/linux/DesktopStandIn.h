// SPDX-License-Identifier: MIT
// The desktop's programs, portal and status notifier watcher, on a bus of the test's own.
#pragma once

#include "BusCall.h"

#include <QDBusServiceWatcher>
#include <QDBusVirtualObject>
#include <gtest/gtest.h>
#include <map>
#include <optional>

namespace lumenvale {

constexpr char portalName[] = "org.freedesktop.portal.Desktop";
constexpr char watcherName[] = "org.kde.StatusNotifierWatcher";

/// Notes every call and answers it by its member's name; with nothing where `answers` has no such name.
class DesktopStandIn final : public QDBusVirtualObject {
public:
    explicit DesktopStandIn(const QDBusConnection& connection) : bus(connection)
    {
        for (const char* path : {"/org/freedesktop/portal/desktop", "/StatusNotifierWatcher"})
            bus.registerVirtualObject(path, this, QDBusConnection::SubPath);
    }
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection&) override
    {
        calls.append(message);
        const auto answer = answers.find(message.member().toStdString());
        bus.send(answer == answers.end() ? message.createReply() : message.createReply(answer->second(message)));
        return true;
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
    std::vector<std::string> members() const
    {
        std::vector<std::string> all;
        for (const QDBusMessage& each : calls)
            all.push_back(each.member().toStdString());
        return all;
    }

    std::map<std::string, std::function<QVariant(const QDBusMessage&)>> answers;
    QList<QDBusMessage> calls;

private:
    QDBusConnection bus;
};

struct DesktopBusTest : testing::Test {
    void SetUp() override
    {
        if (!bus)
            GTEST_SKIP() << "dbus-daemon is not installed";
        host.emplace(bus->connect());
        program.emplace(bus->connect());
        desktop.emplace(*host);
    }

    const std::unique_ptr<PrivateBus> bus = tryStartBus();
    std::optional<QDBusConnection> host;    ///< the desktop's connection
    std::optional<QDBusConnection> program; ///< ours
    std::optional<DesktopStandIn> desktop;
};

} // namespace lumenvale
