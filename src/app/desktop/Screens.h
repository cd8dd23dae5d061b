// SPDX-License-Identifier: MIT
// The window toolkit's screens and pointer in the coordinates of panel placement (y grows upward). Main thread.
#pragma once

#include "app/desktop/PanelPlacement.h"

#include <QRect>
#include <vector>

class QScreen;

namespace lumenvale {

ScreenFrame screenFrame(const QScreen& screen);
std::vector<ScreenFrame> screenFrames();
Point pointerLocation();

/// Back to the toolkit's whole pixels.
QRect windowGeometry(const Rect& frame);

} // namespace lumenvale
