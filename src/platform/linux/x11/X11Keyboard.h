// SPDX-License-Identifier: MIT
// Which modifier bits of an X server carry which meaning. They are a matter of its keyboard map, so they are
// looked up, and looked up again when the map changes. Main thread only.
#pragma once

#include <cstdint>
#include <vector>
#include <xcb/xcb.h>

namespace lumenvale {

struct X11Modifiers {
    std::uint16_t alt = XCB_MOD_MASK_1;
    std::uint16_t super = XCB_MOD_MASK_4;
    std::uint16_t numLock = XCB_MOD_MASK_2;
    std::uint16_t scrollLock = 0;

    /// The bits that a shortcut is compared by.
    std::uint16_t meaningful() const { return XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | alt | super; }

    /// Every combination of the locks that are mapped, none first.
    std::vector<std::uint16_t> lockCombinations() const;

    /// HotKeyModifier bits as modifier bits of the server.
    std::uint16_t fromHotKeyModifiers(std::uint32_t modifiers) const;
};

X11Modifiers readX11Modifiers(xcb_connection_t* connection);

} // namespace lumenvale
