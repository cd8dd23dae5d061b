// SPDX-License-Identifier: MIT
#include "platform/linux/xdg/LauncherDock.h"

#include <chrono>
#include <utility>

namespace lumenvale {

namespace {

/// After the last change: each writing has launchers read the entries of all programs again.
constexpr std::chrono::seconds writeDelay(1);

void keepActivationToken(const QVariantMap& platformData)
{
    const QByteArray token = platformData.value("activation-token").toString().toUtf8();
    if (!token.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", token); // where Qt looks for it
}

} // namespace

ApplicationAdaptor::ApplicationAdaptor(QObject* parent, const DockContent& content)
    : QDBusAbstractAdaptor(parent), content(content)
{
}

void ApplicationAdaptor::Activate(const QVariantMap& platformData)
{
    keepActivationToken(platformData);
    if (content.reopen)
        content.reopen();
}

void ApplicationAdaptor::Open(const QStringList&, const QVariantMap& platformData) { Activate(platformData); }

void ApplicationAdaptor::ActivateAction(const QString& action, const QVariantList&,
                                        const QVariantMap& platformData)
{
    if (!content.menu)
        return;
    keepActivationToken(platformData);
    for (const MenuEntry& each : content.menu()) {
        if (!each.id.empty() && each.id == action.toStdString()) {
            each.action();
            return;
        }
    }
}

LauncherDock::LauncherDock(const QDBusConnection& bus, const ProgramIdentity& identity, LauncherEntry entry,
                           bool isTemporary)
    : bus(bus), identity(identity), entry(std::move(entry)), isTemporary(isTemporary)
{
    writeLater.setSingleShot(true);
    writeLater.setInterval(writeDelay);
    QObject::connect(&writeLater, &QTimer::timeout, &writeLater, [this] { writeEntry(); });
    new ApplicationAdaptor(&object, content);
    this->bus.registerObject(QString::fromStdString(identity.objectPath), &object,
                             QDBusConnection::ExportAdaptors);
    this->bus.registerService(QString::fromStdString(identity.identifier));
}

LauncherDock::~LauncherDock()
{
    bus.unregisterService(QString::fromStdString(identity.identifier));
    bus.unregisterObject(QString::fromStdString(identity.objectPath));
    if (isTemporary)
        entry.withdraw();
}

void LauncherDock::setContent(DockContent newContent)
{
    if (writeLater.isActive())
        writeEntry(); // while there still is a menu to ask
    content = std::move(newContent);
}

void LauncherDock::setActivationPolicy(ActivationPolicy policy)
{
    isShown = policy == ActivationPolicy::regular;
    writeEntry();
}

void LauncherDock::menuChanged() { writeLater.start(); }

void LauncherDock::writeEntry()
{
    writeLater.stop();
    if (content.menu)
        entry.update(content.menu(), isShown);
}

} // namespace lumenvale

#include "moc_LauncherDock.cpp"
