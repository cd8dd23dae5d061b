// SPDX-License-Identifier: MIT
// Brings together what the window system knows of a screen (where it is, how large, how fast) and what the kernel
// knows of its connector (which monitor it is). Pure; main thread.
#pragma once

#include "displays/ScreenSource.h"
#include "platform/linux/displays/Connector.h"

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
};

/// One screen per display: first those that the window system shows, in its order, then connectors that it does
/// not know, such as mirrored ones. A window screen that no connector belongs to is listed with a number made
/// from its name and without a UUID; one without a name is a placeholder and is left out.
std::vector<Screen> joinScreens(const std::vector<Connector>& connectors,
                                const std::vector<WindowScreen>& screens);

} // namespace lumenvale
