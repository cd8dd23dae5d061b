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

/// Another program has the key combination; the value is that of the system in whose form shortcuts are stored.
constexpr std::int32_t hotKeyExistsStatus = -9878;
/// The key does not exist on this system's keyboards.
constexpr std::int32_t hotKeyInvalidStatus = -9879;
/// There is no connection to the window system.
constexpr std::int32_t hotKeyServiceAbsentStatus = -9880;

/// Connects to the X server named by `displayName`, or by the environment when it is null.
std::unique_ptr<HotKeyService> makeX11HotKeys(const char* displayName = nullptr);

} // namespace lumenvale
