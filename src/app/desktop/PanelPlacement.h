// SPDX-License-Identifier: MIT
// Where the brightness panel opens: pure functions of rectangles in Qt's coordinates, whose y grows downward. A
// visible frame is a screen without the system's bars. Any thread.
#pragma once

#include "base/Geometry.h"

namespace lumenvale {

constexpr double screenMargin = 8;  ///< kept from every edge of a screen's visible frame
constexpr double statusItemGap = 6; ///< between the status item and the panel

/// The panel at the status item: centred below it, or above it where the system's bar is in the lower half of
/// the screen. `preferredHeight` is what the panel's content asks for.
Rect panelAtStatusItem(const Rect& item, const Rect& visibleFrame, double preferredHeight);

/// The panel near the Dock that was clicked at `anchor`: beside the edge that is nearest to it.
Rect panelNearDock(Point anchor, const Rect& visibleFrame, double preferredHeight);

} // namespace lumenvale
