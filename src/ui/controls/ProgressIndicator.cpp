// SPDX-License-Identifier: MIT
#include "ui/controls/ProgressIndicator.h"

#include "ui/look/Theme.h"

#include <QPainter>
#include <QTimerEvent>
#include <algorithm>

namespace lumenvale {

namespace {

constexpr int spokes = 8;
constexpr int turnMilliseconds = 800;
constexpr double inner = 3.5;
constexpr double outer = 7.0;
constexpr double thickness = 1.75;
constexpr double faintest = 0.2;

} // namespace

ProgressIndicator::ProgressIndicator(const QString& name, QWidget* parent) : QProgressBar(parent)
{
    setRange(0, 0);
    setTextVisible(false);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleName(name);
    setToolTip(name);
}

void ProgressIndicator::showEvent(QShowEvent* event)
{
    turning.start(turnMilliseconds / spokes, this);
    QProgressBar::showEvent(event);
}

void ProgressIndicator::hideEvent(QHideEvent* event)
{
    turning.stop();
    QProgressBar::hideEvent(event);
}

void ProgressIndicator::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != turning.timerId()) {
        QProgressBar::timerEvent(event);
        return;
    }
    foremost = (foremost + 1) % spokes;
    update();
}

void ProgressIndicator::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(QRectF(rect()).center());
    QColor colour = Theme::of(this).text;
    for (int spoke = 0; spoke < spokes; ++spoke) {
        const int age = (foremost - spoke + spokes) % spokes;
        colour.setAlphaF(static_cast<float>(std::max(faintest, 0.85 - 0.13 * age)));
        painter.setPen(QPen(colour, thickness, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(0, -inner), QPointF(0, -outer));
        painter.rotate(360.0 / spokes);
    }
}

} // namespace lumenvale
