// SPDX-License-Identifier: MIT
// System-wide shortcuts under X11: passive grabs on a connection of its own. Main thread only.
//
// A grab names an exact set of modifiers, so each shortcut is grabbed once for every state of Caps Lock, Num Lock
// and Scroll Lock. The server refuses a grab that another client holds; all grabs of the shortcut are then given
// back.
#pragma once

#include "presets/HotKeyService.h"

#include <memory>

namespace lumenvale {

/// Connects to the X server named by `displayName`, or by the environment when it is null.
std::unique_ptr<HotKeyService> makeX11HotKeys(const char* displayName = nullptr);

} // namespace lumenvale
