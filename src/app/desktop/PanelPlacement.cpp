// SPDX-License-Identifier: MIT
#include "app/desktop/PanelPlacement.h"

#include "ui/panel/BrightnessMenu.h"

#include <algorithm>
#include <cmath>

namespace lumenvale {

namespace {

double widthOn(const Rect& visibleFrame)
{
    return std::max(0.0, std::min<double>(panelWidth, visibleFrame.width - 2 * screenMargin));
}

// Not std::clamp: on a screen smaller than the margins the bounds cross, and the second one wins.
double clampX(double x, double width, const Rect& visibleFrame)
{
    return std::min(std::max(x, visibleFrame.x + screenMargin), visibleFrame.maxX() - width - screenMargin);
}

} // namespace

std::optional<ScreenFrame> screenAt(Point point, const std::vector<ScreenFrame>& screens)
{
    const auto containing = std::find_if(screens.begin(), screens.end(),
                                         [point](const ScreenFrame& each) { return each.frame.contains(point); });
    if (containing != screens.end())
        return *containing;
    const auto main =
        std::find_if(screens.begin(), screens.end(), [](const ScreenFrame& each) { return each.isMain; });
    return main != screens.end() ? std::optional(*main) : std::nullopt;
}

Rect panelAtStatusItem(const Rect& item, const Rect& visibleFrame, double preferredHeight)
{
    const double width = widthOn(visibleFrame);
    const double x = clampX(item.midX() - width / 2, width, visibleFrame);
    if (item.midY() >= visibleFrame.midY()) {
        const double top = std::min(visibleFrame.maxY(), item.y - statusItemGap);
        const double height = std::max(0.0, std::min(top - visibleFrame.y - screenMargin, preferredHeight));
        return {x, top - height, width, height};
    }
    const double bottom = std::max(visibleFrame.y, item.maxY() + statusItemGap);
    const double height = std::max(0.0, std::min(visibleFrame.maxY() - bottom - screenMargin, preferredHeight));
    return {x, bottom, width, height};
}

Rect panelNearDock(Point anchor, const Rect& visibleFrame, double preferredHeight)
{
    const double width = widthOn(visibleFrame);
    const double height = std::max(0.0, std::min(visibleFrame.height - 2 * screenMargin, preferredHeight));
    const double toLeft = std::abs(anchor.x - visibleFrame.x);
    const double toRight = std::abs(anchor.x - visibleFrame.maxX());
    const double toBottom = std::abs(anchor.y - visibleFrame.y);

    double x = anchor.x - width / 2;
    double y = visibleFrame.y + screenMargin;
    if (std::min(toLeft, toRight) < toBottom) {
        x = toLeft < toRight ? visibleFrame.x + screenMargin : visibleFrame.maxX() - width - screenMargin;
        y = anchor.y - height / 2;
    }
    y = std::min(std::max(y, visibleFrame.y + screenMargin), visibleFrame.maxY() - height - screenMargin);
    return {clampX(x, width, visibleFrame), y, width, height};
}

} // namespace lumenvale
