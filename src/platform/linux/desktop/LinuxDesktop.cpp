// SPDX-License-Identifier: MIT
// What the desktop gives the program, whether the displays are real or simulated.
#include "base/Identity.h"
#include "platform/Shell.h"
#include "platform/linux/desktop/QtWindowSystem.h"
#include "platform/linux/desktop/RemoteOnBus.h"
#include "platform/linux/displays/WaylandOutputs.h"
#include "platform/linux/portal/PortalAppearance.h"
#include "platform/linux/portal/PortalHotKeys.h"
#include "platform/linux/tray/LinuxStatusBar.h"
#include "platform/linux/x11/LinuxPanelWindows.h"
#include "platform/linux/x11/X11HotKeys.h"
#include "platform/linux/xdg/LauncherDock.h"
#include "platform/linux/xdg/XdgAutostart.h"

#include <QDBusConnection>
#include <QGuiApplication>
#include <algorithm>

namespace lumenvale {

namespace {

std::unique_ptr<HotKeyService> makeHotKeys(const QDBusConnection& bus)
{
    // In a Wayland session even a program that draws through X does not hear the keys meant for others.
    if (!isWaylandSession() && QGuiApplication::platformName() == QLatin1String("xcb"))
        return makeX11HotKeys();
    return makePortalHotKeys(bus);
}

std::unique_ptr<StartupService> makeStartup(const ProgramIdentity& identity)
{
    AutostartPlace place = autostartPlace(identity.identifier, identity.name, identity.command);
    place.formerCommand = place.command;
    place.command.emplace_back("--autostart");
    auto startup = std::make_unique<XdgAutostart>(std::move(place));
    startup->renew();
    return startup;
}

} // namespace

// Desktops decide themselves who comes to the front.
tl::expected<void, std::string> prepareApplication()
{
    const auto isSet = [](const char* name) { return !qEnvironmentVariableIsEmpty(name); };
    constexpr const char* desktops[] = {"DISPLAY", "WAYLAND_DISPLAY", "WAYLAND_SOCKET", "QT_QPA_PLATFORM"};
    // In a Wayland session Qt knows the compositor's usual name.
    if (std::ranges::any_of(desktops, isSet) || qgetenv("XDG_SESSION_TYPE") == "wayland")
        return {};
    return tl::unexpected<std::string>(
        "There is no desktop to show the program on. `lumenvale list` and the other commands "
        "work without one.");
}

bool isTestHost() { return false; } // tests do not run inside other programs here

std::unique_ptr<WindowSystem> makeNativeWindowSystem() { return std::make_unique<QtWindowSystem>(); }

Shell makeNativeShell(const ProgramIdentity& identity)
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    const bool isSimulated = identity.identifier == simulatedIdentifier;
    Shell shell;
    shell.remote = std::make_unique<RemoteOnBus>(bus, identity); // before the program has its name on the bus
    shell.statusBar = std::make_unique<LinuxStatusBar>(bus, QString::fromStdString(identity.identifier));
    shell.dock =
        std::make_unique<LauncherDock>(bus, identity, LauncherEntry(identity, applicationFolders()), isSimulated);
    shell.panels = std::make_unique<LinuxPanelWindows>(identity.identifier);
    shell.appearance = makePortalAppearance(bus);
    shell.startup = makeStartup(identity);
    shell.hotKeys = makeHotKeys(bus);
    return shell;
}

} // namespace lumenvale
