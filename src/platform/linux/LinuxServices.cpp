// SPDX-License-Identifier: MIT
// The parts of the native platform that simulated displays use too.
#include "base/Identity.h"
#include "platform/Platform.h"
#include "platform/linux/portal/PortalHotKeys.h"
#include "platform/linux/x11/X11HotKeys.h"
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

} // namespace lumenvale
