// SPDX-License-Identifier: MIT
#include "ui/MenuGlassBackground.h"

#include "ui/Theme.h"

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
    painter.setRenderHint(QPainter::Antialiasing);
    const Theme theme = Theme::of(this);
    painter.setBrush(theme.surface);
    painter.setPen(QPen(theme.hairline, 1.0));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), panelCornerRadius - 0.5,
                            panelCornerRadius - 0.5);
}

} // namespace lumenvale
