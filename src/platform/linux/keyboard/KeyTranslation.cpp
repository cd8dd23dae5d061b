// SPDX-License-Identifier: MIT
#include "platform/KeyTranslation.h"

#include "platform/linux/keyboard/KeyCodes.h"

#include <QKeyEvent>
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

} // namespace

KeyEvent translateKeyEvent(const QKeyEvent& event)
{
    KeyEvent result;
    result.isKeyDown = event.type() == QEvent::KeyPress || event.type() == QEvent::ShortcutOverride;
    result.isRepeat = event.isAutoRepeat();
    const std::uint32_t scanCode = event.nativeScanCode(); // an X key code on X11 and on Wayland
    if (scanCode >= xKeyCodeOffset)
        result.keyCode = virtualKeyFromEvdev(scanCode - xKeyCodeOffset);
    result.modifiers = modifierBits(event.modifiers());
    if (event.key() > 0 && event.key() < firstNonCharacterKey)
        result.characters = QString(QChar(event.key())).toUpper().toStdString();
    return result;
}

} // namespace lumenvale
