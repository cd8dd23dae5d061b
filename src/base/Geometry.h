// SPDX-License-Identifier: MIT
// Points and rectangles as Qt has them: device-independent pixels, y grows downward.
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

} // namespace lumenvale
