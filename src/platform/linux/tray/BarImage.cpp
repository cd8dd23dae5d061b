// SPDX-License-Identifier: MIT
#include "platform/linux/tray/BarImage.h"

#include <algorithm>
#include <cmath>

namespace lumenvale {

namespace {

constexpr double outlineWidth = 1; // points
constexpr std::uint32_t light = 0xF2F2F4;
constexpr std::uint32_t dark = 0x1D1D1F;

/// The opacity of a bitmap's pixel, from 0 to 1; 0 outside of it.
double opacityAt(const Bitmap& bitmap, int x, int y)
{
    if (x < 0 || y < 0 || x >= bitmap.width || y >= bitmap.height)
        return 0;
    return (bitmap.pixels[std::size_t(y) * bitmap.width + x] >> 24) / 255.0;
}

/// The opacity of the glyph made wider by `reach` pixels on all sides.
double widenedOpacityAt(const Bitmap& glyph, int x, int y, double reach)
{
    const int whole = int(std::ceil(reach));
    double opacity = 0;
    for (int dy = -whole; dy <= whole; ++dy) {
        for (int dx = -whole; dx <= whole; ++dx) {
            const double nearness = std::clamp(reach + 1 - std::hypot(dx, dy), 0.0, 1.0);
            opacity = std::max(opacity, nearness * opacityAt(glyph, x + dx, y + dy));
        }
    }
    return opacity;
}

/// The upper colour with this opacity over the lower one with that; not premultiplied.
std::uint32_t blended(std::uint32_t upper, double upperOpacity, std::uint32_t lower, double lowerOpacity)
{
    const double rest = lowerOpacity * (1 - upperOpacity);
    const double opacity = upperOpacity + rest;
    std::uint32_t pixel = std::uint32_t(std::lround(opacity * 255)) << 24;
    for (const int shift : {16, 8, 0}) {
        const double above = upper >> shift & 0xFF;
        const double below = lower >> shift & 0xFF;
        const double part = opacity > 0 ? (above * upperOpacity + below * rest) / opacity : 0;
        pixel |= std::uint32_t(std::lround(part)) << shift;
    }
    return pixel;
}

} // namespace

Bitmap barImage(const Bitmap& glyph, double scale, bool isLight)
{
    const double reach = outlineWidth * scale;
    const int side = std::max(glyph.width, glyph.height) + 2 * int(std::ceil(reach));
    const int left = (side - glyph.width) / 2;
    const int top = (side - glyph.height) / 2;
    Bitmap image = {side, side, {}};
    image.pixels.reserve(std::size_t(side) * side);
    for (int y = -top; y < side - top; ++y) {
        for (int x = -left; x < side - left; ++x)
            image.pixels.push_back(blended(isLight ? light : dark, opacityAt(glyph, x, y), isLight ? dark : light,
                                           widenedOpacityAt(glyph, x, y, reach)));
    }
    return image;
}

} // namespace lumenvale
