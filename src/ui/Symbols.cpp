// SPDX-License-Identifier: MIT
#include "ui/Symbols.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <string_view>

namespace lumenvale {

namespace {

constexpr double gridSize = 16.0;
constexpr double strokeWidth = 1.25;

struct Drawing {
    QPainterPath stroked;
    QPainterPath filled;

    Drawing& line(double x1, double y1, double x2, double y2)
    {
        stroked.moveTo(x1, y1);
        stroked.lineTo(x2, y2);
        return *this;
    }
    Drawing& box(double x, double y, double width, double height, double radius)
    {
        stroked.addRoundedRect(QRectF(x, y, width, height), radius, radius);
        return *this;
    }
    Drawing& circle(double x, double y, double radius)
    {
        stroked.addEllipse(QPointF(x, y), radius, radius);
        return *this;
    }
    Drawing& disc(double x, double y, double radius)
    {
        filled.addEllipse(QPointF(x, y), radius, radius);
        return *this;
    }
    Drawing& polygon(std::initializer_list<QPointF> points, bool closed)
    {
        auto point = points.begin();
        stroked.moveTo(*point);
        while (++point != points.end())
            stroked.lineTo(*point);
        if (closed)
            stroked.closeSubpath();
        return *this;
    }
};

/// The point at `degrees` (anticlockwise from three o'clock) on a circle around the middle of the grid.
QPointF onCircle(double radius, double degrees)
{
    const double angle = degrees * std::numbers::pi / 180.0;
    return {8.0 + radius * std::cos(angle), 8.0 - radius * std::sin(angle)};
}

Drawing laptop() { return Drawing().box(3.25, 3, 9.5, 7.25, 1.25).line(1.25, 12.75, 14.75, 12.75); }

Drawing display()
{
    return Drawing().box(1.5, 2.5, 13, 8.5, 1.5).line(8, 11, 8, 13.5).line(5.25, 13.5, 10.75, 13.5);
}

Drawing twoDisplays()
{
    Drawing drawing;
    drawing.box(6.75, 5.75, 7.75, 6.5, 1.25).line(9.25, 14.25, 12, 14.25);
    drawing.polygon({{4.75, 9.25},
                     {2.5, 9.25},
                     {1.5, 8.25},
                     {1.5, 3.25},
                     {2.5, 2.25},
                     {9.5, 2.25},
                     {10.5, 3.25},
                     {10.5, 3.75}},
                    false);
    return drawing;
}

Drawing warningTriangle()
{
    Drawing drawing;
    drawing.polygon({{8, 2.25}, {14.75, 13.5}, {1.25, 13.5}}, true).line(8, 6.5, 8, 9.75);
    return drawing.disc(8, 11.6, 0.75);
}

Drawing sun()
{
    Drawing drawing;
    drawing.disc(8, 8, 3.4);
    for (int i = 0; i < 8; ++i) {
        const QPointF inner = onCircle(5.4, 45.0 * i);
        const QPointF outer = onCircle(6.9, 45.0 * i);
        drawing.line(inner.x(), inner.y(), outer.x(), outer.y());
    }
    return drawing;
}

Drawing gear()
{
    Drawing drawing;
    drawing.circle(8, 8, 5.1).circle(8, 8, 2.1);
    for (int i = 0; i < 12; ++i) {
        const QPointF inner = onCircle(5.2, 30.0 * i);
        const QPointF outer = onCircle(6.5, 30.0 * i);
        drawing.line(inner.x(), inner.y(), outer.x(), outer.y());
    }
    return drawing;
}

Drawing refresh()
{
    Drawing drawing;
    drawing.stroked.arcMoveTo(QRectF(3, 3, 10, 10), 35);
    drawing.stroked.arcTo(QRectF(3, 3, 10, 10), 35, 305);
    return drawing.polygon({{12.6, 2.25}, {12.35, 5.35}, {9.3, 5.2}}, false);
}

Drawing power()
{
    Drawing drawing;
    drawing.stroked.arcMoveTo(QRectF(3, 3.25, 10, 10), 130);
    drawing.stroked.arcTo(QRectF(3, 3.25, 10, 10), 130, 280);
    return drawing.line(8, 1.75, 8, 7.25);
}

Drawing threeSliders()
{
    Drawing drawing;
    constexpr std::array rows = {3.5, 8.0, 12.5};
    constexpr std::array knobs = {10.0, 5.0, 10.0};
    for (std::size_t i = 0; i < rows.size(); ++i) {
        drawing.line(1.75, rows[i], knobs[i] - 1.7, rows[i]).line(knobs[i] + 1.7, rows[i], 14.25, rows[i]);
        drawing.circle(knobs[i], rows[i], 1.6);
    }
    return drawing;
}

Drawing trash()
{
    Drawing drawing;
    drawing.line(2.5, 4, 13.5, 4).polygon({{6, 4}, {6.25, 2.25}, {9.75, 2.25}, {10, 4}}, false);
    drawing.polygon({{3.75, 4}, {4.5, 13.75}, {11.5, 13.75}, {12.25, 4}}, false);
    return drawing.line(6.6, 6.75, 6.85, 11).line(9.4, 6.75, 9.15, 11);
}

Drawing copySheets()
{
    Drawing drawing;
    drawing.box(5.5, 5.5, 8, 8.5, 1.5);
    return drawing.polygon({{3.25, 10.5}, {2.5, 9.75}, {2.5, 3.5}, {3.5, 2.5}, {9, 2.5}, {10, 3.25}}, false);
}

Drawing minus() { return Drawing().line(4, 8, 12, 8); }

Drawing plus() { return Drawing().line(4, 8, 12, 8).line(8, 4, 8, 12); }

Drawing checkmark() { return Drawing().polygon({{3.25, 8.5}, {6.5, 11.75}, {12.75, 4.5}}, false); }

struct Entry {
    std::string_view name;
    Drawing (*draw)();
};

constexpr std::array entries = {
    Entry{"laptopcomputer", laptop},
    Entry{"display", display},
    Entry{"display.2", twoDisplays},
    Entry{"exclamationmark.triangle", warningTriangle},
    Entry{"sun.max.fill", sun},
    Entry{"minus", minus},
    Entry{"plus", plus},
    Entry{"checkmark", checkmark},
    Entry{"gearshape", gear},
    Entry{"arrow.clockwise", refresh},
    Entry{"power", power},
    Entry{"slider.horizontal.3", threeSliders},
    Entry{"trash", trash},
    Entry{"doc.on.doc", copySheets},
};

/// Two display corners with a half sun above, in a system whose y points up.
Drawing statusDrawing()
{
    Drawing drawing;
    QPainterPath& corners = drawing.stroked;
    corners.moveTo(0.75, 6.75);
    corners.lineTo(7.5, 6.75);
    corners.arcTo(QRectF(5.75, 3.25, 3.5, 3.5), 270, 90); // the rounded corner, radius 1.75
    corners.lineTo(9.25, 0.75);
    corners.moveTo(21.25, 6.75);
    corners.lineTo(14.5, 6.75);
    corners.arcTo(QRectF(12.75, 3.25, 3.5, 3.5), 270, -90);
    corners.lineTo(12.75, 0.75);
    constexpr std::array<std::array<double, 4>, 5> rays = {{{17.1, 9.5, 18.6, 9.5},
                                                            {15.313351, 13.813351, 16.374012, 14.874012},
                                                            {11, 15.6, 11, 17.1},
                                                            {6.686649, 13.813351, 5.625988, 14.874012},
                                                            {4.9, 9.5, 3.4, 9.5}}};
    for (const auto& ray : rays)
        drawing.line(ray[0], ray[1], ray[2], ray[3]);
    // Qt's angles run against the sense of a y that points up: 189.594068° clockwise to −9.594068° through the
    // top.
    constexpr double below = 9.594068;
    const QRectF disc(11 - 4.5, 9.5 - 4.5, 9, 9);
    drawing.filled.arcMoveTo(disc, below);
    drawing.filled.arcTo(disc, below, -(180 + 2 * below));
    drawing.filled.closeSubpath();
    return drawing;
}

void paintDrawing(QPainter& painter, const Drawing& drawing, const QColor& colour, double width)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(drawing.stroked);
    painter.fillPath(drawing.filled, colour);
}

QImage blankImage(double width, double height, double ratio)
{
    QImage image(static_cast<int>(std::lround(width * ratio)), static_cast<int>(std::lround(height * ratio)),
                 QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    return image;
}

} // namespace

void drawSymbol(QPainter& painter, const QString& name, const QRectF& box, const QColor& colour)
{
    const std::string text = name.toStdString();
    const auto entry = std::ranges::find(entries, text, &Entry::name);
    if (entry == entries.end())
        return;
    const double scale = std::min(box.width(), box.height()) / gridSize;
    painter.save();
    painter.translate(box.center());
    painter.scale(scale, scale);
    painter.translate(-gridSize / 2, -gridSize / 2);
    // Small symbols keep the weight of the others.
    paintDrawing(painter, entry->draw(), colour, scale < 0.8 ? strokeWidth / (scale * 1.25) : strokeWidth);
    painter.restore();
}

QImage symbolImage(const QString& name, const QColor& colour, double devicePixelRatio)
{
    QImage image = blankImage(gridSize, gridSize, devicePixelRatio);
    QPainter painter(&image);
    drawSymbol(painter, name, QRectF(0, 0, gridSize, gridSize), colour);
    return image;
}

QImage statusImage(const QColor& colour, double devicePixelRatio)
{
    QImage image = blankImage(statusImageWidth, statusImageHeight, devicePixelRatio);
    QPainter painter(&image);
    painter.translate(0, statusImageHeight);
    painter.scale(1, -1);
    paintDrawing(painter, statusDrawing(), colour, 1.5);
    return image;
}

} // namespace lumenvale
