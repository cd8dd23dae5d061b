// SPDX-License-Identifier: MIT
// The keys of a keyboard under their two names: the Macintosh virtual key code, in which shortcuts are stored on
// every system, and the kernel's code (linux/input-event-codes.h), which is also the X key code less 8. Both name
// a position on the keyboard, whatever the layout prints on it. Pure; any thread.
#pragma once

#include <cstdint>
#include <span>

namespace lumenvale {

struct KeyCodePair {
    std::uint16_t virtualKey; ///< Macintosh
    std::uint16_t evdev;
};

/// Every key that both kinds of keyboard have. Each code stands in it once.
std::span<const KeyCodePair> keyCodePairs();

/// A key that Macintosh keyboards do not have is stored as this plus the kernel's code, out of the range of
/// virtual key codes, so that it means no key there.
constexpr std::uint32_t foreignKeyBase = 0x8000;

std::uint32_t virtualKeyFromEvdev(std::uint32_t evdev);

/// 0 (the kernel's reserved code) for a virtual key that no keyboard here has.
std::uint32_t evdevFromVirtualKey(std::uint32_t virtualKey);

/// The X protocol numbers keys from 8.
constexpr std::uint32_t xKeyCodeOffset = 8;

} // namespace lumenvale
