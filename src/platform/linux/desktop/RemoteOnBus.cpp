// SPDX-License-Identifier: MIT
#include "platform/linux/desktop/RemoteOnBus.h"

#include "displays/RunningProgram.h"
#include "platform/linux/bus/ProgramOnBus.h"

#include <utility>

namespace lumenvale {

namespace {

constexpr char refusedError[] = "app.lumenvale.Lumenvale.Error.Refused";

} // namespace

DisplaysAdaptor::DisplaysAdaptor(QObject* parent, const QDBusConnection& bus, const std::string& simulationFolder)
    : QDBusAbstractAdaptor(parent), bus(bus), simulationFolder(QString::fromStdString(simulationFolder))
{
}

QString DisplaysAdaptor::displays() const
{
    return content.displays ? QString::fromStdString(content.displays()) : QString(unknownDisplays);
}

void DisplaysAdaptor::Set(const QString& display, const QString& level, const QDBusMessage& call)
{
    answer(call, [this, display, level] { return content.set(display.toStdString(), level.toStdString()); });
}

void DisplaysAdaptor::Apply(const QString& preset, const QDBusMessage& call)
{
    answer(call, [this, preset] { return content.apply(preset.toStdString()); });
}

void DisplaysAdaptor::answer(const QDBusMessage& call, const Request& request)
{
    call.setDelayedReply(true); // Qt leaves the answer to us
    if (!content.set) {
        waiting.emplace_back(call, request);
        return;
    }
    const auto outcome = request();
    if (!call.isReplyRequired())
        return;
    bus.send(outcome ? call.createReply()
                     : call.createErrorReply(refusedError, QString::fromStdString(outcome.error())));
}

void DisplaysAdaptor::setContent(RemoteContent newContent)
{
    content = std::move(newContent);
    for (const auto& [call, request] : std::exchange(waiting, {}))
        answer(call, request);
}

RemoteOnBus::RemoteOnBus(const QDBusConnection& bus, const ProgramIdentity& identity)
    : bus(bus), path(QString::fromStdString(identity.objectPath) + displaysObject),
      adaptor(new DisplaysAdaptor(&object, bus, identity.simulationFolder))
{
    this->bus.registerObject(path, &object, QDBusConnection::ExportAdaptors);
}

RemoteOnBus::~RemoteOnBus() { bus.unregisterObject(path); }

void RemoteOnBus::setContent(RemoteContent content) { adaptor->setContent(std::move(content)); }

void RemoteOnBus::displaysChanged()
{
    const QString now = adaptor->displays();
    if (std::exchange(lastTold, now) != now)
        Q_EMIT adaptor->Changed(now);
}

} // namespace lumenvale

#include "moc_RemoteOnBus.cpp"
