// SPDX-License-Identifier: MIT
// Turns Qt's key events into the form in which shortcuts are recorded. Defined once per system, since only the
// system knows which key was pressed.
#pragma once

#include "presets/PresetShortcut.h"

class QKeyEvent;

namespace lumenvale {

/// `characters` is what the key types without modifiers but Shift, in upper case.
KeyEvent translateKeyEvent(const QKeyEvent& event);

} // namespace lumenvale
