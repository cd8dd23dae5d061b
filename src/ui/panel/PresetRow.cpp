// SPDX-License-Identifier: MIT
#include "ui/panel/PresetRow.h"

#include "ui/controls/Accessibility.h"
#include "ui/controls/Labels.h"
#include "ui/look/KeyboardFocus.h"
#include "ui/look/Painting.h"
#include "ui/look/Symbols.h"

#include <QFontMetricsF>
#include <QPainter>
#include <cmath>

namespace lumenvale {

namespace {

constexpr double checkmarkWidth = 12;
constexpr double gap = 6;

/// What a screen reader sees: a button whose value is "Active" while its preset is.
class PresetRowAccessible final : public AccessibleButton {
public:
    explicit PresetRowAccessible(PresetRow* row) : AccessibleButton(row, QAccessible::Button) {}

    QString text(QAccessible::Text kind) const override
    {
        // The base class says the tooltip where there is no description.
        return kind == QAccessible::Value ? button()->accessibleDescription() : AccessibleButton::text(kind);
    }
};

} // namespace

PresetRow::PresetRow()
{
    installAccessible<PresetRow, PresetRowAccessible>();
    setFixedHeight(rowHeight);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setFont(fontFor(TextRole::body));
}

void PresetRow::show(const QString& name, bool active)
{
    if (name == text() && active == isActive)
        return;
    isActive = active;
    setText(name);
    setShortcut({}); // which the base class makes from an ampersand in the name
    setAccessibleName(name);
    setAccessibleDescription(active ? QStringLiteral("Active") : QString());
    setFont(fontFor(active ? TextRole::strong : TextRole::body));
    updateToolTip();
    update();
}

QSize PresetRow::sizeHint() const
{
    const double width = checkmarkWidth + gap + fontMetrics().horizontalAdvance(text()) + 2 * overhang;
    return {static_cast<int>(std::ceil(width)), rowHeight};
}

QRectF PresetRow::nameBox() const
{
    const double before = overhang + checkmarkWidth + gap;
    const QRectF box = rect();
    return isRightToLeft() ? box.adjusted(overhang, 0, -before, 0) : box.adjusted(before, 0, -overhang, 0);
}

void PresetRow::updateToolTip()
{
    const bool isCut = QFontMetricsF(font()).horizontalAdvance(text()) > nameBox().width();
    setToolTip(isCut ? toolTipText(text()) : QString());
}

void PresetRow::resizeEvent(QResizeEvent* event)
{
    updateToolTip();
    PaintedButton::resizeEvent(event);
}

void PresetRow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const Theme theme = Theme::of(this);
    const QRectF highlight = QRectF(rect()).adjusted(0, 1, 0, -1);
    if (underMouse() || isDown()) {
        QColor fill = theme.control;
        fill.setAlphaF(fill.alphaF() * (isDown() ? 1.8F : 1.0F));
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(fill);
        painter.drawRoundedRect(highlight, controlCornerRadius, controlCornerRadius);
    }
    if (showsFocus(*this))
        drawFocusRing(painter, highlight, controlCornerRadius, theme);
    const double markLeft = isRightToLeft() ? width() - overhang - checkmarkWidth : overhang;
    if (isActive)
        drawSymbol(painter, "checkmark",
                   {markLeft, (height() - checkmarkWidth) / 2.0, checkmarkWidth, checkmarkWidth}, theme.text,
                   SymbolWeight::semibold);
    painter.setPen(theme.text);
    drawElidedText(painter, nameBox(), text(), layoutDirection());
}

} // namespace lumenvale
