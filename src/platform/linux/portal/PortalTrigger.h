// SPDX-License-Identifier: MIT
// A shortcut in the notation of the desktop portal ("CTRL+ALT+F5"; the freedesktop.org shortcuts specification).
#pragma once

#include "presets/PresetShortcut.h"

#include <string>

namespace lumenvale {

/// Empty when the notation has no name for the key. The key is named after what it types on an ANSI keyboard: the
/// notation has no other way to name a position.
std::string portalTrigger(const PresetShortcut& shortcut);

} // namespace lumenvale
