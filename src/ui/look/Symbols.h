// SPDX-License-Identifier: MIT
// The program's own symbols: strokes of 1.25 on a grid of 16 × 16, drawn as paths, so that they are sharp at every
// scale and take any colour. Also the image of the status item. Main thread only.
#pragma once

#include <QColor>
#include <QImage>
#include <QRectF>
#include <QString>

class QPainter;

namespace lumenvale {

/// Stroke widths on the grid.
enum class SymbolWeight { regular, semibold };

/// Draws the symbol as large as fits, centred in `box`. An unknown name draws nothing.
void drawSymbol(QPainter& painter, const QString& name, const QRectF& box, const QColor& colour,
                SymbolWeight weight = SymbolWeight::regular);

constexpr int statusImageWidth = 22;
constexpr int statusImageHeight = 18;

/// The image of the status item, 22 × 18 points at `scale` pixels per point: two display corners below a half
/// sun. It is a template: one colour on nothing, for the system to tint.
QImage statusImage(const QColor& colour, double scale);

} // namespace lumenvale
