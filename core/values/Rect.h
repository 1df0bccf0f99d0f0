// A rectangle in points, with the few operations the views need.
#pragma once

#include "values/Point.h"

namespace quorvane {

struct Size {
    double width = 0.0;
    double height = 0.0;

    friend constexpr bool operator==(const Size&, const Size&) = default;
};

struct Rect {
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;

    constexpr double minX() const { return x; }
    constexpr double minY() const { return y; }
    constexpr double maxX() const { return x + width; }
    constexpr double maxY() const { return y + height; }

    // Inset on both sides of each axis; a rectangle too small for it is empty.
    constexpr Rect insetBy(double dx, double dy) const {
        Rect r{x + dx, y + dy, width - 2 * dx, height - 2 * dy};
        if (r.width < 0 || r.height < 0) {
            return Rect{x + width / 2, y + height / 2, 0, 0};
        }
        return r;
    }
    constexpr Rect offsetBy(double dx, double dy) const { return Rect{x + dx, y + dy, width, height}; }

    // The platform's rule: the minimum edges belong to the rectangle, the
    // maximum edges do not, and an empty rectangle contains nothing.
    constexpr bool contains(Point p) const {
        return width > 0 && height > 0 && p.x >= minX() && p.x < maxX() && p.y >= minY() && p.y < maxY();
    }

    friend constexpr bool operator==(const Rect&, const Rect&) = default;
};

} // namespace quorvane
