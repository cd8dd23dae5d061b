// SPDX-License-Identifier: MIT
// The program's own symbols: strokes of 1.25 on a grid of 16, drawn as paths, so that they are sharp at every
// scale and take any colour.
#pragma once

#include <QColor>
#include <QIcon>
#include <QImage>
#include <QRectF>
#include <QString>

class QPainter;

namespace lumenvale {

/// Draws the symbol as large as fits centred into `box`. Nothing is drawn for an unknown name.
void drawSymbol(QPainter& painter, const QString& name, const QRectF& box, const QColor& colour);

/// The symbol as an image of 16 × 16 points.
QImage symbolImage(const QString& name, const QColor& colour, double devicePixelRatio);

constexpr int statusImageWidth = 22;
constexpr int statusImageHeight = 18;

/// The image of the status item, 22 × 18 points: two display corners below a half sun. It is a template: one
/// colour on nothing, tinted to suit the bar.
QImage statusImage(const QColor& colour, double devicePixelRatio);

} // namespace lumenvale
