// SPDX-License-Identifier: MIT
#include "presets/PresetShortcut.h"
#include "base/Words.h"

#include <gtest/gtest.h>

namespace lumenvale {
namespace {

KeyEvent keyDown(std::uint32_t code, std::uint32_t modifiers = 0, const char* characters = "")
{
    return {.keyCode = code, .modifiers = modifiers, .characters = characters};
}

TEST(PresetShortcut, FunctionKeysAreOneToTwentyAndCollideWithTheSameKeyRecorded)
{
    EXPECT_EQ(functionKeyCode(16), 106u);
    EXPECT_EQ(functionKeyCode(20), 90u);
    for (const std::int64_t number : {INT64_MIN, std::int64_t{0}, std::int64_t{21}, INT64_MAX})
        EXPECT_FALSE(functionKeyCode(number)) << number;
    const PresetShortcut f1{.functionKey = 1};
    PresetShortcut recorded{.recordedKeyCode = 122, .recordedKeyLabel = "F1"};
    EXPECT_TRUE(collide(f1, recorded));
    EXPECT_FALSE(collide({.functionKey = 2}, recorded));
    recorded.shift = true;
    EXPECT_FALSE(collide(f1, recorded));
    EXPECT_TRUE(collide({.functionKey = 25}, {})) << "neither has a key";
}

TEST(PresetShortcut, ARecordedKeyKeepsItsCodeItsLabelAndTheFourModifiers)
{
    using namespace KeyModifier;
    struct Row {
        KeyEvent event;
        const char* label; ///< null: not recorded
        std::uint32_t carbon;
    };
    const Row rows[] = {
        {keyDown(40, command | shift | 0x10000, "k"), "\xE2\x87\xA7\xE2\x8C\x98K", 0x300}, // with Caps Lock
        {keyDown(106, option | control, "\xEF\x9C\x93"), "\xE2\x8C\x83\xE2\x8C\xA5\x46\x31\x36", 0x1800},
        {keyDown(49, command, " "), "⌘Space", 0x100},
        {keyDown(escapeKeyCode, shift, "\x1B"), "⇧⎋", 0x200},
        {keyDown(126, 0, "\xEF\x9C\x80"), "↑", 0},
        {keyDown(10), "Key 10", 0},
        {keyDown(41, 0, "Ö"), "Ö", 0},
        {keyDown(53, 0x10000), nullptr, 0},
        {keyDown(54, shift), nullptr, 0},
        {keyDown(63, shift), nullptr, 0},
        {{.isKeyDown = false, .keyCode = 40}, nullptr, 0},
        {{.isRepeat = true, .keyCode = 40}, nullptr, 0},
    };
    for (const Row& row : rows) {
        const auto recorded = shortcutFromKeyEvent(row.event);
        ASSERT_EQ(recorded.has_value(), row.label != nullptr) << row.event.keyCode;
        if (!recorded)
            continue;
        EXPECT_EQ(displayLabel(*recorded, portableWords), row.label);
        EXPECT_EQ(carbonModifiers(*recorded), row.carbon) << row.label;
        EXPECT_EQ(recorded->recordedKeyCode, row.event.keyCode);
        EXPECT_EQ(recorded->functionKey, row.event.keyCode == 106 ? 16 : 0);
    }
    PresetShortcut nameless = *shortcutFromKeyEvent(keyDown(40, command, "k"));
    nameless.recordedKeyLabel.reset();
    EXPECT_EQ(displayLabel(nameless, portableWords), "⌘Key 40");
    EXPECT_EQ(displayLabel(PresetShortcut(), portableWords), "Key 0");
}

} // namespace
} // namespace lumenvale
