// SPDX-License-Identifier: MIT
#include "platform/Shell.h"
#include "platform/macos/MacDock.h"
#include "platform/macos/MacPanelWindows.h"
#include "platform/macos/MacStatusBar.h"

#include <objc/runtime.h>

namespace lumenvale {

bool isTestHost() { return objc_lookUpClass("XCTestCase") != nullptr; }

Shell makeNativeShell(const ProgramIdentity&)
{
    Shell shell;
    shell.statusBar = std::make_unique<MacStatusBar>();
    shell.dock = std::make_unique<MacDock>();
    shell.panels = std::make_unique<MacPanelWindows>();
    return shell;
}

} // namespace lumenvale
