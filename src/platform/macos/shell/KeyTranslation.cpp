// SPDX-License-Identifier: MIT
#include "platform/KeyTranslation.h"

#include <QKeyEvent>
#include <QString>

namespace lumenvale {

namespace {

/// Qt numbers keys by the character they type, in upper case; other keys begin here.
constexpr int firstNonCharacterKey = 0x01000000;

} // namespace

KeyEvent translateKeyEvent(const QKeyEvent& event)
{
    KeyEvent result;
    result.isKeyDown = event.type() == QEvent::KeyPress || event.type() == QEvent::ShortcutOverride;
    result.isRepeat = event.isAutoRepeat();
    // The native parts are the system's virtual key code and modifier bits. Qt's own modifiers have Command and
    // Control exchanged.
    result.keyCode = event.nativeVirtualKey();
    result.modifiers = event.nativeModifiers() & KeyModifier::mask;
    if (event.key() > 0 && event.key() < firstNonCharacterKey) {
        const auto character = static_cast<char32_t>(event.key());
        result.characters = QString::fromUcs4(&character, 1).toUpper().toStdString();
    }
    return result;
}

} // namespace lumenvale
