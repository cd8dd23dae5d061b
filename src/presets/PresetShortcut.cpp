// SPDX-License-Identifier: MIT
#include "presets/PresetShortcut.h"

#include "base/Words.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace lumenvale {

namespace {

// Virtual key codes of F1 to F20: kVK_F1 and so on in the Carbon event headers.
constexpr std::array<std::uint32_t, 20> functionKeyCodes = {122, 120, 99,  118, 96,  97,  98, 100, 101, 109,
                                                            103, 111, 105, 107, 113, 106, 64, 79,  80,  90};

struct SpecialKey {
    std::uint32_t code;
    std::string_view label;
};

constexpr SpecialKey specialKeys[] = {
    {36, "↩"},  {48, "⇥"},  {49, "Space"}, {51, "⌫"},  {53, "⎋"},  {76, "⌤"},  {114, "Help"}, {115, "↖"},
    {116, "⇞"}, {117, "⌦"}, {119, "↘"},    {121, "⇟"}, {123, "←"}, {124, "→"}, {125, "↓"},    {126, "↑"},
};

constexpr std::uint32_t firstModifierKeyCode = 54;
constexpr std::uint32_t lastModifierKeyCode = 63;

/// The number of the function key with this code; 0 when it is none.
std::int64_t functionKeyNumber(std::uint32_t code)
{
    const auto found = std::ranges::find(functionKeyCodes, code);
    return found == functionKeyCodes.end() ? 0 : found - functionKeyCodes.begin() + 1;
}

std::string upperCasedAscii(std::string text)
{
    for (char& each : text) {
        if (each >= 'a' && each <= 'z')
            each = static_cast<char>(each - 'a' + 'A');
    }
    return text;
}

std::string keyText(std::uint32_t code) { return "Key " + std::to_string(code); }

std::string recordedLabel(const KeyEvent& event)
{
    const auto special = std::ranges::find(specialKeys, event.keyCode, &SpecialKey::code);
    if (special != std::end(specialKeys))
        return std::string(special->label);
    if (!event.characters.empty())
        return upperCasedAscii(event.characters);
    return event.keyName.empty() ? keyText(event.keyCode) : event.keyName;
}

} // namespace

std::optional<std::uint32_t> functionKeyCode(std::int64_t functionKey)
{
    if (functionKey < 1 || functionKey > static_cast<std::int64_t>(functionKeyCodes.size()))
        return std::nullopt;
    return functionKeyCodes[static_cast<std::size_t>(functionKey - 1)];
}

std::optional<std::uint32_t> keyCode(const PresetShortcut& shortcut)
{
    return shortcut.recordedKeyCode ? shortcut.recordedKeyCode : functionKeyCode(shortcut.functionKey);
}

std::uint32_t carbonModifiers(const PresetShortcut& shortcut)
{
    return (shortcut.command ? HotKeyModifier::command : 0) | (shortcut.shift ? HotKeyModifier::shift : 0) |
           (shortcut.option ? HotKeyModifier::option : 0) | (shortcut.control ? HotKeyModifier::control : 0);
}

std::string displayLabel(const PresetShortcut& shortcut, const Words& words)
{
    std::string label;
    for (const auto& [isHeld, text] :
         {std::pair(shortcut.control, words.control), std::pair(shortcut.option, words.option),
          std::pair(shortcut.shift, words.shift), std::pair(shortcut.command, words.command)}) {
        if (isHeld)
            label += text;
    }
    if (shortcut.functionKey >= 1)
        return label + "F" + std::to_string(shortcut.functionKey);
    const std::uint32_t code = keyCode(shortcut).value_or(0);
    if (const auto key = std::ranges::find(words.keys, code, &KeyName::keyCode); key != words.keys.end())
        return label.append(key->name);
    return label + (shortcut.recordedKeyLabel ? *shortcut.recordedKeyLabel : keyText(code));
}

bool collide(const PresetShortcut& a, const PresetShortcut& b)
{
    return keyCode(a) == keyCode(b) && carbonModifiers(a) == carbonModifiers(b);
}

std::optional<PresetShortcut> shortcutFromKeyEvent(const KeyEvent& event)
{
    if (!event.isKeyDown || event.isRepeat)
        return std::nullopt;
    if (event.keyCode >= firstModifierKeyCode && event.keyCode <= lastModifierKeyCode)
        return std::nullopt;
    if (event.keyCode == escapeKeyCode && (event.modifiers & KeyModifier::mask) == 0)
        return std::nullopt;
    PresetShortcut shortcut;
    shortcut.functionKey = functionKeyNumber(event.keyCode);
    shortcut.command = (event.modifiers & KeyModifier::command) != 0;
    shortcut.option = (event.modifiers & KeyModifier::option) != 0;
    shortcut.control = (event.modifiers & KeyModifier::control) != 0;
    shortcut.shift = (event.modifiers & KeyModifier::shift) != 0;
    shortcut.recordedKeyCode = event.keyCode;
    shortcut.recordedKeyLabel = recordedLabel(event);
    return shortcut;
}

} // namespace lumenvale
