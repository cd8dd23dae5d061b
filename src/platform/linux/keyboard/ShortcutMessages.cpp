// SPDX-License-Identifier: MIT
#include "platform/linux/keyboard/ShortcutMessages.h"

#include "platform/Platform.h"

namespace lumenvale {

std::string takenMessage(const PresetShortcut& shortcut)
{
    return displayLabel(shortcut, nativeWords()) + " is already used by the desktop or another program.";
}

std::string usedTwiceMessage(const PresetShortcut& shortcut)
{
    return displayLabel(shortcut, nativeWords()) + " is already used by another preset.";
}

std::string unknownKeyMessage(const PresetShortcut& shortcut)
{
    return displayLabel(shortcut, nativeWords()) +
           " uses a key that this desktop does not know. Record another one.";
}

std::string couldNotStartMessage(const std::string& cause)
{
    return "Keyboard shortcuts could not start: " + cause + ".";
}

} // namespace lumenvale
