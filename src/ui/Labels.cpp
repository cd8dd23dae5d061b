// SPDX-License-Identifier: MIT
#include "ui/Labels.h"

#include "ui/Symbols.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <algorithm>

namespace lumenvale {

QColor colourOf(const Theme& theme, TextColour colour)
{
    switch (colour) {
    case TextColour::primary:
        break;
    case TextColour::secondary:
        return theme.secondary;
    case TextColour::warning:
        return theme.warning;
    case TextColour::failure:
        return theme.failure;
    }
    return theme.text;
}

ElidedLabel::ElidedLabel(TextRole role, TextColour textColour, QWidget* parent)
    : QWidget(parent), colour(textColour)
{
    setFont(fontFor(role));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ElidedLabel::setText(const QString& text)
{
    if (text == content)
        return;
    content = text;
    setAccessibleName(text);
    updateGeometry();
    updateToolTip();
    update();
}

QSize ElidedLabel::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(content) + 1, fontMetrics().height()};
}

QSize ElidedLabel::minimumSizeHint() const
{
    constexpr int ellipsisWidth = 24;
    return {std::min(ellipsisWidth, sizeHint().width()), sizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(colourOf(Theme::of(this), colour));
    const QString shown = fontMetrics().elidedText(content, Qt::ElideRight, width());
    painter.drawText(rect(), QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft) | Qt::AlignVCenter, shown);
}

void ElidedLabel::resizeEvent(QResizeEvent* event)
{
    updateToolTip();
    QWidget::resizeEvent(event);
}

void ElidedLabel::changeEvent(QEvent* event)
{
    update();
    QWidget::changeEvent(event);
}

void ElidedLabel::updateToolTip()
{
    setToolTip(fontMetrics().horizontalAdvance(content) > width() ? content : QString());
}

SymbolLabel::SymbolLabel(const QString& name, int size, TextColour symbolColour, QWidget* parent)
    : QWidget(parent), symbol(name), colour(symbolColour)
{
    setFixedSize(size, size);
}

void SymbolLabel::setSymbol(const QString& name)
{
    if (name == symbol)
        return;
    symbol = name;
    update();
}

void SymbolLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    drawSymbol(painter, symbol, rect(), colourOf(Theme::of(this), colour));
}

Divider::Divider(QWidget* parent) : QWidget(parent) { setFixedHeight(1); }

void Divider::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Theme::of(this).hairline);
}

} // namespace lumenvale
