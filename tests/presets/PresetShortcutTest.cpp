// SPDX-License-Identifier: MIT
#include "presets/PresetShortcut.h"

#include <gtest/gtest.h>

namespace lumenvale {
namespace {

PresetShortcut functionShortcut(std::int64_t number)
{
    PresetShortcut shortcut;
    shortcut.functionKey = number;
    return shortcut;
}

KeyEvent keyDown(std::uint32_t code, std::uint32_t modifiers = 0, const char* characters = "")
{
    return {.keyCode = code, .modifiers = modifiers, .characters = characters};
}

TEST(PresetShortcut, FunctionKeysAreOneToTwenty)
{
    EXPECT_EQ(functionKeyCode(1), 122u);
    EXPECT_EQ(functionKeyCode(16), 106u);
    EXPECT_EQ(functionKeyCode(20), 90u);
    for (const std::int64_t number : {INT64_MIN, std::int64_t{0}, std::int64_t{21}, INT64_MAX})
        EXPECT_FALSE(functionKeyCode(number)) << number;
}

TEST(PresetShortcut, LabelsAreTheSameBytesOnEverySystem)
{
    PresetShortcut shortcut = functionShortcut(17);
    shortcut.control = shortcut.option = true;
    EXPECT_EQ(displayLabel(shortcut), "\xE2\x8C\x83\xE2\x8C\xA5"
                                      "F17");
    shortcut = {};
    shortcut.command = shortcut.shift = true;
    shortcut.recordedKeyCode = 40;
    shortcut.recordedKeyLabel = "K";
    EXPECT_EQ(displayLabel(shortcut), "\xE2\x87\xA7\xE2\x8C\x98K");
    shortcut.recordedKeyLabel.reset();
    EXPECT_EQ(displayLabel(shortcut), "⇧⌘Key 40");
    EXPECT_EQ(displayLabel(PresetShortcut()), "Key 0");
    EXPECT_EQ(carbonModifiers(shortcut), 0x300u);
    shortcut.option = shortcut.control = true;
    EXPECT_EQ(carbonModifiers(shortcut), 0x1B00u);
}

TEST(PresetShortcut, CollidesByKeyAndModifiersHoweverTheKeyWasChosen)
{
    PresetShortcut recorded;
    recorded.recordedKeyCode = 122;
    recorded.recordedKeyLabel = "F1";
    EXPECT_TRUE(collide(functionShortcut(1), recorded));
    EXPECT_FALSE(collide(functionShortcut(2), recorded));
    recorded.shift = true;
    EXPECT_FALSE(collide(functionShortcut(1), recorded));
    EXPECT_TRUE(collide(functionShortcut(25), functionShortcut(0))) << "neither has a key";
}

TEST(PresetShortcut, ARecordedKeyKeepsItsCodeItsLabelAndTheFourModifiers)
{
    const auto recorded =
        shortcutFromKeyEvent(keyDown(40, KeyModifier::command | KeyModifier::shift | 0x10000, "k"));
    PresetShortcut expected;
    expected.command = expected.shift = true;
    expected.recordedKeyCode = 40;
    expected.recordedKeyLabel = "K";
    EXPECT_EQ(recorded, expected) << "Caps Lock does not count";

    const auto plain =
        shortcutFromKeyEvent(keyDown(106, KeyModifier::option | KeyModifier::control, "\xEF\x9C\x93"));
    ASSERT_TRUE(plain);
    EXPECT_EQ(plain->functionKey, 16);
    EXPECT_EQ(plain->recordedKeyCode, 106u);
    EXPECT_EQ(displayLabel(*plain), "⌃⌥F16");
}

TEST(PresetShortcut, LabelsSpecialKeysByTheirSignsAndNamelessOnesByTheirCode)
{
    const auto label = [](const KeyEvent& event) { return displayLabel(shortcutFromKeyEvent(event).value()); };
    EXPECT_EQ(label(keyDown(49, KeyModifier::command, " ")), "⌘Space");
    EXPECT_EQ(label(keyDown(escapeKeyCode, KeyModifier::shift, "\x1B")), "⇧⎋");
    EXPECT_EQ(label(keyDown(126, 0, "\xEF\x9C\x80")), "↑");
    EXPECT_EQ(label(keyDown(117)), "⌦");
    EXPECT_EQ(label(keyDown(10)), "Key 10");
    EXPECT_EQ(label(keyDown(41, 0, "Ö")), "Ö");
}

TEST(PresetShortcut, NothingIsRecordedFromModifiersPlainEscapeReleasesAndRepeats)
{
    for (std::uint32_t code = 54; code <= 63; ++code)
        EXPECT_FALSE(shortcutFromKeyEvent(keyDown(code, KeyModifier::shift))) << code;
    EXPECT_FALSE(shortcutFromKeyEvent(keyDown(escapeKeyCode, 0x10000)));
    KeyEvent event = keyDown(40, 0, "k");
    event.isRepeat = true;
    EXPECT_FALSE(shortcutFromKeyEvent(event));
    event.isRepeat = false;
    event.isKeyDown = false;
    EXPECT_FALSE(shortcutFromKeyEvent(event));
}

} // namespace
} // namespace lumenvale
