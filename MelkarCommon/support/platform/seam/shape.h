#pragma once

#include <MelkarCommon/support/platform/types.h>

#include <variant>
#include <vector>

/// @file
/// Internal. Closed shapes. They are a variant so that a new kind doesn't compile until every backend knows it.

namespace melkar {

struct PointD {
    double x;
    double y;
};

struct PolygonShape {
    std::vector<POINT> points;
    bool winding = false; ///< non-zero winding instead of even-odd
};

struct EllipseShape {
    PointD center{0, 0};
    PointD radius{0, 0};
};

struct SliceShape {
    EllipseShape whole;
    double from = 0;  ///< start angle, radians, counter-clockwise from the right
    double sweep = 0; ///< 0 to 2 pi, counter-clockwise
};

using Shape = std::variant<PolygonShape, EllipseShape, SliceShape>;

/// One function for each kind of a variant; `std::visit` takes them together. Leave no `auto` among them.
template <class... Cases> struct Overloaded : Cases... { using Cases::operator()...; };

} // namespace melkar
