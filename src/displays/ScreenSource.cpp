// SPDX-License-Identifier: MIT
#include "displays/ScreenSource.h"

#include <cstdlib>
#include <utility>

namespace lumenvale {

namespace {

/// Truncates toward zero. A frame beyond the range of the type is a defect of the screen source.
std::int64_t wholePoints(double length)
{
    constexpr double limit = 0x1p63;
    const bool fits = length >= -limit && length < limit; // false for NaN
    if (!fits)
        std::abort();
    return static_cast<std::int64_t>(length);
}

} // namespace

std::optional<DisplayInfo> makeDisplayInfo(const Screen& screen)
{
    if (!screen.displayID)
        return std::nullopt;
    DisplayInfo display;
    display.id = stableIdentifier(screen.uuid, *screen.displayID);
    display.displayID = *screen.displayID;
    display.name = screen.name;
    display.isBuiltIn = screen.isBuiltIn;
    display.isMain = screen.isMain;
    display.vendor = screen.vendor;
    display.model = screen.model;
    display.serial = screen.serial;
    if (screen.mode) {
        display.pixelWidth = screen.mode->pixelWidth;
        display.pixelHeight = screen.mode->pixelHeight;
        display.refreshRate = screen.mode->refreshRate;
    }
    display.logicalWidth = wholePoints(screen.frameWidth);
    display.logicalHeight = wholePoints(screen.frameHeight);
    return display;
}

std::vector<DisplayInfo> connectedDisplays(ScreenSource& screens)
{
    std::vector<DisplayInfo> found;
    for (const Screen& screen : screens.screens()) {
        if (std::optional<DisplayInfo> made = makeDisplayInfo(screen))
            found.push_back(std::move(*made));
    }
    return found;
}

} // namespace lumenvale
