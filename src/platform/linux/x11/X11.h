// SPDX-License-Identifier: MIT
// The little of the X protocol that Qt does not offer: hints on a panel's window, and the root window's
// coordinates. Functions that take a window do nothing under another window system. Main thread only.
#pragma once

#include "base/Geometry.h"
#include "platform/Shell.h"

#include <QRect>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace lumenvale::x11 {

/// Whether a compositing manager runs.
bool hasCompositor();

/// The window of the tray of the X server's own kind; 0 without one. Native event filters hear of its end.
std::uint32_t trayWindow();
/// Whether the event, as native event filters get it, says that a program has begun to serve all others as what it
/// names: a tray, for example.
bool announcesManager(const void* event);

/// Names the program that a window belongs to, before the window is shown. Qt would name it by its file.
void setClass(WindowHandle window, const std::string& identifier);

/// Keeps the window out of taskbars and pagers.
void skipTaskbar(WindowHandle window);

/// Shows the window on whichever workspace the user switches to. To be called before the window is shown.
void showOnEveryDesktop(WindowHandle window);

/// Asks the window manager to give the window the focus, as pagers may whatever the user did last.
void requestFocus(WindowHandle window);

/// Rows of pixels that make up a rectangle with round corners; x, y, width, height each.
std::vector<std::uint32_t> roundedRegion(const QRect& box, int radius);

/// Whether the compositor blurs what is behind windows that ask for it.
bool doesBlur();

/// Whether the window manager knows of shadows that windows draw themselves; it then draws none for them.
bool knowsFrameExtents();

/// Makes what lies between the edges of the window and of `content` its shadow, in the server's pixels.
void setFrameExtents(WindowHandle window, const QRect& whole, const QRect& content);

/// Lets clicks beside `content` through to what is behind the window, in the server's pixels.
void setInputRegion(WindowHandle window, const QRect& content);

/// Asks the compositor to blur what is behind the region of the window (in the server's pixels).
void blurBehind(WindowHandle window, const std::vector<std::uint32_t>& region);

/// Where the pointer is while it is over a bar, from one side of the bar to the other: what is clicked there, as
/// far as its place counts. Device-independent; none elsewhere.
std::optional<Rect> pointedPlaceOnBar();

/// A point of the root window, in pixels, as a device-independent one. Qt keeps each screen's origin and scales
/// within the screen. Hosts of status items use these coordinates under Wayland too.
Point logicalPoint(int x, int y);

} // namespace lumenvale::x11
