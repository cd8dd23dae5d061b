// SPDX-License-Identifier: MIT
// Pieces of drawing that several controls share. Lengths are points; lines lie on the screen's own pixels at every
// scale.
#pragma once

#include "ui/look/Theme.h"

#include <QRectF>
#include <QString>

class QFontMetricsF;
class QPainter;
class QWidget;

namespace lumenvale {

struct ControlState {
    bool enabled = true;
    bool hovered = false;
    bool down = false;
};

/// One pixel of the screen, in points.
double hairlineWidth(const QPainter& painter);

/// The box with its edges on the screen's pixels.
QRectF snapped(const QPainter& painter, const QRectF& box);

/// A rounded box, filled, with a line of one pixel just inside its edge.
void drawRoundedBox(QPainter& painter, const QRectF& box, double radius, const QColor& fill, const QColor& edge);

/// A bordered control's face.
void drawControlFace(QPainter& painter, const QRectF& box, const Theme& theme, ControlState state);

/// The ring around what has the keyboard focus. `box` is the control's; the ring lies just inside.
void drawFocusRing(QPainter& painter, const QRectF& box, double radius, const Theme& theme);

/// A disc with a soft shadow below it: white, or faded where it cannot be moved.
void drawKnob(QPainter& painter, const QPointF& centre, double radius, const Theme& theme, bool enabled);

/// True when the focus came by the keyboard, so that a ring helps; a click needs none.
bool showsFocus(const QWidget* widget);

/// The colour of a symbol or text on a control.
QColor contentColour(const Theme& theme, bool enabled);

/// The text with its line breaks made blanks, as wide as it is drawn.
QString oneLine(QString text);

/// One line of text at the box's leading side, cut with an ellipsis where it is too long. The text's own direction
/// orders its words; `direction` is the interface's and only says where it starts.
void drawElidedText(QPainter& painter, const QRectF& box, const QString& text, Qt::LayoutDirection direction);

/// Text whose digits all take the same width, so that a changing number stays where it is.
double tabularWidth(const QFontMetricsF& metrics, const QString& text);
/// Draws it from `left`, vertically centred in `box`, with the painter's font and pen.
void drawTabularText(QPainter& painter, const QRectF& box, const QString& text);

} // namespace lumenvale
