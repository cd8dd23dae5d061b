// SPDX-License-Identifier: MIT
#include "ui/controls/Buttons.h"

#include "ui/look/KeyboardFocus.h"
#include "ui/look/Painting.h"
#include "ui/look/Symbols.h"

#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace lumenvale {

namespace {

constexpr double disabledOpacity = 0.35;

QColor faded(QColor colour, double factor)
{
    colour.setAlphaF(static_cast<float>(colour.alphaF() * factor));
    return colour;
}

} // namespace

PaintedButton::PaintedButton()
{
    setFocusPolicy(Qt::StrongFocus); // a weaker one is left out where the system tabs through text fields only
    setAttribute(Qt::WA_Hover);
    trackFocus();
}

void PaintedButton::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        return QAbstractButton::keyPressEvent(event);
    if (!event->isAutoRepeat())
        click();
}

struct SmallButton::Metrics {
    int height;
    int padding; ///< at either side
    int symbolSize;
    int gap; ///< between symbol and text
};

SmallButton::SmallButton(const QString& symbol, const QString& text, const QString& label, Size size)
    : symbol(symbol), size(size)
{
    setText(text);
    setAccessibleName(label.isEmpty() ? text : label);
    setFont(fontFor(TextRole::digits));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void SmallButton::setSymbol(const QString& next)
{
    if (next == symbol)
        return;
    symbol = next;
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
    const double strength = !isEnabled() ? disabledOpacity : isDown() ? 2.2 : underMouse() ? 1.4 : 1.0;
    drawRoundedBox(painter, rect(), controlCornerRadius, faded(theme.control, strength),
                   faded(theme.controlBorder, isEnabled() ? 1.0 : disabledOpacity));
    if (showsFocus(*this))
        drawFocusRing(painter, rect(), controlCornerRadius, theme);
    paintContent(painter, isEnabled() ? theme.of(textColour) : faded(theme.text, disabledOpacity));
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
