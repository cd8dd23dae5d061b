// SPDX-License-Identifier: MIT
// A message bus of the test's own, and the turning of the loop until something has happened on it.
#pragma once

#include <QCoreApplication>
#include <QDBusConnection>
#include <QProcess>
#include <QString>
#include <QTemporaryFile>
#include <QTimer>

namespace lumenvale {

class PrivateBus {
public:
    /// Starts a daemon that knows no service to activate, whatever is installed.
    PrivateBus()
    {
        configuration.open();
        configuration.write(
            R"(<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen><auth>EXTERNAL</auth>
            <policy context="default"><allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/></policy></busconfig>)");
        configuration.close();
        daemon.start(QStringLiteral("dbus-daemon"),
                     {QStringLiteral("--config-file=") + configuration.fileName(), QStringLiteral("--nofork"),
                      QStringLiteral("--print-address")});
        if (daemon.waitForStarted() && daemon.waitForReadyRead())
            address = QString::fromUtf8(daemon.readLine()).trimmed();
    }
    ~PrivateBus()
    {
        for (int i = 0; i < connections; ++i)
            QDBusConnection::disconnectFromBus(nameOf(i));
        daemon.terminate();
        daemon.waitForFinished();
    }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    bool isRunning() const { return !address.isEmpty(); }
    /// A new connection, closed with the bus.
    QDBusConnection connect() { return QDBusConnection::connectToBus(address, nameOf(connections++)); }

private:
    QString nameOf(int number) const { return QStringLiteral("%1 %2").arg(address).arg(number); }

    QTemporaryFile configuration;
    QProcess daemon;
    QString address;
    int connections = 0;
};

/// Turns the loop until `condition` holds; false when it does not within the (generous) limit.
template <typename Condition>
bool turnLoopUntil(Condition condition)
{
    bool late = false;
    QTimer limit;
    limit.setSingleShot(true);
    QObject::connect(&limit, &QTimer::timeout, &limit, [&late] { late = true; });
    limit.start(20'000);
    while (!condition() && !late)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return !late;
}

} // namespace lumenvale
