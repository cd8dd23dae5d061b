// SPDX-License-Identifier: MIT
#include "ui/controls/SmallButton.h"

#include "ui/look/Painting.h"
#include "ui/look/Symbols.h"

#include <QEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace lumenvale {

struct SmallButton::Metrics {
    int height;
    int padding; ///< at either side
    int symbolSize;
    int gap; ///< between symbol and text
};

SmallButton::SmallButton(const QString& symbolName, const QString& text, const QString& label, QWidget* parent,
                         Size buttonSize)
    : PaintedButton(parent), symbol(symbolName), size(buttonSize)
{
    setText(text);
    setAccessibleName(label.isEmpty() ? text : label);
    setFont(fontFor(TextRole::digits));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void SmallButton::setSymbol(const QString& name)
{
    if (name == symbol)
        return;
    symbol = name;
    updateGeometry();
    update();
}

void SmallButton::setTextColour(TextColour colour)
{
    textColour = colour;
    update();
}

const SmallButton::Metrics& SmallButton::metrics() const
{
    static constexpr Metrics regular{24, 10, 14, 6};
    static constexpr Metrics compact{22, 8, 13, 5};
    return size == Size::regular ? regular : compact;
}

double SmallButton::contentWidth() const
{
    double width = symbol.isEmpty() ? 0 : metrics().symbolSize;
    if (!text().isEmpty())
        width += (symbol.isEmpty() ? 0 : metrics().gap) + fontMetrics().horizontalAdvance(text());
    return width;
}

QSize SmallButton::sizeHint() const
{
    const double width = contentWidth() + 2 * metrics().padding;
    return {static_cast<int>(std::ceil(width)), std::max(metrics().height, fontMetrics().height() + 4)};
}

void SmallButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const Theme theme = Theme::of(this);
    drawControlFace(painter, rect(), theme, {isEnabled(), underMouse(), isDown()});
    if (showsFocus(this))
        drawFocusRing(painter, rect(), controlCornerRadius, theme);
    paintContent(painter, isEnabled() ? colourOf(theme, textColour) : contentColour(theme, false));
}

void SmallButton::paintContent(QPainter& painter, const QColor& colour)
{
    const double whole = contentWidth();
    const double start = (width() - whole) / 2.0;
    const double side = symbol.isEmpty() ? 0 : metrics().symbolSize;
    const double textWidth = fontMetrics().horizontalAdvance(text());
    const bool mirrored = isRightToLeft();
    drawSymbol(painter, symbol, {mirrored ? start + whole - side : start, (height() - side) / 2.0, side, side},
               colour);
    painter.setPen(colour);
    painter.drawText(QRectF(mirrored ? start : start + whole - textWidth, 0, textWidth + 1, height()),
                     Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, text());
}

void SmallButton::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::EnabledChange)
        update();
    PaintedButton::changeEvent(event);
}

} // namespace lumenvale
