// SPDX-License-Identifier: MIT
// Bitmaps as one TIFF file of several pages (TIFF 6.0, baseline RGB with a fourth sample for opacity). AppKit
// makes one image of it and draws the page that suits the screen. Pure; any thread.
#pragma once

#include "platform/Shell.h"

#include <cstdint>
#include <vector>

namespace lumenvale {

struct TiffPage {
    Bitmap bitmap;
    std::uint32_t pixelsPerPoint = 1; ///< becomes the page's resolution: 72 per inch, times this
};

std::vector<std::uint8_t> encodeTiff(const std::vector<TiffPage>& pages);

} // namespace lumenvale
