// SPDX-License-Identifier: MIT
// Remembers on a widget how it came by the focus. Call it from focusInEvent.
#pragma once

#include <QFocusEvent>
#include <QWidget>

namespace lumenvale {

inline void markFocus(QWidget& widget, const QFocusEvent& event)
{
    const Qt::FocusReason reason = event.reason();
    if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason)
        return; // the focus was here before
    widget.setProperty("focusFromKeyboard", reason != Qt::MouseFocusReason);
    widget.update();
}

} // namespace lumenvale
