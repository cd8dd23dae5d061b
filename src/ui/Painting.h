// SPDX-License-Identifier: MIT
// Pieces of drawing that several controls share.
#pragma once

#include "ui/Theme.h"

#include <QRectF>
#include <QString>

class QPainter;
class QWidget;

namespace lumenvale {

struct ControlState {
    bool enabled = true;
    bool hovered = false;
    bool down = false;
};

/// A bordered control's face: filled, with a hairline edge on the pixel grid.
void drawControlFace(QPainter& painter, const QRectF& box, const Theme& theme, ControlState state);

/// The ring around what has the keyboard focus. `box` is the control's; the ring lies just inside.
void drawFocusRing(QPainter& painter, const QRectF& box, double radius, const Theme& theme);

/// True when the focus came by the keyboard, so that a ring helps; a click needs none.
bool showsFocus(const QWidget* widget);

/// The colour of a symbol or text on a control.
QColor contentColour(const Theme& theme, bool enabled);

} // namespace lumenvale
