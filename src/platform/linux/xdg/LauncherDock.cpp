// SPDX-License-Identifier: MIT
#include "platform/linux/xdg/LauncherDock.h"

#include "platform/linux/xdg/ApplicationAdaptor.h"

#include <utility>

namespace lumenvale {

LauncherDock::LauncherDock(QDBusConnection connection, ProgramIdentity named, LauncherEntry file, bool temporary)
    : bus(std::move(connection)), identity(std::move(named)), entry(std::move(file)), isTemporary(temporary)
{
    new ApplicationAdaptor(&object, content);
    bus.registerObject(QString::fromStdString(identity.objectPath), &object, QDBusConnection::ExportAdaptors);
    bus.registerService(QString::fromStdString(identity.identifier));
}

LauncherDock::~LauncherDock()
{
    bus.unregisterService(QString::fromStdString(identity.identifier));
    bus.unregisterObject(QString::fromStdString(identity.objectPath));
    if (isTemporary)
        entry.withdraw();
}

void LauncherDock::setContent(DockContent next) { content = std::move(next); }

void LauncherDock::setActivationPolicy(ActivationPolicy policy)
{
    isShown = policy == ActivationPolicy::regular;
    menuChanged();
}

void LauncherDock::menuChanged()
{
    if (content.menu)
        entry.update(content.menu(), isShown);
}

} // namespace lumenvale
