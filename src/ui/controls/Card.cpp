// SPDX-License-Identifier: MIT
#include "ui/controls/Card.h"

#include "ui/look/Theme.h"

#include <QPainter>
#include <QVBoxLayout>

namespace lumenvale {

Card::Card(QWidget* parent) : QWidget(parent), column(new QVBoxLayout(this))
{
    column->setContentsMargins(14, 10, 14, 10);
    column->setSpacing(8);
}

void Card::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Theme theme = Theme::of(this);
    painter.setBrush(theme.card);
    painter.setPen(QPen(theme.hairline, 1.0));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cardCornerRadius, cardCornerRadius);
}

} // namespace lumenvale
