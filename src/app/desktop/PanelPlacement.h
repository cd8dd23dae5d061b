// SPDX-License-Identifier: MIT
// Where the brightness panel opens: pure functions of rectangles. y grows UPWARD here; the delegate turns the
// window system's coordinates over once on the way in and once on the way out. Any thread.
#pragma once

#include "base/Geometry.h"

#include <optional>
#include <vector>

namespace lumenvale {

constexpr double screenMargin = 8;  ///< kept from every edge of a screen's visible frame
constexpr double statusItemGap = 6; ///< between the status item and the panel

struct ScreenFrame {
    Rect frame;
    Rect visibleFrame; ///< without the system's bars
    bool isMain = false;
};

/// The first screen whose frame contains the point, else the main screen, else none.
std::optional<ScreenFrame> screenAt(Point point, const std::vector<ScreenFrame>& screens);

/// The panel at the status item: centred below it, or above it where the system's bar is in the lower half of
/// the screen. `preferredHeight` is what the panel's content asks for.
Rect panelAtStatusItem(const Rect& item, const Rect& visibleFrame, double preferredHeight);

/// The panel near the Dock that was clicked at `anchor`: beside the edge that is nearest to it.
Rect panelNearDock(Point anchor, const Rect& visibleFrame, double preferredHeight);

} // namespace lumenvale
