// SPDX-License-Identifier: MIT
#include "ui/panel/MenuGlassBackground.h"

#include "ui/look/Painting.h"

#include <QPainter>

namespace lumenvale {

MenuGlassBackground::MenuGlassBackground(QWidget* parent) : QWidget(parent) {}

void MenuGlassBackground::setHasSystemMaterial(bool has)
{
    hasSystemMaterial = has;
    update();
}

void MenuGlassBackground::paintEvent(QPaintEvent*)
{
    if (hasSystemMaterial)
        return;
    QPainter painter(this);
    const Theme theme = Theme::of(this);
    const double line = hairlineWidth(painter);
    const QRectF inner = QRectF(rect()).adjusted(line, line, -line, -line);
    // The edge darkens what is behind the panel, not its surface.
    drawRoundedBox(painter, rect(), panelCornerRadius, Qt::transparent, theme.edge);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.surface);
    painter.drawRoundedRect(inner, panelCornerRadius - line, panelCornerRadius - line);
}

} // namespace lumenvale
