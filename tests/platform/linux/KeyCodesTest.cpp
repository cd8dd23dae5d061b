// SPDX-License-Identifier: MIT
#include "platform/linux/keyboard/KeyCodes.h"

#include "presets/PresetShortcut.h"

#include <QKeyEvent>
#include <gtest/gtest.h>
#include <set>
#include <vector>

#include "platform/KeyTranslation.h"

namespace lumenvale {
namespace {

TEST(KeyCodes, TheTableIsABijection)
{
    for (const KeyCodePair& pair : keyCodePairs()) {
        EXPECT_EQ(virtualKeyFromEvdev(pair.evdev), pair.virtualKey);
        EXPECT_EQ(evdevFromVirtualKey(pair.virtualKey), pair.evdev);
        EXPECT_LT(pair.virtualKey, 0x80u);
    }
    for (std::uint32_t evdev = 1; evdev < 0x300; ++evdev)
        EXPECT_EQ(evdevFromVirtualKey(virtualKeyFromEvdev(evdev)), evdev);
    EXPECT_EQ(evdevFromVirtualKey(0x7F), 0u);
}

TEST(KeyCodes, EveryFunctionKeyOfTheStoredFormIsTheKernelsFunctionKey)
{
    constexpr std::uint32_t firstTen = 59; // KEY_F1
    for (std::uint32_t number = 1; number <= 20; ++number) {
        const std::uint32_t expected = number <= 10   ? firstTen + number - 1
                                       : number <= 12 ? 87 + number - 11   // KEY_F11
                                                      : 183 + number - 13; // KEY_F13
        EXPECT_EQ(evdevFromVirtualKey(*functionKeyCode(number)), expected) << "F" << number;
    }
}

TEST(KeyCodes, CoversTheKeysOfEveryKindOfKeyboard)
{
    std::vector<std::uint32_t> missing;
    // Keyboards with their keypad lie at 1 to 127. Of these keys (conversion keys of PC-type JIS keyboards, Print
    // Screen, Scroll Lock, Pause, power and others) Macintosh keyboards have none, or they are on no keyboard.
    const std::set<std::uint32_t> elsewhere = {70, 84, 85,  90,  91,  92,  93,  94,
                                               95, 99, 101, 112, 116, 118, 119, 120};
    for (std::uint32_t evdev = 1; evdev <= 127; ++evdev) {
        if (virtualKeyFromEvdev(evdev) >= foreignKeyBase && !elsewhere.contains(evdev))
            missing.push_back(evdev);
    }
    EXPECT_TRUE(missing.empty()) << "kernel code " << (missing.empty() ? 0 : missing.front());
}

TEST(KeyTranslation, GivesThePositionTheModifiersAndTheUnmodifiedCharacter)
{
    constexpr quint32 keyK = 37 + xKeyCodeOffset;
    const QKeyEvent event(QEvent::KeyPress, Qt::Key_K, Qt::ControlModifier | Qt::MetaModifier, keyK, 0, 0, "\x0b",
                          true);
    const KeyEvent translated = translateKeyEvent(event);
    EXPECT_TRUE(translated.isKeyDown && translated.isRepeat);
    EXPECT_EQ(translated.keyCode, 0x28u);
    EXPECT_EQ(translated.modifiers, KeyModifier::control | KeyModifier::command);
    EXPECT_EQ(translated.characters, "K");
}

TEST(KeyTranslation, AKeyWithoutACharacterHasNone)
{
    constexpr quint32 keyF5 = 63 + xKeyCodeOffset;
    const QKeyEvent event(QEvent::KeyRelease, Qt::Key_F5, Qt::ShiftModifier | Qt::AltModifier, keyF5, 0, 0);
    const KeyEvent translated = translateKeyEvent(event);
    EXPECT_FALSE(translated.isKeyDown);
    EXPECT_EQ(translated.modifiers, KeyModifier::shift | KeyModifier::option);
    EXPECT_EQ(translated.characters, "");
}

} // namespace
} // namespace lumenvale
