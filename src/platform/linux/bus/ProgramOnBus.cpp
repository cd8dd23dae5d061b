// SPDX-License-Identifier: MIT
#include "platform/linux/bus/ProgramOnBus.h"

#include "base/Identity.h"
#include "platform/Platform.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QTimer>
#include <QVariantMap>
#include <utility>

namespace lumenvale {

ProgramOnBus::ProgramOnBus(std::function<QDBusConnection()> connect, Place place)
    : connect(std::move(connect)), place(std::move(place))
{
}

void ProgramOnBus::observe(Observer newObserver)
{
    observer = std::move(newObserver);
    bus = connect();
    watcher.emplace(place.service, *bus, QDBusServiceWatcher::WatchForOwnerChange);
    QObject::connect(&*watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &ProgramOnBus::ask);
    bus->connect(place.service, place.path, displaysInterface, "Changed", this, SLOT(receive(QString)));
    ask();
}

/// A call must not start the program, which is there to be started by its user.
void ProgramOnBus::ask()
{
    isOurs = false;
    if (!bus->isConnected()) { // calls would never be answered
        QTimer::singleShot(0, this, [this] { tell(std::nullopt); });
        return;
    }
    auto call =
        QDBusMessage::createMethodCall(place.service, place.path, "org.freedesktop.DBus.Properties", "GetAll");
    call << QString(displaysInterface);
    call.setAutoStartService(false);
    auto* const reply = new QDBusPendingCallWatcher(bus->asyncCall(call), this);
    QObject::connect(reply, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        const QDBusPendingReply<QVariantMap> properties = *finished;
        isOurs = !properties.isError() && properties.value().value("Folder").toString() == place.folder;
        tell(isOurs ? std::optional(properties.value().value("Displays").toString().toStdString()) : std::nullopt);
    });
}

void ProgramOnBus::receive(const QString& displays)
{
    if (isOurs)
        tell(displays.toStdString());
}

void ProgramOnBus::tell(const std::optional<std::string>& displays)
{
    if (observer)
        observer(displays);
}

std::unique_ptr<RunningProgram> makeNativeRunningProgram(const PlatformOptions& options)
{
    const bool isSimulated = options.simulationFolder.has_value();
    return std::make_unique<ProgramOnBus>(
        QDBusConnection::sessionBus,
        ProgramOnBus::Place{isSimulated ? simulatedIdentifier : applicationIdentifier,
                            QString(isSimulated ? simulatedObjectPath : applicationObjectPath) + displaysObject,
                            QString::fromStdString(options.simulationFolder.value_or(""))});
}

} // namespace lumenvale

#include "moc_ProgramOnBus.cpp"
