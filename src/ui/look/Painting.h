// SPDX-License-Identifier: MIT
// Pieces of drawing that several controls share. Lengths are points; lines lie on the screen's own pixels at every
// scale.
#pragma once

#include "ui/look/Theme.h"

#include <QRectF>
#include <QString>

class QPainter;

namespace lumenvale {

/// One pixel of the screen, in points.
double hairlineWidth(const QPainter& painter);

/// The box with its edges on the screen's pixels.
QRectF snapped(const QPainter& painter, const QRectF& box);

/// A rounded box, filled, with a line of one pixel just inside its edge.
void drawRoundedBox(QPainter& painter, const QRectF& box, double radius, const QColor& fill, const QColor& edge);

/// The soft shadow of a rounded box, a little below it and at most `margin` beyond it; nothing inside the box,
/// which may be translucent. For windows that are empty there.
void drawShadow(QPainter& painter, const QRectF& box, double radius, double margin);

/// A disc with a soft shadow below it: white, or faded where it cannot be moved.
void drawKnob(QPainter& painter, const QPointF& centre, double radius, const Theme& theme, bool enabled);

/// The text with its line breaks made blanks, as wide as it is drawn.
QString oneLine(QString text);

/// One line of text at the box's leading side, cut with an ellipsis where it is too long. The text's own direction
/// orders its words; `direction` is the interface's and only says where it starts.
void drawElidedText(QPainter& painter, const QRectF& box, const QString& text, Qt::LayoutDirection direction);

/// The same in up to two lines, the first of them full of words and the second one cut.
void drawTwoLines(QPainter& painter, const QRectF& box, const QString& text, Qt::LayoutDirection direction);

} // namespace lumenvale
