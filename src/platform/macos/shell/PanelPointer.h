// SPDX-License-Identifier: MIT
// What the pointer does over a panel while another program is the active one: Qt drops those events, so they are
// handed to its window here. Main thread.
#pragma once

#include "base/Geometry.h"
#include "platform/Shell.h"

namespace lumenvale {

enum class PointerMotion { entered, moved, left };

/// `inside` is in the window, `onScreen` on the desktop; points, y grows downward. Ignored when Qt has no such
/// window.
void passPointer(WindowHandle window, PointerMotion motion, Point inside, Point onScreen);

} // namespace lumenvale
