// SPDX-License-Identifier: MIT
#include "ui/controls/Layouts.h"

#include "ui/look/Theme.h"

#include <QPainter>

namespace lumenvale {

QVBoxLayout* makeColumn(QWidget* owner, int spacing, const QMargins& margins)
{
    auto* column = new QVBoxLayout(owner);
    column->setContentsMargins(margins);
    column->setSpacing(spacing);
    return column;
}

QHBoxLayout* makeLine(QWidget* owner, int spacing, const QMargins& margins)
{
    auto* line = new QHBoxLayout(owner);
    line->setContentsMargins(margins);
    line->setSpacing(spacing);
    return line;
}

Card::Card() : column(makeColumn(this, 8, {14, 10, 14, 10})) {}

void Card::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Theme theme = Theme::of(this);
    painter.setBrush(theme.card);
    painter.setPen(QPen(theme.hairline, 1.0));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cardCornerRadius, cardCornerRadius);
}

Divider::Divider() { setFixedHeight(1); }

void Divider::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Theme::of(this).hairline);
}

} // namespace lumenvale
