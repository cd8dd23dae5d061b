// SPDX-License-Identifier: MIT
#include "ui/controls/ToggleSwitch.h"

#include "ui/look/FocusMark.h"
#include "ui/look/Painting.h"

#include <QPainter>

namespace lumenvale {

ToggleSwitch::ToggleSwitch(const QString& label, QWidget* parent) : QCheckBox(parent)
{
    setAccessibleName(label);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void ToggleSwitch::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Theme theme = Theme::of(this);
    if (!isEnabled())
        painter.setOpacity(0.5);
    const QRectF box = QRectF(rect()).adjusted(1, 1, -1, -1);
    const double radius = box.height() / 2;
    painter.setPen(Qt::NoPen);
    painter.setBrush(isChecked() ? theme.accent : theme.track);
    painter.drawRoundedRect(box, radius, radius);
    const bool atRight = isChecked() != isRightToLeft();
    const QPointF knob(atRight ? box.right() - radius : box.left() + radius, box.center().y());
    painter.setBrush(Qt::white);
    painter.drawEllipse(knob, radius - 2, radius - 2);
    if (showsFocus(this))
        drawFocusRing(painter, rect(), rect().height() / 2.0, theme);
}

void ToggleSwitch::focusInEvent(QFocusEvent* event)
{
    markFocus(*this, *event);
    QCheckBox::focusInEvent(event);
}

} // namespace lumenvale
