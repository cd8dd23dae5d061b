// SPDX-License-Identifier: MIT
#include "platform/Shell.h"
#include "platform/macos/shell/MacDock.h"
#include "platform/macos/shell/MacPanelWindows.h"
#include "platform/macos/shell/MacStatusBar.h"

#include <QByteArray>
#include <objc/runtime.h>

namespace lumenvale {

bool isTestHost() { return objc_lookUpClass("XCTestCase") != nullptr; }

Shell makeNativeShell(const ProgramIdentity&)
{
    // Else Qt makes the program the active one whenever it raises a window, the panel included.
    qputenv("QT_MAC_SET_RAISE_PROCESS", "0");
    Shell shell;
    shell.statusBar = std::make_unique<MacStatusBar>();
    shell.dock = std::make_unique<MacDock>();
    shell.panels = std::make_unique<MacPanelWindows>();
    shell.hasMenuBar = true;
    return shell;
}

} // namespace lumenvale
