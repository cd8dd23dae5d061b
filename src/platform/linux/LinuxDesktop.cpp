// SPDX-License-Identifier: MIT
// What the desktop gives the program, whether the displays are real or simulated.
#include "base/Identity.h"
#include "platform/Platform.h"
#include "platform/Shell.h"
#include "platform/linux/portal/PortalAppearance.h"
#include "platform/linux/portal/PortalHotKeys.h"
#include "platform/linux/tray/LinuxStatusBar.h"
#include "platform/linux/x11/LinuxPanelWindows.h"
#include "platform/linux/x11/X11HotKeys.h"
#include "platform/linux/xdg/LauncherDock.h"
#include "platform/linux/xdg/XdgAutostart.h"
#include "platform/qt/ProgramFile.h"

#include <QDBusConnection>
#include <QGuiApplication>

namespace lumenvale {

std::unique_ptr<StartupService> makeNativeStartupService(const PlatformOptions& options)
{
    std::vector<std::string> command{programFile()};
    if (!options.simulationFolder)
        return std::make_unique<XdgAutostart>(
            autostartPlace(applicationIdentifier, applicationName, std::move(command)));
    command.insert(command.end(), {"--simulate", *options.simulationFolder});
    return std::make_unique<XdgAutostart>(
        autostartPlace(simulatedIdentifier, std::string(applicationName) + " (Simulated)", std::move(command)));
}

std::unique_ptr<HotKeyService> makeNativeHotKeyService(const PlatformOptions& options)
{
    if (!options.hasWindowSystem)
        return nullptr;
    // Under Wayland an X server may run beside the desktop, but hears no keys meant for others.
    if (QGuiApplication::platformName() == QLatin1String("xcb"))
        return makeX11HotKeys();
    return makePortalHotKeys(QDBusConnection::sessionBus());
}

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
