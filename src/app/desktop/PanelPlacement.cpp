// SPDX-License-Identifier: MIT
#include "app/desktop/PanelPlacement.h"

#include "ui/look/PreferredHeight.h"

#include <algorithm>
#include <cmath>

namespace lumenvale {

namespace {

double widthOn(const Rect& visibleFrame)
{
    return std::max(0.0, std::min<double>(panelWidth, visibleFrame.width - 2 * screenMargin));
}

// Not std::clamp: on a screen smaller than the margins the bounds cross. Then the right edge and the top count.

double clampX(double x, double width, const Rect& visibleFrame)
{
    return std::min(std::max(x, visibleFrame.x + screenMargin), visibleFrame.maxX() - width - screenMargin);
}

double clampY(double y, double height, const Rect& visibleFrame)
{
    return std::max(std::min(y, visibleFrame.maxY() - height - screenMargin), visibleFrame.y + screenMargin);
}

} // namespace

Rect panelAtStatusItem(const Rect& item, const Rect& visibleFrame, double preferredHeight)
{
    const double width = widthOn(visibleFrame);
    const double x = clampX(item.midX() - width / 2, width, visibleFrame);
    if (item.midY() <= visibleFrame.midY()) {
        const double top = std::max(visibleFrame.y, item.maxY() + statusItemGap);
        const double height = std::max(0.0, std::min(visibleFrame.maxY() - top - screenMargin, preferredHeight));
        return {x, top, width, height};
    }
    const double bottom = std::min(visibleFrame.maxY(), item.y - statusItemGap);
    const double height = std::max(0.0, std::min(bottom - visibleFrame.y - screenMargin, preferredHeight));
    return {x, bottom - height, width, height};
}

Rect panelNearDock(Point anchor, const Rect& visibleFrame, double preferredHeight)
{
    const double width = widthOn(visibleFrame);
    const double height = std::max(0.0, std::min(visibleFrame.height - 2 * screenMargin, preferredHeight));
    const double toLeft = std::abs(anchor.x - visibleFrame.x);
    const double toRight = std::abs(anchor.x - visibleFrame.maxX());
    const double toBottom = std::abs(anchor.y - visibleFrame.maxY());

    double x = anchor.x - width / 2;
    double y = visibleFrame.maxY() - height - screenMargin;
    if (std::min(toLeft, toRight) < toBottom) {
        x = toLeft < toRight ? visibleFrame.x + screenMargin : visibleFrame.maxX() - width - screenMargin;
        y = anchor.y - height / 2;
    }
    return {clampX(x, width, visibleFrame), clampY(y, height, visibleFrame), width, height};
}

} // namespace lumenvale
