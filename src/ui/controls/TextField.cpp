// SPDX-License-Identifier: MIT
#include "ui/controls/TextField.h"

#include "ui/look/Painting.h"

#include <QEvent>
#include <QPainter>

namespace lumenvale {

TextField::TextField(QWidget* parent) : QLineEdit(parent)
{
    setFont(fontFor(TextRole::body));
    setFrame(false);
    setTextMargins(6, 0, 6, 0);
    setMinimumHeight(26);
    clearGround();
}

/// The base class fills its ground with the palette's base, which here is drawn round below it.
void TextField::clearGround()
{
    QPalette clear = palette();
    if (clear.color(QPalette::Base).alpha() == 0)
        return;
    clear.setColor(QPalette::Base, Qt::transparent);
    setPalette(clear);
}

void TextField::changeEvent(QEvent* event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        clearGround();
}

void TextField::paintEvent(QPaintEvent* event)
{
    {
        QPainter painter(this);
        const Theme theme = Theme::of(this);
        drawRoundedBox(painter, rect(), controlCornerRadius, Qt::transparent, theme.hairline);
        if (hasFocus())
            drawFocusRing(painter, rect(), controlCornerRadius, theme);
    }
    QLineEdit::paintEvent(event);
}

} // namespace lumenvale
