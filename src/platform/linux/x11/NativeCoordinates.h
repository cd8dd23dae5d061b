// SPDX-License-Identifier: MIT
// Between the window system's pixels and the toolkit's device-independent ones. Main thread only.
#pragma once

#include "base/Geometry.h"

#include <QGuiApplication>
#include <QScreen>

namespace lumenvale {

/// A point of the X server's root window. The toolkit keeps each screen's origin and scales within the screen.
inline Point logicalPoint(int x, int y)
{
    for (const QScreen* screen : QGuiApplication::screens()) {
        const double ratio = screen->devicePixelRatio();
        const QRectF native(screen->geometry().topLeft(), QSizeF(screen->size()) * ratio);
        if (native.contains(x, y))
            return {native.x() + (x - native.x()) / ratio, native.y() + (y - native.y()) / ratio};
    }
    return {double(x), double(y)};
}

} // namespace lumenvale
