// SPDX-License-Identifier: MIT
#include "ui/look/Painting.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QRadialGradient>
#include <QTextLayout>
#include <algorithm>
#include <array>
#include <cmath>

namespace lumenvale {

namespace {

constexpr double shadowOffset = 1.0;
constexpr double shadowReach = 3.5; ///< beyond the knob
constexpr double shadowOpacity = 0.30;
constexpr double outlineOpacity = 0.20;

QColor shadowColour(double opacity)
{
    QColor colour(Qt::black);
    colour.setAlphaF(static_cast<float>(opacity));
    return colour;
}

} // namespace

double hairlineWidth(const QPainter& painter) { return 1.0 / painter.device()->devicePixelRatioF(); }

QRectF snapped(const QPainter& painter, const QRectF& box)
{
    const QTransform toDevice = painter.deviceTransform();
    const QRectF pixels = toDevice.mapRect(box);
    const QPointF topLeft(std::round(pixels.left()), std::round(pixels.top()));
    const QPointF bottomRight(std::round(pixels.right()), std::round(pixels.bottom()));
    return toDevice.inverted().mapRect(QRectF(topLeft, bottomRight));
}

void drawRoundedBox(QPainter& painter, const QRectF& box, double radius, const QColor& fill, const QColor& edge)
{
    const QRectF outer = snapped(painter, box);
    const double line = hairlineWidth(painter);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(outer, radius, radius);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(edge, line));
    const double inset = line / 2;
    painter.drawRoundedRect(outer.adjusted(inset, inset, -inset, -inset), radius - inset, radius - inset);
}

void drawShadow(QPainter& painter, const QRectF& box, double radius, double margin)
{
    constexpr double darkest = 0.30; // at the box's edge
    const double drop = margin / 4;
    const double reach = margin - drop;
    const auto opacityAt = [reach](double distance) { return darkest * std::pow(1 - distance / reach, 2); };
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (int inset = 0; inset <= reach - 1; ++inset) { // they add up towards the box
        const double distance = reach - inset;
        painter.setBrush(shadowColour(opacityAt(distance - 1) - opacityAt(distance)));
        const QRectF ring = box.adjusted(-distance, -distance, distance, distance).translated(0, drop);
        painter.drawRoundedRect(ring, radius + distance, radius + distance);
    }
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.setBrush(Qt::black);
    painter.drawRoundedRect(box, radius, radius);
}

void drawKnob(QPainter& painter, const QPointF& centre, double radius, const Theme& theme, bool enabled)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const double reach = radius + shadowReach;
    const double strength = enabled ? 1.0 : 0.5;
    const QPointF shadowCentre = centre + QPointF(0, shadowOffset);
    QRadialGradient shadow(shadowCentre, reach);
    // How much of the shadow is left at distances from the knob's edge: a blur's falling half.
    constexpr std::array<std::pair<double, double>, 6> falling = {
        {{-2.0, 0.9}, {0.0, 0.5}, {0.8, 0.27}, {1.6, 0.13}, {2.5, 0.04}, {3.5, 0.0}}};
    for (const auto& [distance, left] : falling)
        shadow.setColorAt((radius + distance) / reach, shadowColour(strength * shadowOpacity * left));
    painter.setBrush(shadow);
    painter.drawEllipse(shadowCentre, reach, reach);
    const double line = std::min(hairlineWidth(painter), 0.5);
    painter.setBrush(shadowColour(strength * outlineOpacity));
    painter.drawEllipse(centre, radius + line, radius + line);
    const QColor faded(theme.isDark ? 0xFF7C7C82 : 0xFFF0F0F2); // opaque: the track must not show through
    painter.setBrush(enabled ? QColor(Qt::white) : faded);
    painter.drawEllipse(centre, radius, radius);
}

QString oneLine(QString text)
{
    for (QChar& each : text) {
        if (each.category() == QChar::Other_Control || each == QChar::LineSeparator ||
            each == QChar::ParagraphSeparator)
            each = ' ';
    }
    return text;
}

void drawElidedText(QPainter& painter, const QRectF& box, const QString& text, Qt::LayoutDirection direction)
{
    const QFontMetricsF metrics(painter.font(), painter.device());
    // A width of whole points is what a label asks for; it must not cost the last letter.
    const QString shown = metrics.elidedText(oneLine(text), Qt::ElideRight, box.width() + 0.5);
    const Qt::Alignment side = direction == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft;
    const Qt::LayoutDirection before = painter.layoutDirection();
    painter.setLayoutDirection(Qt::LayoutDirectionAuto);
    painter.drawText(box, static_cast<int>(side | Qt::AlignAbsolute | Qt::AlignVCenter) | Qt::TextSingleLine,
                     shown);
    painter.setLayoutDirection(before);
}

void drawTwoLines(QPainter& painter, const QRectF& box, const QString& text, Qt::LayoutDirection direction)
{
    const QString whole = oneLine(text);
    QTextLayout words(whole, painter.font(), painter.device());
    words.beginLayout();
    QTextLine first = words.createLine();
    first.setLineWidth(box.width());
    words.endLayout();
    const qsizetype length = first.textLength();
    if (length >= whole.size())
        return drawElidedText(painter, box, whole, direction);
    const double height = QFontMetricsF(painter.font(), painter.device()).lineSpacing();
    const QRectF upper(box.left(), box.center().y() - height, box.width(), height);
    drawElidedText(painter, upper, whole.left(length).trimmed(), direction);
    drawElidedText(painter, upper.translated(0, height), whole.mid(length), direction);
}

} // namespace lumenvale
