// SPDX-License-Identifier: MIT
#include "ui/SmallButton.h"

#include "ui/FocusMark.h"
#include "ui/Painting.h"
#include "ui/Symbols.h"

#include <QEvent>
#include <QPainter>
#include <algorithm>

namespace lumenvale {

namespace {
constexpr int lowestHeight = 22;
constexpr int symbolSize = 13;
constexpr int padding = 8;
constexpr int gap = 6;
} // namespace

SmallButton::SmallButton(const QString& symbolName, const QString& text, const QString& label, QWidget* parent)
    : QAbstractButton(parent), symbol(symbolName)
{
    setText(text);
    setAccessibleName(label.isEmpty() ? text : label);
    setFont(fontFor(TextRole::digits));
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void SmallButton::setSymbol(const QString& name)
{
    symbol = name;
    updateGeometry();
    update();
}

void SmallButton::setTextColour(const QColor& colour)
{
    textColour = colour;
    update();
}

QSize SmallButton::sizeHint() const
{
    int width = 2 * padding;
    if (!symbol.isEmpty())
        width += symbolSize;
    if (!text().isEmpty())
        width += fontMetrics().horizontalAdvance(text()) + (symbol.isEmpty() ? 4 : gap);
    return {std::max(width, 29), std::max(lowestHeight, fontMetrics().height() + 4)};
}

void SmallButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const Theme theme = Theme::of(this);
    drawControlFace(painter, rect(), theme, {isEnabled(), underMouse(), isDown()});
    if (showsFocus(this))
        drawFocusRing(painter, rect(), controlCornerRadius, theme);
    const QColor colour = isEnabled() && textColour.isValid() ? textColour : contentColour(theme, isEnabled());
    const int textWidth = text().isEmpty() ? 0 : fontMetrics().horizontalAdvance(text());
    const int symbolWidth = symbol.isEmpty() ? 0 : symbolSize;
    const int both = symbolWidth > 0 && textWidth > 0 ? gap : 0;
    const double start = (width() - (symbolWidth + both + textWidth)) / 2.0;
    const bool mirrored = isRightToLeft();
    const double symbolX = mirrored ? start + textWidth + both : start;
    const double textX = mirrored ? start : start + symbolWidth + both;
    if (symbolWidth > 0)
        drawSymbol(painter, symbol,
                   QRectF(symbolX, (QWidget::height() - symbolSize) / 2.0, symbolSize, symbolSize), colour);
    painter.setPen(colour);
    painter.drawText(QRectF(textX, 0, textWidth + 1, QWidget::height()), Qt::AlignVCenter | Qt::AlignLeft, text());
}

void SmallButton::focusInEvent(QFocusEvent* event)
{
    markFocus(*this, *event);
    QAbstractButton::focusInEvent(event);
}

void SmallButton::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::EnabledChange)
        update();
    QAbstractButton::changeEvent(event);
}

} // namespace lumenvale
