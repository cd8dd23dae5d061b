// SPDX-License-Identifier: MIT
// A keyboard shortcut in its stored form, and the pure rules on it. Key codes and modifier masks are those of
// the Macintosh virtual keyboard on every system, so that presets can be carried between systems.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace lumenvale {

struct Words;

struct PresetShortcut {
    std::int64_t functionKey = 0; ///< 1 to 20; 0 for a recorded key
    bool command = false;
    bool option = false;
    bool control = false;
    bool shift = false;
    std::optional<std::uint32_t> recordedKeyCode;
    std::optional<std::string> recordedKeyLabel;

    bool operator==(const PresetShortcut& other) const = default;
};

/// Modifier bits of a key event.
namespace KeyModifier {
constexpr std::uint32_t shift = 0x20000;
constexpr std::uint32_t control = 0x40000;
constexpr std::uint32_t option = 0x80000;
constexpr std::uint32_t command = 0x100000;
constexpr std::uint32_t mask = 0x1E0000; ///< all four
} // namespace KeyModifier

/// Modifier bits of a system-wide hot key.
namespace HotKeyModifier {
constexpr std::uint32_t command = 0x100;
constexpr std::uint32_t shift = 0x200;
constexpr std::uint32_t option = 0x800;
constexpr std::uint32_t control = 0x1000;
} // namespace HotKeyModifier

constexpr std::uint32_t escapeKeyCode = 53;

/// A key event as every window system can describe it.
struct KeyEvent {
    bool isKeyDown = true;
    bool isRepeat = false;
    std::uint32_t keyCode = 0;   ///< Macintosh virtual key code
    std::uint32_t modifiers = 0; ///< KeyModifier bits; others are ignored
    /// What the key types without modifiers, in UTF-8; may be empty. The maker of the event, who has the system's
    /// Unicode tables, upper-cases it; of what comes in lower case, only ASCII letters are upper-cased here.
    std::string characters;
    std::string keyName; ///< what the keyboard map calls a key that types nothing, in UTF-8; may be empty
};

/// The virtual key code of function key 1 to 20; none for other numbers.
std::optional<std::uint32_t> functionKeyCode(std::int64_t functionKey);

std::optional<std::uint32_t> keyCode(const PresetShortcut& shortcut);

/// HotKeyModifier bits.
std::uint32_t carbonModifiers(const PresetShortcut& shortcut);

/// "⌃⌥F17", "⇧⌘K", in the words of a Linux desktop "Shift+Super+K".
std::string displayLabel(const PresetShortcut& shortcut, const Words& words);

/// True when both mean the same key with the same modifiers; two shortcuts without a key code count as equal.
bool collide(const PresetShortcut& a, const PresetShortcut& b);

/// The shortcut that a key event records, or none when the event is not usable as one.
std::optional<PresetShortcut> shortcutFromKeyEvent(const KeyEvent& event);

} // namespace lumenvale
