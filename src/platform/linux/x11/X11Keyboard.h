// SPDX-License-Identifier: MIT
// The keyboard of an X server: which modifier bits carry which meaning, which keys are down, when its map changes.
// Main thread only.
#pragma once

#include "presets/PresetShortcut.h"

#include <cstdint>
#include <vector>
#include <xcb/xcb.h>

namespace lumenvale {

/// The bits are a matter of the keyboard's map, so they are looked up, and looked up again when the map changes.
struct X11Modifiers {
    std::uint16_t alt = XCB_MOD_MASK_1;
    std::uint16_t super = XCB_MOD_MASK_4;
    std::uint16_t numLock = XCB_MOD_MASK_2;
    std::uint16_t scrollLock = 0;

    /// The bits that a shortcut is compared by.
    std::uint16_t meaningful() const { return XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | alt | super; }

    /// Every combination of the locks that are mapped, none first.
    std::vector<std::uint16_t> lockCombinations() const;

    /// The bits of a shortcut's modifiers: Option is Alt, Command is Super.
    std::uint16_t of(const PresetShortcut& shortcut) const;
};

X11Modifiers readX11Modifiers(xcb_connection_t* connection);

/// Asks for an event when the keyboard's map changes, and for key presses without releases between them while a
/// key repeats. Returns the type of the events, or 0 where the server lacks the XKB extension.
std::uint8_t selectX11KeyboardEvents(xcb_connection_t* connection);

/// Whether the key is down now.
bool isX11KeyDown(xcb_connection_t* connection, xcb_keycode_t key);

} // namespace lumenvale
