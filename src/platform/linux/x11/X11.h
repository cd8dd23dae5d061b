// SPDX-License-Identifier: MIT
// The little of the X protocol that the toolkit does not offer: hints on a panel's window. Every function does
// nothing under another window system. Main thread only.
#pragma once

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

} // namespace lumenvale::x11
