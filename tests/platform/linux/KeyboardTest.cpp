// SPDX-License-Identifier: MIT
#include "platform/KeyTranslation.h"
#include "platform/Platform.h"
#include "platform/linux/keyboard/KeyCodes.h"

#include <QKeyEvent>
#include <gtest/gtest.h>
#include <set>

namespace lumenvale {
namespace {

TEST(KeyCodes, EveryKeyOfAKeyboardHasOneStoredCodeAndTheFunctionKeysHaveTheirs)
{
    // Keyboards with their keypad lie at 1 to 127. Of these keys (conversion keys of PC-type JIS keyboards, Print
    // Screen, Scroll Lock, Pause, power and others) Macintosh keyboards have none, or they are on no keyboard.
    const std::set<std::uint32_t> elsewhere = {70, 84, 85,  90,  91,  92,  93,  94,
                                               95, 99, 101, 112, 116, 118, 119, 120};
    for (std::uint32_t evdev = 1; evdev < 0x300; ++evdev) {
        const std::uint32_t virtualKey = virtualKeyFromEvdev(evdev);
        EXPECT_EQ(evdevFromVirtualKey(virtualKey), evdev);
        EXPECT_TRUE(evdev > 127 || (virtualKey >= foreignKeyBase) == elsewhere.contains(evdev)) << evdev;
        EXPECT_TRUE(virtualKey >= foreignKeyBase || virtualKey < 0x80) << evdev;
    }
    EXPECT_EQ(evdevFromVirtualKey(0x7F), 0u);
    for (std::uint32_t number = 1; number <= 20; ++number) {
        const std::uint32_t expected = number <= 10 ? 58 + number : number <= 12 ? 76 + number : 170 + number;
        EXPECT_EQ(evdevFromVirtualKey(*functionKeyCode(number)), expected) << "F" << number; // KEY_F1 = 59, …
    }
}

TEST(KeyTranslation, GivesThePositionTheModifiersAndTheUnmodifiedCharacter)
{
    const QKeyEvent held(QEvent::KeyPress, Qt::Key_K, Qt::ControlModifier | Qt::MetaModifier, 37 + xKeyCodeOffset,
                         0, 0, "\x0b", true);
    const KeyEvent k = translateKeyEvent(held);
    EXPECT_TRUE(k.isKeyDown && k.isRepeat);
    EXPECT_EQ(k.keyCode, 0x28u);
    EXPECT_EQ(k.modifiers, KeyModifier::control | KeyModifier::command);
    EXPECT_EQ(k.characters, "K");
    const QKeyEvent released(QEvent::KeyRelease, Qt::Key_F5, Qt::ShiftModifier | Qt::AltModifier,
                             63 + xKeyCodeOffset, 0, 0);
    const KeyEvent functionKey = translateKeyEvent(released);
    EXPECT_FALSE(functionKey.isKeyDown);
    EXPECT_EQ(functionKey.modifiers, KeyModifier::shift | KeyModifier::option);
    EXPECT_EQ(functionKey.characters, "");
    for (const Qt::Key key : {Qt::Key_NumLock, Qt::Key_ScrollLock, Qt::Key_CapsLock, Qt::Key_AltGr})
        EXPECT_FALSE(translateKeyEvent({QEvent::KeyPress, key, Qt::NoModifier, 77, 0, 0}).isKeyDown) << key;
}

TEST(NativeWords, NameKeysAsTheyAreLabelledOnPcKeyboards)
{
    const auto label = [](Qt::Key key, quint32 evdev, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        const QKeyEvent press(QEvent::KeyPress, key, modifiers, evdev + xKeyCodeOffset, 0, 0);
        return displayLabel(shortcutFromKeyEvent(translateKeyEvent(press)).value(), nativeWords());
    };
    const auto all = Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier | Qt::MetaModifier;
    EXPECT_EQ(label(Qt::Key_K, 37, all), "Ctrl+Alt+Shift+Super+K");
    EXPECT_EQ(label(Qt::Key_F5, 63, Qt::ControlModifier), "Ctrl+F5");
    EXPECT_EQ(label(Qt::Key_Delete, 111), "Delete");
    EXPECT_EQ(label(Qt::Key_End, 79), "Keypad 1") << "whatever Num Lock makes of it";
    EXPECT_EQ(label(Qt::Key_Print, 99), "Print") << "the keyboard map's name";
    EXPECT_EQ(label(Qt::Key_MediaPlay, 164), "Media Play");
}

} // namespace
} // namespace lumenvale
