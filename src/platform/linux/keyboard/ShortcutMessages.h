// SPDX-License-Identifier: MIT
// Why a shortcut does not work, in whole sentences for the user.
#pragma once

#include "presets/PresetShortcut.h"

#include <string>

namespace lumenvale {

/// The desktop or another program has the combination.
std::string takenMessage(const PresetShortcut& shortcut);
/// Another preset has it.
std::string usedTwiceMessage(const PresetShortcut& shortcut);
/// No keyboard here has the key, or the desktop cannot be told of it.
std::string unknownKeyMessage(const PresetShortcut& shortcut);
/// No shortcut can work; `cause` ends the sentence, without its full stop.
std::string couldNotStartMessage(const std::string& cause);

} // namespace lumenvale
