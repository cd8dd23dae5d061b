// SPDX-License-Identifier: MIT
// The status item's image for bars that show it as it is. Any thread.
#pragma once

#include "platform/Shell.h"

namespace lumenvale {

/// `glyph`, drawn at `scale` pixels per point, in the middle of a square, with an outline of one point. Glyph and
/// outline are light and dark, or dark and light: whatever the bar's colour is, one of them stands out.
Bitmap barImage(const Bitmap& glyph, double scale, bool isLight);

} // namespace lumenvale
