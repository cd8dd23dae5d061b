// SPDX-License-Identifier: MIT
#include "ui/controls/LevelSlider.h"

#include "ui/controls/Accessibility.h"
#include "ui/look/KeyboardFocus.h"
#include "ui/look/Painting.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

namespace lumenvale {

namespace {

constexpr double knobRadius = 9.0;
constexpr double trackHeight = 4.0;
constexpr double page = 0.1;
constexpr double percent = 100.0;   // of a fraction
constexpr double notch = 120.0;     // of a wheel, in Qt's eighths of a degree
constexpr double notchWidth = 0.01; // how far one notch moves, or a step where that is more
constexpr double disabledSliderOpacity = 0.5;

/// What a screen reader sees: a slider from 0 to 100 percent that can be set.
class LevelSliderAccessible final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit LevelSliderAccessible(LevelSlider* slider) : QAccessibleWidget(slider, QAccessible::Slider) {}

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? slider()->valueText() : QAccessibleWidget::text(kind);
    }

    QVariant currentValue() const override { return slider()->value() * percent; }
    void setCurrentValue(const QVariant& value) override { slider()->request(value.toDouble() / percent); }
    QVariant minimumValue() const override { return 0.0; }
    QVariant maximumValue() const override { return percent; }
    QVariant minimumStepSize() const override { return slider()->step() * percent; }

private:
    LevelSlider* slider() const { return static_cast<LevelSlider*>(object()); }
};

} // namespace

LevelSlider::LevelSlider()
{
    installAccessible<LevelSlider, LevelSliderAccessible>();
    trackFocus();
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void LevelSlider::setValue(double fraction)
{
    if (dragging)
        valueWaiting = fraction;
    else
        showFraction(fraction);
}

void LevelSlider::setStep(double fraction) { stepSize = fraction; }

void LevelSlider::setValueText(const QString& next)
{
    if (next == text)
        return;
    text = next;
    if (!QAccessible::isActive())
        return;
    QAccessibleValueChangeEvent event(this, shown * percent);
    QAccessible::updateAccessibility(&event);
}

void LevelSlider::setReason(const QString& next)
{
    if (next == reason)
        return;
    reason = next;
    update();
}

void LevelSlider::request(double fraction)
{
    if (!isEnabled())
        return;
    showFraction(fraction);
    valueWaiting.reset(); // it came before this request and is out of date
    if (onChange)
        onChange(shown);
}

void LevelSlider::showFraction(double fraction)
{
    const double next = std::clamp(fraction, 0.0, 1.0);
    if (next == shown)
        return;
    shown = next;
    update();
}

QRectF LevelSlider::track() const
{
    return {overhang, (height() - trackHeight) / 2.0, width() - 2.0 * overhang, trackHeight};
}

double LevelSlider::knobCentre() const
{
    const double along = isRightToLeft() ? 1.0 - shown : shown;
    return track().left() + knobRadius + along * (track().width() - 2 * knobRadius);
}

double LevelSlider::fractionAt(double x) const
{
    const double way = std::max(track().width() - 2 * knobRadius, 1.0);
    const double along = std::clamp((x - track().left() - knobRadius) / way, 0.0, 1.0);
    return isRightToLeft() ? 1.0 - along : along;
}

void LevelSlider::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const Theme theme = Theme::of(this);
    if (!isEnabled() && !reason.isEmpty()) {
        painter.setFont(fontFor(TextRole::caption));
        painter.setPen(theme.secondary);
        return drawTwoLines(painter, QRectF(rect()).adjusted(overhang, 0, -overhang, 0), reason,
                            layoutDirection());
    }
    if (!isEnabled())
        painter.setOpacity(disabledSliderOpacity);
    const QPointF knob(knobCentre(), height() / 2.0);
    const QRectF groove = snapped(painter, track());
    const double radius = groove.height() / 2;
    painter.setBrush(theme.track);
    painter.drawRoundedRect(groove, radius, radius);
    if (shown > 0.0) {
        QRectF filled = groove;
        if (isRightToLeft())
            filled.setLeft(knob.x());
        else
            filled.setRight(knob.x());
        painter.setBrush(theme.accent);
        painter.drawRoundedRect(filled, radius, radius);
    }
    painter.setOpacity(1.0);
    drawKnob(painter, knob, knobRadius, theme, isEnabled());
    if (showsFocus(*this)) {
        constexpr double ringWidth = 2.0;
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(theme.accent, ringWidth));
        painter.drawEllipse(knob, knobRadius + ringWidth, knobRadius + ringWidth);
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
        showFraction(*waiting);
}

/// In a page that can scroll, the wheel belongs to the page until the slider has the focus: a brightness that
/// scrolls past below the pointer must not change.
bool LevelSlider::leavesWheelToPage() const
{
    if (hasFocus())
        return false;
    for (const QWidget* each = parentWidget(); each; each = each->parentWidget()) {
        if (const auto* area = qobject_cast<const QScrollArea*>(each))
            return area->verticalScrollBar()->maximum() > 0;
    }
    return false;
}

void LevelSlider::wheelEvent(QWheelEvent* event)
{
    if (leavesWheelToPage())
        return event->ignore();
    event->accept();
    if (event->phase() == Qt::ScrollMomentum)
        return; // the fingers have left
    const QPoint turned = event->angleDelta();
    const double delta = std::abs(turned.y()) >= std::abs(turned.x()) ? turned.y() : -turned.x();
    const double way = (event->inverted() ? -delta : delta) / notch * std::max(notchWidth, stepSize);
    wheelRest = (wheelRest > 0) == (way > 0) ? wheelRest + way : way;
    constexpr double roundingError = 1e-9;
    const double steps = std::trunc(wheelRest / stepSize + std::copysign(roundingError, wheelRest));
    if (steps == 0.0)
        return;
    wheelRest -= steps * stepSize;
    request(shown + steps * stepSize);
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

void LevelSlider::hideEvent(QHideEvent* event)
{
    endDrag();
    QWidget::hideEvent(event);
}

void LevelSlider::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::EnabledChange && !isEnabled())
        endDrag();
    update();
    QWidget::changeEvent(event);
}

} // namespace lumenvale
