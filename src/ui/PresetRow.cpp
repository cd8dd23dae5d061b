// SPDX-License-Identifier: MIT
#include "ui/PresetRow.h"

#include "ui/FocusMark.h"
#include "ui/Painting.h"
#include "ui/PreferredHeight.h"
#include "ui/Symbols.h"

#include <QPainter>
#include <QStyle>

namespace lumenvale {

namespace {
constexpr int checkmarkWidth = 12;
constexpr int gap = 6;
} // namespace

PresetRow::PresetRow(QWidget* parent) : QAbstractButton(parent)
{
    setFixedHeight(presetRowHeight);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
}

void PresetRow::show(const QString& name, bool active)
{
    setText(name);
    setAccessibleName(name);
    setAccessibleDescription(active ? QStringLiteral("Active") : QString());
    isActive = active;
    setFont(fontFor(active ? TextRole::strong : TextRole::body));
    setToolTip(fontMetrics().horizontalAdvance(name) > width() - checkmarkWidth - gap ? name : QString());
    update();
}

QSize PresetRow::sizeHint() const
{
    return {checkmarkWidth + gap + fontMetrics().horizontalAdvance(text()), presetRowHeight};
}

void PresetRow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Theme theme = Theme::of(this);
    const QRectF box = QRectF(rect()).adjusted(-2, 1, 2, -1);
    if (underMouse() || isDown()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme.control);
        painter.drawRoundedRect(box.adjusted(2, 0, -2, 0), controlCornerRadius, controlCornerRadius);
    }
    if (showsFocus(this))
        drawFocusRing(painter, QRectF(rect()).adjusted(0, 1, 0, -1), controlCornerRadius, theme);
    const QRect mark = QStyle::visualRect(layoutDirection(), rect(), QRect(0, 7, checkmarkWidth, checkmarkWidth));
    const QRect name = QStyle::visualRect(
        layoutDirection(), rect(), QRect(checkmarkWidth + gap, 0, width() - checkmarkWidth - gap, height()));
    if (isActive)
        drawSymbol(painter, "checkmark", mark, theme.text);
    painter.setPen(theme.text);
    painter.drawText(name, QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft) | Qt::AlignVCenter,
                     fontMetrics().elidedText(text(), Qt::ElideRight, name.width()));
}

void PresetRow::focusInEvent(QFocusEvent* event)
{
    markFocus(*this, *event);
    QAbstractButton::focusInEvent(event);
}

} // namespace lumenvale
