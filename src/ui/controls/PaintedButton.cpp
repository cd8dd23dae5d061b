// SPDX-License-Identifier: MIT
#include "ui/controls/PaintedButton.h"

#include "ui/look/FocusMark.h"

#include <QKeyEvent>

namespace lumenvale {

PaintedButton::PaintedButton(QWidget* parent) : QAbstractButton(parent)
{
    setFocusPolicy(Qt::StrongFocus); // a weaker one is left out where the system tabs through text fields only
    setAttribute(Qt::WA_Hover);
}

void PaintedButton::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        return QAbstractButton::keyPressEvent(event);
    if (!event->isAutoRepeat())
        click();
}

void PaintedButton::focusInEvent(QFocusEvent* event)
{
    markFocus(*this, *event);
    QAbstractButton::focusInEvent(event);
}

} // namespace lumenvale
