#pragma once

#include <MelkarCommon/platform/types.h>

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

/// Angles are those of the points of the ellipse that the radials go to, in its own units: radians, counter-clockwise
/// from the right, as if it were a circle.
struct SliceShape {
    EllipseShape whole;
    double from = 0;
    double sweep = 0;  ///< 0 to 2 pi, counter-clockwise
    PointD apex{0, 0}; ///< where the radials meet: the whole numbers by which callers compute them, at the centre or
                       ///< half a pixel before it
};

using Shape = std::variant<PolygonShape, EllipseShape, SliceShape>;

/// One function for each kind of a variant; `std::visit` takes them together. Leave no `auto` among them.
template <class... Cases> struct Overloaded : Cases... { using Cases::operator()...; };
template <class... Cases> Overloaded(Cases...) -> Overloaded<Cases...>; // which clang 14 doesn't see by itself

} // namespace melkar
