// SPDX-License-Identifier: MIT
#include "ui/panel/BrightnessPanel.h"

#include "ui/controls/Accessibility.h"
#include "ui/look/Painting.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPainter>

namespace lumenvale {

namespace {

constexpr int shadowMargin = 24; ///< that the shadow fills

}

BrightnessPanel::BrightnessPanel() { setAccessibleRole(*this, QAccessible::Window); }

bool BrightnessPanel::event(QEvent* event)
{
    const bool isHandled = QWidget::event(event);
    if (event->type() == QEvent::WinIdChange && internalWinId() != 0 && windowMade)
        windowMade();
    return isHandled;
}

bool BrightnessPanel::focusNextPrevChild(bool next)
{
    // The base class lets Control-Tab and Alt-Tab pass, but not Meta-Tab.
    if (QGuiApplication::keyboardModifiers().testFlag(Qt::MetaModifier))
        return false;
    return QWidget::focusNextPrevChild(next);
}

void BrightnessPanel::setPanelGeometry(const QRect& panel, const QRect& room)
{
    const QRect whole = panel.adjusted(-shadowMargin, -shadowMargin, shadowMargin, shadowMargin) & (room | panel);
    setContentsMargins(panel.left() - whole.left(), panel.top() - whole.top(), whole.right() - panel.right(),
                       whole.bottom() - panel.bottom());
    setFixedSize(whole.size()); // window managers leave alone what cannot be resized
    move(whole.topLeft());
}

void BrightnessPanel::paintEvent(QPaintEvent*)
{
    if (contentsMargins().isNull())
        return;
    QPainter painter(this);
    drawShadow(painter, contentsRect(), panelCornerRadius, shadowMargin);
}

void BrightnessPanel::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    setFocus(); // none of its controls has it; the first Tab goes to the first of them
}

void MenuGlassBackground::setMaterial(Material next)
{
    material = next;
    update();
}

void MenuGlassBackground::paintEvent(QPaintEvent*)
{
    if (material == Material::system)
        return;
    QPainter painter(this);
    const Theme theme = Theme::of(this);
    const double line = hairlineWidth(painter);
    const QRectF inner = QRectF(rect()).adjusted(line, line, -line, -line);
    // The edge darkens what is behind the panel, not its surface.
    drawRoundedBox(painter, rect(), panelCornerRadius, Qt::transparent, theme.edge);
    painter.setPen(Qt::NoPen);
    painter.setBrush(material == Material::opaque ? QColor(theme.surface.rgb()) : theme.surface);
    painter.drawRoundedRect(inner, panelCornerRadius - line, panelCornerRadius - line);
}

} // namespace lumenvale
