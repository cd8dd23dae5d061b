// SPDX-License-Identifier: MIT
// What the window system knows of the screens.
#pragma once

#include "base/Geometry.h"
#include "displays/DisplayInfo.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace lumenvale {

/// A screen's current mode.
struct ScreenMode {
    std::int64_t pixelWidth = 0;
    std::int64_t pixelHeight = 0;
    double refreshRate = 0.0; ///< hertz; 0 when not reported
};

/// One screen, as the system reports it.
struct Screen {
    std::optional<std::uint32_t> displayID; ///< none: the screen has no display number and is left out
    std::optional<std::string> uuid;        ///< canonical form
    std::string name;
    bool isBuiltIn = false;
    bool isMain = false;
    std::uint32_t vendor = 0;
    std::uint32_t model = 0;
    std::uint32_t serial = 0;
    std::optional<ScreenMode> mode;
    double frameWidth = 0.0; ///< points; finite
    double frameHeight = 0.0;
};

/// A new record for a screen, or none when the screen has no display number.
std::optional<DisplayInfo> makeDisplayInfo(const Screen& screen);

/// Main thread only.
class ScreenSource {
public:
    virtual ~ScreenSource() = default;

    /// The screens that are connected now, in the system's order.
    virtual std::vector<Screen> screens() = 0;

    /// True while the display's picture is switched off by the system (power saving), so that reading its
    /// brightness could wake it. False where the system does not tell.
    virtual bool isAsleep(std::uint32_t displayID) = 0;

    /// The number of the display that shows this point of the desktop (device-independent, y grows downward);
    /// none where no display does or the system does not tell.
    virtual std::optional<std::uint32_t> displayAt(Point) { return std::nullopt; }
};

/// A new record for each connected screen that is a display, in the system's order.
std::vector<DisplayInfo> connectedDisplays(ScreenSource& screens);

} // namespace lumenvale
