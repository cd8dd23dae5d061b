// SPDX-License-Identifier: MIT
#include "ui/look/Labels.h"

#include "ui/look/Painting.h"
#include "ui/look/Symbols.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>
#include <QTextDocument>
#include <algorithm>
#include <cmath>

namespace lumenvale {

QString toolTipText(const QString& text)
{
    constexpr qsizetype longestLine = 120; // the toolkit wraps nothing but markup
    const bool isPlain = text.size() <= longestLine && !Qt::mightBeRichText(text);
    return isPlain ? text : "<span>" + text.toHtmlEscaped() + "</span>";
}

QColor colourOf(const Theme& theme, TextColour colour)
{
    switch (colour) {
    case TextColour::primary:
        break;
    case TextColour::secondary:
        return theme.secondary;
    case TextColour::accent:
        return theme.accent;
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
    const QString line = oneLine(text);
    if (line == content)
        return;
    content = line;
    setAccessibleName(line);
    updateGeometry();
    updateToolTip();
    update();
}

QSize ElidedLabel::sizeHint() const
{
    const QFontMetricsF metrics(font());
    return {static_cast<int>(std::ceil(metrics.horizontalAdvance(content))), fontMetrics().height()};
}

QSize ElidedLabel::minimumSizeHint() const
{
    constexpr int leastWidth = 24;
    return {std::min(leastWidth, sizeHint().width()), sizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(colourOf(Theme::of(this), colour));
    drawElidedText(painter, rect(), content, layoutDirection());
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

void ElidedLabel::updateToolTip() { setToolTip(sizeHint().width() > width() ? toolTipText(content) : QString()); }

NumberLabel::NumberLabel(QWidget* parent) : QWidget(parent)
{
    setFont(fontFor(TextRole::digits));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void NumberLabel::setText(const QString& text)
{
    if (text == content)
        return;
    content = text;
    setAccessibleName(text);
    updateGeometry();
    update();
}

QSize NumberLabel::sizeHint() const
{
    return {static_cast<int>(std::ceil(tabularWidth(QFontMetricsF(font()), content))), fontMetrics().height()};
}

void NumberLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(Theme::of(this).secondary);
    QRectF box = rect();
    if (!isRightToLeft())
        box.setLeft(box.right() - tabularWidth(QFontMetricsF(font()), content));
    drawTabularText(painter, box, content);
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
