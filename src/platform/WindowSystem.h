// SPDX-License-Identifier: MIT
// What the window system tells of the screens to those who know the displays by other means. Main thread.
#pragma once

#include "base/Signal.h"
#include "displays/ScreenSource.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace lumenvale {

/// A screen as the window system describes it.
struct WindowScreen {
    std::string name; ///< the output's: "DP-1", "HDMI-1"
    std::string model = {};
    std::string serialNumber = {}; ///< text or decimal
    double width = 0.0;            ///< points
    double height = 0.0;
    double pixelRatio = 1.0;
    double refreshRate = 0.0; ///< hertz
    bool isPrimary = false;
    double x = 0.0; ///< points; of the upper left corner on the desktop
    double y = 0.0;
    std::optional<ScreenMode> mode = {}; ///< exact, where it is known; the points above may be rounded
};

class WindowSystem {
public:
    virtual ~WindowSystem() = default;

    /// The screens as they are now, in the window system's order.
    virtual std::vector<WindowScreen> screens() = 0;

    /// Calls `changed` whenever `screens` has changed, from now on.
    [[nodiscard]] virtual Subscription observe(std::function<void()> changed) = 0;
};

} // namespace lumenvale
