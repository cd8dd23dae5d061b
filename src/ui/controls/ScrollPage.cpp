// SPDX-License-Identifier: MIT
#include "ui/controls/ScrollPage.h"

#include "ui/look/Theme.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionSlider>

namespace lumenvale {

ScrollBar::ScrollBar() : QScrollBar(Qt::Vertical)
{
    setAttribute(Qt::WA_OpaquePaintEvent, false);
    setFixedWidth(10);
}

void ScrollBar::paintEvent(QPaintEvent*)
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRectF handle = style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    QColor colour = Theme::of(this).secondary;
    colour.setAlphaF(isSliderDown() || underMouse() ? 0.8F : 0.45F);
    painter.setBrush(colour);
    painter.drawRoundedRect(QRectF(2.5, handle.top(), 5, handle.height()), 2.5, 2.5);
}

ScrollPage::ScrollPage(QWidget* content)
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    setVerticalScrollBar(new ScrollBar);
    setWidget(content);
    content->setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
}

} // namespace lumenvale
