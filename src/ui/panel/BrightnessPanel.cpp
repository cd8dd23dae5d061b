// SPDX-License-Identifier: MIT
#include "ui/panel/BrightnessPanel.h"

#include <QEvent>
#include <QGuiApplication>

namespace lumenvale {

bool BrightnessPanel::event(QEvent* event)
{
    const bool isHandled = QWidget::event(event);
    if (event->type() == QEvent::WinIdChange && internalWinId() != 0 && windowMade)
        windowMade();
    return isHandled;
}

bool BrightnessPanel::focusNextPrevChild(bool next)
{
    // The base class lets Control-Tab and Alt-Tab pass, but not this one.
    if (QGuiApplication::keyboardModifiers().testFlag(Qt::MetaModifier))
        return false;
    return QWidget::focusNextPrevChild(next);
}

void BrightnessPanel::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    setFocus(); // none of its controls has it; the first Tab goes to the first of them
}

} // namespace lumenvale
