// SPDX-License-Identifier: MIT
#include "base/Identity.h"
#include "platform/Shell.h"
#include "platform/linux/portal/PortalAppearance.h"
#include "platform/linux/tray/LinuxStatusBar.h"
#include "platform/linux/x11/LinuxPanelWindows.h"
#include "platform/linux/xdg/LauncherDock.h"

#include <QDBusConnection>

namespace lumenvale {

bool isTestHost() { return false; } // tests do not run inside other programs here

Shell makeNativeShell(const ProgramIdentity& identity)
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    const bool isSimulated = identity.identifier == simulatedIdentifier;
    Shell shell;
    shell.statusBar = std::make_unique<LinuxStatusBar>(bus, QString::fromStdString(identity.identifier));
    shell.dock =
        std::make_unique<LauncherDock>(bus, identity, LauncherEntry(identity, applicationFolders()), isSimulated);
    shell.panels = std::make_unique<LinuxPanelWindows>();
    shell.appearance = makePortalAppearance(bus);
    return shell;
}

} // namespace lumenvale
