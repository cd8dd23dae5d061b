// SPDX-License-Identifier: MIT
#include "app/desktop/Screens.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

namespace lumenvale {

namespace {

Rect upward(const QRect& rect)
{
    return flipped(Rect{double(rect.x()), double(rect.y()), double(rect.width()), double(rect.height())});
}

} // namespace

ScreenFrame screenFrame(const QScreen& screen)
{
    return {upward(screen.geometry()), upward(screen.availableGeometry()),
            &screen == QGuiApplication::primaryScreen()};
}

std::vector<ScreenFrame> screenFrames()
{
    std::vector<ScreenFrame> frames;
    for (const QScreen* screen : QGuiApplication::screens())
        frames.push_back(screenFrame(*screen));
    return frames;
}

Point pointerLocation()
{
    const QPoint pointer = QCursor::pos();
    // The middle of the pixel: turned over, a pixel's edge would belong to its neighbour.
    return flipped(Point{pointer.x() + 0.5, pointer.y() + 0.5});
}

QRect windowGeometry(const Rect& frame)
{
    const Rect turned = flipped(frame);
    return QRectF(turned.x, turned.y, turned.width, turned.height).toRect();
}

} // namespace lumenvale
