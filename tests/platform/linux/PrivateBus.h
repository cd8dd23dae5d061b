// SPDX-License-Identifier: MIT
// A session bus of the test's own, and calls on it that turn the event loop until they are answered.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QEventLoop>
#include <QProcess>
#include <QString>
#include <gtest/gtest.h>

namespace lumenvale {

class PrivateBus {
public:
    PrivateBus()
    {
        daemon.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
        if (daemon.waitForStarted() && daemon.waitForReadyRead())
            address = QString::fromUtf8(daemon.readLine()).trimmed();
    }
    ~PrivateBus()
    {
        daemon.kill();
        daemon.waitForFinished();
    }

    bool isRunning() const { return !address.isEmpty(); }
    /// A further connection; `name` must be new in the process.
    QDBusConnection connect(const QString& name) const { return QDBusConnection::connectToBus(address, name); }

    /// Calls a method of another connection of this process and waits for its answer.
    static QDBusMessage call(const QDBusConnection& from, const QDBusMessage& message)
    {
        QEventLoop loop;
        QDBusPendingCallWatcher watcher(from.asyncCall(message));
        QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
        loop.exec();
        return watcher.reply();
    }

private:
    QProcess daemon;
    QString address;
};

} // namespace lumenvale
