// SPDX-License-Identifier: MIT
// Points and rectangles in device-independent pixels. Which way y grows is said where they are used.
#pragma once

namespace lumenvale {

struct Point {
    double x = 0;
    double y = 0;

    bool operator==(const Point& other) const = default;
};

/// `x` and `y` name the corner with the smallest coordinates.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    double maxX() const { return x + width; }
    double maxY() const { return y + height; }
    double midX() const { return x + width / 2; }
    double midY() const { return y + height / 2; }
    /// The edges with the smallest coordinates belong to the rectangle, the opposite ones do not.
    bool contains(Point point) const
    {
        return point.x >= x && point.x < maxX() && point.y >= y && point.y < maxY();
    }

    bool operator==(const Rect& other) const = default;
};

/// Turns y upside down, between the window system's coordinates (y grows downward) and those of panel placement
/// (y grows upward). Its own inverse.
constexpr Point flipped(Point point) { return {point.x, -point.y}; }
constexpr Rect flipped(Rect rect) { return {rect.x, -(rect.y + rect.height), rect.width, rect.height}; }

} // namespace lumenvale
