// SPDX-License-Identifier: MIT
#include "ui/controls/Labels.h"

#include "ui/controls/Accessibility.h"
#include "ui/controls/Layouts.h"
#include "ui/look/Painting.h"
#include "ui/look/Symbols.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>
#include <QTextDocument>
#include <algorithm>
#include <cmath>

namespace lumenvale {

namespace {

double digitWidth(const QFontMetricsF& metrics)
{
    double widest = 0.0;
    for (char digit = '0'; digit <= '9'; ++digit)
        widest = std::max(widest, metrics.horizontalAdvance(QLatin1Char(digit)));
    return widest;
}

double cellWidth(const QFontMetricsF& metrics, QChar character, double digit)
{
    return character.isDigit() ? digit : metrics.horizontalAdvance(character);
}

/// The width of a text whose digits all take the same width, so that a changing number stays where it is.
double tabularWidth(const QFontMetricsF& metrics, const QString& text)
{
    const double digit = digitWidth(metrics);
    double width = 0.0;
    for (const QChar character : text)
        width += cellWidth(metrics, character, digit);
    return width;
}

/// Draws it from the box's left, vertically centred, with the painter's font and pen.
void drawTabularText(QPainter& painter, const QRectF& box, const QString& text)
{
    const QFontMetricsF metrics(painter.font(), painter.device());
    const double digit = digitWidth(metrics);
    double left = box.left();
    for (const QChar character : text) {
        const double width = cellWidth(metrics, character, digit);
        painter.drawText(QRectF(left, box.top(), width, box.height()),
                         Qt::AlignCenter | Qt::TextDontClip | Qt::TextSingleLine, QString(character));
        left += width;
    }
}

} // namespace

QString qString(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString toolTipText(const QString& text)
{
    constexpr qsizetype longestLine = 120; // Qt wraps only markup
    const bool isPlain = text.size() <= longestLine && !Qt::mightBeRichText(text);
    return isPlain ? text : "<span>" + text.toHtmlEscaped() + "</span>";
}

ElidedLabel::ElidedLabel(TextRole role, TextColour colour) : colour(colour)
{
    setAccessibleRole(*this, QAccessible::StaticText);
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
    painter.setPen(Theme::of(this).of(colour));
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

NumberLabel::NumberLabel()
{
    setAccessibleRole(*this, QAccessible::StaticText);
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

SymbolLabel::SymbolLabel(const QString& symbol, int size, TextColour colour) : symbol(symbol), colour(colour)
{
    setFixedSize(size, size);
}

void SymbolLabel::setSymbol(const QString& next)
{
    if (next == symbol)
        return;
    symbol = next;
    update();
}

void SymbolLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    drawSymbol(painter, symbol, rect(), Theme::of(this).of(colour));
}

TextLabel::TextLabel(TextRole role, TextColour colour) : colour(colour)
{
    setFont(fontFor(role));
    setWordWrap(true);
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    applyColour();
}

void TextLabel::setColour(TextColour next)
{
    colour = next;
    applyColour();
}

void TextLabel::changeEvent(QEvent* event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyColour();
}

void TextLabel::applyColour()
{
    QPalette changed = palette();
    const QColor wanted = Theme::of(parentWidget() ? parentWidget()->palette() : changed).of(colour);
    if (changed.color(QPalette::WindowText) == wanted)
        return; // setting it is a palette change, too
    changed.setColor(QPalette::WindowText, wanted);
    setPalette(changed);
}

NoticeLabel::NoticeLabel()
    : symbol(new SymbolLabel("exclamationmark.triangle", 14, TextColour::warning)),
      label(new TextLabel(TextRole::digits))
{
    QHBoxLayout* line = makeLine(this, 5, {2, 0, 0, 0});
    line->addWidget(symbol, 0, Qt::AlignTop);
    line->addWidget(label, 1);
}

void NoticeLabel::setText(const QString& text, bool isWarning)
{
    symbol->setVisible(isWarning);
    label->setColour(isWarning ? TextColour::primary : TextColour::secondary);
    label->setText(text);
}

} // namespace lumenvale

#include "moc_Labels.cpp"
