// A position in points.
#pragma once

namespace quorvane {

struct Point {
    double x = 0.0;
    double y = 0.0;

    friend constexpr bool operator==(const Point&, const Point&) = default;
};

} // namespace quorvane
