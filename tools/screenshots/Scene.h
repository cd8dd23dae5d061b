// SPDX-License-Identifier: MIT
// A desktop to show windows on: a colourful picture, and the shadow and blur that a window system adds.
#pragma once

#include <QImage>
#include <QPointF>
#include <QSizeF>

class QWidget;

namespace lumenvale {

class Scene {
public:
    /// In points; drawn at `scale` pixels per point.
    Scene(QSizeF size, double scale);

    /// Draws a window with its shadow; `radius` is that of its corners, in points.
    void add(QWidget& window, QPointF position, double radius);

    const QImage& image() const { return picture; }

private:
    void drawShadow(const QRectF& window, double radius);

    QImage picture;
};

} // namespace lumenvale
