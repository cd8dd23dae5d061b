// SPDX-License-Identifier: MIT
#include "ui/Painting.h"

#include <QPainter>
#include <QWidget>

namespace lumenvale {

namespace {
constexpr double disabledOpacity = 0.35;
constexpr double ringWidth = 2.0;
} // namespace

void drawControlFace(QPainter& painter, const QRectF& box, const Theme& theme, ControlState state)
{
    QColor fill = theme.control;
    const double strength = !state.enabled ? 0.5 : state.down ? 2.0 : state.hovered ? 1.4 : 1.0;
    fill.setAlphaF(static_cast<float>(fill.alphaF() * strength));
    QColor edge = theme.hairline;
    edge.setAlphaF(static_cast<float>(edge.alphaF() * (state.enabled ? 0.7 : 0.35)));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(fill);
    painter.setPen(QPen(edge, 1.0));
    painter.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), controlCornerRadius, controlCornerRadius);
}

void drawFocusRing(QPainter& painter, const QRectF& box, double radius, const Theme& theme)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(theme.accent, ringWidth));
    const double inset = ringWidth / 2;
    painter.drawRoundedRect(box.adjusted(inset, inset, -inset, -inset), radius, radius);
}

bool showsFocus(const QWidget* widget)
{
    return widget->hasFocus() && widget->property("focusFromKeyboard").toBool();
}

QColor contentColour(const Theme& theme, bool enabled)
{
    QColor colour = theme.text;
    if (!enabled)
        colour.setAlphaF(disabledOpacity);
    return colour;
}

} // namespace lumenvale
