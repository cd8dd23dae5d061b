// SPDX-License-Identifier: MIT
#include "platform/macos/displays/MacScreenSource.h"

#include "platform/macos/displays/AppKitScreens.h"
#include "platform/macos/displays/DisplayFacts.h"

#include <CoreGraphics/CoreGraphics.h>

namespace lumenvale {

std::vector<Screen> MacScreenSource::screens()
{
    std::vector<Screen> result;
    for (const AppKitScreen& each : appKitScreens()) {
        Screen screen = each.displayID ? displayFacts(*each.displayID) : Screen();
        screen.name = each.name;
        screen.frameWidth = each.frame.width;
        screen.frameHeight = each.frame.height;
        result.push_back(screen);
    }
    return result;
}

bool MacScreenSource::isAsleep(std::uint32_t displayID) { return CGDisplayIsAsleep(displayID) != 0; }

std::optional<std::uint32_t> MacScreenSource::displayAt(Point point)
{
    for (const AppKitScreen& each : appKitScreens()) {
        if (each.frame.contains(point))
            return each.displayID;
    }
    return std::nullopt;
}

} // namespace lumenvale
