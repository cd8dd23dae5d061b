// SPDX-License-Identifier: MIT
#include "base/Identity.h"
#include "platform/Shell.h"
#include "platform/macos/shell/MacDock.h"
#include "platform/macos/shell/MacHotKeyService.h"
#include "platform/macos/shell/MacPanelWindows.h"
#include "platform/macos/shell/MacStatusBar.h"
#include "platform/macos/shell/SystemStartupService.h"

#include <QByteArray>
#include <objc/runtime.h>

namespace lumenvale {

tl::expected<void, std::string> prepareApplication()
{
    // Else Qt makes the program the active one when it has started, at login too, and takes the keys from what the
    // user types into.
    qputenv("QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM", "1");
    // The same whenever it raises a window, the panel included.
    qputenv("QT_MAC_SET_RAISE_PROCESS", "0");
    return {};
}

bool isTestHost() { return objc_lookUpClass("XCTestCase") != nullptr; }

std::unique_ptr<WindowSystem> makeNativeWindowSystem() { return nullptr; }

Shell makeNativeShell(const ProgramIdentity& identity)
{
    Shell shell;
    shell.statusBar = std::make_unique<MacStatusBar>();
    shell.dock = std::make_unique<MacDock>();
    shell.panels = std::make_unique<MacPanelWindows>();
    shell.hasDockIcons = true;
    shell.hasMenuBar = true;
    if (identity.identifier == simulatedIdentifier)
        shell.startup = std::make_unique<NoLoginItem>();
    else
        shell.startup = std::make_unique<SystemStartupService>();
    shell.hotKeys = std::make_unique<MacHotKeyService>();
    return shell;
}

} // namespace lumenvale
