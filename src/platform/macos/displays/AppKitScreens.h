// SPDX-License-Identifier: MIT
// What only NSScreen knows of the screens. Main thread; works without an application object.
#pragma once

#include "base/Geometry.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace lumenvale {

struct AppKitScreen {
    std::optional<std::uint32_t> displayID;
    std::string name;
    Rect frame; ///< points; y grows downward from the top of the first screen, as in Qt
};

/// In the system's order: the first holds the menu bar.
std::vector<AppKitScreen> appKitScreens();

/// Turns a rectangle of AppKit's (y grows upward from the bottom of the first screen) into Qt's.
Rect qtRect(double x, double y, double width, double height);

} // namespace lumenvale
