// SPDX-License-Identifier: MIT
#include "ui/LevelSlider.h"

#include "ui/FocusMark.h"
#include "ui/LevelSliderAccessible.h"
#include "ui/Painting.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QRadialGradient>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace lumenvale {

namespace {
constexpr double knobRadius = 9.0;
constexpr double trackHeight = 4.0;
constexpr double page = 0.1;
constexpr double notch = 120.0; // of a wheel, in Qt's eighths of a degree
} // namespace

LevelSlider::LevelSlider(QWidget* parent) : QWidget(parent)
{
    installLevelSliderAccessibility();
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void LevelSlider::setValue(double fraction)
{
    if (dragging)
        valueWaiting = fraction;
    else
        show(fraction);
}

void LevelSlider::setStep(double fraction) { stepSize = fraction; }

void LevelSlider::setValueText(const QString& next)
{
    if (next == text)
        return;
    text = next;
    notifyLevelChanged(*this);
}

void LevelSlider::request(double fraction)
{
    if (!isEnabled())
        return;
    show(fraction);
    if (onChange)
        onChange(shown);
}

void LevelSlider::show(double fraction)
{
    const double next = std::clamp(fraction, 0.0, 1.0);
    if (next == shown)
        return;
    shown = next;
    update();
}

double LevelSlider::knobCentre() const
{
    const double along = isRightToLeft() ? 1.0 - shown : shown;
    return knobRadius + along * (width() - 2 * knobRadius);
}

double LevelSlider::fractionAt(double x) const
{
    const double along = std::clamp((x - knobRadius) / std::max(width() - 2 * knobRadius, 1.0), 0.0, 1.0);
    return isRightToLeft() ? 1.0 - along : along;
}

void LevelSlider::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const Theme theme = Theme::of(this);
    if (!isEnabled())
        painter.setOpacity(0.5);
    const double middle = height() / 2.0;
    const double knob = knobCentre();
    const QRectF track(0, middle - trackHeight / 2, width(), trackHeight);
    painter.setBrush(theme.track);
    painter.drawRoundedRect(track, trackHeight / 2, trackHeight / 2);
    QRectF filled = track;
    if (isRightToLeft())
        filled.setLeft(knob);
    else
        filled.setRight(knob);
    if (shown > 0.0) {
        painter.setBrush(theme.accent);
        painter.drawRoundedRect(filled, trackHeight / 2, trackHeight / 2);
    }
    const QPointF centre(knob, middle);
    QRadialGradient shadow(centre + QPointF(0, 1), knobRadius + 2.5);
    shadow.setColorAt(0.72, QColor(0, 0, 0, 70));
    shadow.setColorAt(1.0, QColor(0, 0, 0, 0));
    painter.setBrush(shadow);
    painter.drawEllipse(centre + QPointF(0, 1), knobRadius + 2.5, knobRadius + 2.5);
    painter.setBrush(Qt::white);
    painter.drawEllipse(centre, knobRadius, knobRadius);
    if (showsFocus(this)) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(theme.accent, 2));
        painter.drawEllipse(centre, knobRadius + 1.5, knobRadius + 1.5);
    }
}

void LevelSlider::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const double x = event->position().x();
    const bool onKnob = std::abs(x - knobCentre()) <= knobRadius;
    dragging = true;
    grabOffset = onKnob ? x - knobCentre() : 0.0;
    if (!onKnob)
        request(fractionAt(x));
}

void LevelSlider::mouseMoveEvent(QMouseEvent* event)
{
    if (dragging)
        request(fractionAt(event->position().x() - grabOffset));
}

void LevelSlider::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        endDrag();
}

void LevelSlider::endDrag()
{
    dragging = false;
    if (const auto waiting = std::exchange(valueWaiting, std::nullopt))
        show(*waiting);
}

void LevelSlider::wheelEvent(QWheelEvent* event)
{
    const QPoint turned = event->angleDelta();
    const double delta = std::abs(turned.y()) >= std::abs(turned.x()) ? turned.y() : -turned.x();
    wheelRest += (event->inverted() ? -delta : delta) / notch;
    const double whole = std::trunc(wheelRest);
    if (whole != 0.0) {
        wheelRest -= whole;
        request(shown + whole * stepSize);
    }
    event->accept();
}

void LevelSlider::keyPressEvent(QKeyEvent* event)
{
    const double forward = isRightToLeft() ? -1.0 : 1.0;
    switch (event->key()) {
    case Qt::Key_Left:
        return request(shown - forward * stepSize);
    case Qt::Key_Right:
        return request(shown + forward * stepSize);
    case Qt::Key_Up:
        return request(shown + stepSize);
    case Qt::Key_Down:
        return request(shown - stepSize);
    case Qt::Key_PageUp:
        return request(shown + page);
    case Qt::Key_PageDown:
        return request(shown - page);
    case Qt::Key_Home:
        return request(0.0);
    case Qt::Key_End:
        return request(1.0);
    default:
        QWidget::keyPressEvent(event);
    }
}

void LevelSlider::focusInEvent(QFocusEvent* event)
{
    markFocus(*this, *event);
    QWidget::focusInEvent(event);
}

void LevelSlider::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::EnabledChange && !isEnabled())
        endDrag();
    update();
    QWidget::changeEvent(event);
}

} // namespace lumenvale
