// SPDX-License-Identifier: MIT
#include "platform/KeyTranslation.h"

#include "platform/linux/keyboard/KeyCodes.h"

#include <QKeyEvent>
#include <QKeySequence>
#include <QString>

namespace lumenvale {

namespace {

/// Qt numbers keys by the character they type, in upper case; other keys begin here.
constexpr int firstNonCharacterKey = 0x01000000;

std::uint32_t modifierBits(Qt::KeyboardModifiers modifiers)
{
    std::uint32_t bits = 0;
    if (modifiers.testFlag(Qt::ShiftModifier))
        bits |= KeyModifier::shift;
    if (modifiers.testFlag(Qt::ControlModifier))
        bits |= KeyModifier::control;
    if (modifiers.testFlag(Qt::AltModifier))
        bits |= KeyModifier::option;
    if (modifiers.testFlag(Qt::MetaModifier))
        bits |= KeyModifier::command;
    return bits;
}

/// Keys that only change what others mean, wherever the layout has them.
bool isModifierOrLock(int key)
{
    return (key >= Qt::Key_Shift && key <= Qt::Key_ScrollLock) ||
           (key >= Qt::Key_Super_L && key <= Qt::Key_Super_R) ||
           (key >= Qt::Key_Hyper_L && key <= Qt::Key_Hyper_R) || key == Qt::Key_AltGr ||
           key == Qt::Key_Mode_switch;
}

} // namespace

KeyEvent translateKeyEvent(const QKeyEvent& event)
{
    KeyEvent result;
    // A modifier or a lock by itself is no key to record.
    const bool isPressed = event.type() == QEvent::KeyPress || event.type() == QEvent::ShortcutOverride;
    result.isKeyDown = isPressed && !isModifierOrLock(event.key());
    result.isRepeat = event.isAutoRepeat();
    const std::uint32_t scanCode = event.nativeScanCode(); // an X key code on X11 and on Wayland
    if (scanCode >= xKeyCodeOffset)
        result.keyCode = virtualKeyFromEvdev(scanCode - xKeyCodeOffset);
    result.modifiers = modifierBits(event.modifiers());
    if (event.key() > 0 && event.key() < firstNonCharacterKey)
        result.characters = QString(QChar(event.key())).toUpper().toStdString();
    else if (event.key() != 0 && event.key() != Qt::Key_unknown)
        result.keyName = QKeySequence(event.key()).toString(QKeySequence::PortableText).toStdString();
    return result;
}

} // namespace lumenvale
