// SPDX-License-Identifier: MIT
// The little of the X protocol that Qt does not offer: hints on a panel's window, and the root window's
// coordinates. Functions that take a window do nothing under another window system. Main thread only.
#pragma once

#include "base/Geometry.h"
#include "platform/Shell.h"

#include <vector>

namespace lumenvale::x11 {

/// Whether a compositing manager runs.
bool hasCompositor();

/// Keeps the window out of taskbars and pagers.
void skipTaskbar(WindowHandle window);

/// Asks the window manager to give the window the focus, as pagers may whatever the user did last.
void requestFocus(WindowHandle window);

/// Rows of pixels that make up a rectangle with round corners; x, y, width, height each.
std::vector<std::uint32_t> roundedRegion(int width, int height, int radius);

/// Asks the compositor to blur what is behind the region of the window (in the server's pixels).
void blurBehind(WindowHandle window, const std::vector<std::uint32_t>& region);

/// A point of the root window, in pixels, as a device-independent one. Qt keeps each screen's origin and scales
/// within the screen. Hosts of status items use these coordinates under Wayland too.
Point logicalPoint(int x, int y);

} // namespace lumenvale::x11
