// SPDX-License-Identifier: MIT
#include "ui/controls/HoldRepeatButton.h"

#include "ui/look/Symbols.h"

#include <QMouseEvent>

namespace lumenvale {

namespace {
constexpr double glyphSize = 14;
} // namespace

HoldRepeatButton::HoldRepeatButton(Clock& clock) : SmallButton({}, {}, {}), clock(clock)
{
    setFixedSize(32, 24);
    connect(this, &QAbstractButton::clicked, this, [this] { activate(); });
}

HoldRepeatButton::~HoldRepeatButton() { clock.cancel(repeatTimer); }

void HoldRepeatButton::activate()
{
    if (isEnabled() && onStep)
        onStep();
}

void HoldRepeatButton::stopRepeating()
{
    pressed = false;
    clock.cancel(repeatTimer);
    repeatTimer = 0;
    setDown(false);
}

// The base class does not see the mouse: it would step again at the release.

void HoldRepeatButton::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !isEnabled())
        return;
    stopRepeating();
    pressed = true;
    setDown(true);
    schedule(initialDelay);
    if (onStep) {
        const auto step = onStep; // its owner may replace it
        step();
    }
}

void HoldRepeatButton::mouseMoveEvent(QMouseEvent* event)
{
    setDown(pressed && rect().contains(event->position().toPoint()));
}

void HoldRepeatButton::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        stopRepeating();
}

void HoldRepeatButton::schedule(Clock::Duration delay)
{
    repeatTimer = clock.callAfter(delay, [this] { tick(); });
}

void HoldRepeatButton::tick()
{
    repeatTimer = 0;
    if (!pressed || !isEnabled() || !isVisible()) {
        stopRepeating();
        return;
    }
    schedule(repeatInterval);
    if (isDown() && onStep) { // else the pointer has been dragged off, and may come back
        const auto step = onStep;
        step();
    }
}

void HoldRepeatButton::hideEvent(QHideEvent* event)
{
    stopRepeating();
    SmallButton::hideEvent(event);
}

void HoldRepeatButton::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::EnabledChange && !isEnabled())
        stopRepeating();
    SmallButton::changeEvent(event);
}

void HoldRepeatButton::paintContent(QPainter& painter, const QColor& colour)
{
    const QRectF box((width() - glyphSize) / 2, (height() - glyphSize) / 2, glyphSize, glyphSize);
    drawSymbol(painter, symbolName(), box, colour, SymbolWeight::semibold);
}

bool HoldRepeatButton::event(QEvent* event)
{
    if (event->type() == QEvent::WindowDeactivate || event->type() == QEvent::ParentChange)
        stopRepeating();
    return SmallButton::event(event);
}

void RepeatingStepButton::update(HoldRepeatButton& button) const
{
    button.setSymbol(symbol);
    button.setAccessibleName(label);
    button.setToolTip(help);
    button.onStep = action;
    button.setEnabled(enabled);
}

} // namespace lumenvale
