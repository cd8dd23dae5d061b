// SPDX-License-Identifier: MIT
#include "ui/look/Symbols.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <numbers>
#include <string_view>

namespace lumenvale {

namespace {

constexpr double gridSize = 16.0;
constexpr double regularStroke = 1.25;
constexpr double semiboldStroke = 1.75;

struct Drawing {
    QPainterPath stroked;
    QPainterPath filled;

    Drawing& line(double x1, double y1, double x2, double y2) { return lines({{x1, y1}, {x2, y2}}); }
    Drawing& lines(std::initializer_list<QPointF> points)
    {
        stroked.moveTo(*points.begin());
        for (auto point = points.begin() + 1; point != points.end(); ++point)
            stroked.lineTo(*point);
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
    /// Part of a circle around the middle of the grid; degrees anticlockwise from three o'clock.
    Drawing& arc(double radius, double start, double sweep)
    {
        const QRectF square(8 - radius, 8 - radius, 2 * radius, 2 * radius);
        stroked.arcMoveTo(square, start);
        stroked.arcTo(square, start, sweep);
        return *this;
    }
    Drawing& disc(double x, double y, double radius)
    {
        filled.addEllipse(QPointF(x, y), radius, radius);
        return *this;
    }
};

QPointF onCircle(double radius, double degrees)
{
    const double angle = degrees * std::numbers::pi / 180.0;
    return {8.0 + radius * std::cos(angle), 8.0 - radius * std::sin(angle)};
}

Drawing laptop() { return Drawing().box(3, 3.5, 10, 7, 1.5).line(1.25, 12.75, 14.75, 12.75); }

Drawing display()
{
    return Drawing().box(1.5, 2.5, 13, 8.5, 1.5).line(8, 11, 8, 13.5).line(5.25, 13.5, 10.75, 13.5);
}

Drawing twoDisplays()
{
    Drawing drawing;
    drawing.box(0.75, 3.5, 9.5, 7, 1.25).line(3.75, 13, 7.25, 13);
    QPainterPath& second = drawing.stroked; // what is seen of it beside the first
    second.moveTo(12.25, 6.25);
    second.lineTo(14.25, 6.25);
    second.quadTo(15.25, 6.25, 15.25, 7.25);
    second.lineTo(15.25, 12.25);
    second.quadTo(15.25, 13.5, 14.25, 13.5);
    second.lineTo(9.75, 13.5);
    return drawing;
}

Drawing warningTriangle()
{
    Drawing drawing;
    drawing.lines({{8, 2.25}, {14.5, 13.5}, {1.5, 13.5}}).stroked.closeSubpath();
    return drawing.line(8, 6.5, 8, 9.5).disc(8, 11.5, 0.75);
}

Drawing sun()
{
    Drawing drawing;
    drawing.disc(8, 8, 3.3);
    for (int i = 0; i < 8; ++i)
        drawing.lines({onCircle(5.3, 45.0 * i), onCircle(6.6, 45.0 * i)});
    return drawing;
}

Drawing gear()
{
    Drawing drawing;
    drawing.circle(8, 8, 2.35);
    for (int i = 0; i < 8; ++i)
        drawing.arc(5.5, 45.0 * i + 14, 17);
    return drawing;
}

Drawing refresh() { return Drawing().arc(5.5, 0, -315).lines({{12.25, 1.5}, {12.25, 4.25}, {9.5, 4.25}}); }

Drawing power() { return Drawing().arc(5.5, 122, 296).line(8, 1.5, 8, 7.5); }

Drawing threeSliders()
{
    constexpr std::array<QPointF, 3> knobs = {QPointF(10.75, 3.5), QPointF(5.25, 8), QPointF(9.75, 12.5)};
    constexpr double radius = 1.85;
    Drawing drawing;
    for (const QPointF& knob : knobs) {
        drawing.line(1.25, knob.y(), knob.x() - radius, knob.y())
            .line(knob.x() + radius, knob.y(), 14.75, knob.y());
        drawing.circle(knob.x(), knob.y(), radius);
    }
    return drawing;
}

Drawing trash()
{
    return Drawing()
        .line(2.5, 4.25, 13.5, 4.25)
        .lines({{6, 4.25}, {6.25, 2.25}, {9.75, 2.25}, {10, 4.25}})
        .lines({{4, 4.25}, {4.75, 13.5}, {11.25, 13.5}, {12, 4.25}});
}

Drawing minus() { return Drawing().line(4.75, 8, 11.25, 8); }

Drawing plus() { return minus().line(8, 4.75, 8, 11.25); }

Drawing checkmark() { return Drawing().lines({{4.25, 8.25}, {7, 11}, {12.25, 5.5}}); }

Drawing copy()
{
    return Drawing()
        .box(5.5, 5.5, 8, 8.5, 1.5)
        .lines({{3.25, 10.5}, {2.5, 9.75}, {2.5, 3.5}, {3.5, 2.5}, {9, 2.5}, {10, 3.25}});
}

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
    Entry{"doc.on.doc", copy},
};

const Entry* find(const QString& name)
{
    const auto entry = std::ranges::find(entries, name.toStdString(), &Entry::name);
    return entry == entries.end() ? nullptr : &*entry;
}

void paint(QPainter& painter, const Drawing& drawing, const QColor& colour, double stroke)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(colour, stroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(drawing.stroked);
    painter.fillPath(drawing.filled, colour);
}

/// In a system whose y points up.
Drawing statusDrawing()
{
    Drawing drawing;
    QPainterPath& corners = drawing.stroked;
    corners.moveTo(0.75, 6.75);
    corners.lineTo(7.5, 6.75);
    corners.arcTo(QRectF(5.75, 3.25, 3.5, 3.5), 270, 90);
    corners.lineTo(9.25, 0.75);
    corners.moveTo(21.25, 6.75);
    corners.lineTo(14.5, 6.75);
    corners.arcTo(QRectF(12.75, 3.25, 3.5, 3.5), 270, -90);
    corners.lineTo(12.75, 0.75);
    drawing.line(17.1, 9.5, 18.6, 9.5).line(15.313351, 13.813351, 16.374012, 14.874012);
    drawing.line(11, 15.6, 11, 17.1).line(6.686649, 13.813351, 5.625988, 14.874012).line(4.9, 9.5, 3.4, 9.5);
    // From 189.594068° clockwise to −9.594068°, over the top. Qt's angles take y to point down.
    constexpr double dip = 9.594068;
    const QRectF disc(11 - 4.5, 9.5 - 4.5, 9, 9);
    drawing.filled.arcMoveTo(disc, 180 - dip);
    drawing.filled.arcTo(disc, 180 - dip, 180 + 2 * dip);
    drawing.filled.closeSubpath();
    return drawing;
}

} // namespace

void drawSymbol(QPainter& painter, const QString& name, const QRectF& box, const QColor& colour,
                SymbolWeight weight)
{
    const Entry* const entry = find(name);
    if (!entry)
        return;
    const double scale = std::min(box.width(), box.height()) / gridSize;
    painter.save();
    painter.translate(box.center());
    painter.scale(scale, scale);
    painter.translate(-gridSize / 2, -gridSize / 2);
    paint(painter, entry->draw(), colour, weight == SymbolWeight::regular ? regularStroke : semiboldStroke);
    painter.restore();
}

QImage statusImage(const QColor& colour, double scale)
{
    QImage image(static_cast<int>(std::lround(statusImageWidth * scale)),
                 static_cast<int>(std::lround(statusImageHeight * scale)), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.translate(0, statusImageHeight);
    painter.scale(1, -1);
    paint(painter, statusDrawing(), colour, 1.5);
    return image;
}

} // namespace lumenvale
