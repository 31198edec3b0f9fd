#pragma once

#include <MelkarCommon/platform/seam/shape.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numbers>

/// @file
/// Internal. Rectangles between fractions of pixels, and what turns them.

namespace melkar {

/// Empty until something is added. What is no number widens nothing.
struct Area {
    double left = HUGE_VAL;
    double top = HUGE_VAL;
    double right = -HUGE_VAL;
    double bottom = -HUGE_VAL;

    bool IsEmpty() const { return !(left < right && top < bottom); }
    void Add(PointD p) {
        left = std::min(left, p.x);
        top = std::min(top, p.y);
        right = std::max(right, p.x);
        bottom = std::max(bottom, p.y);
    }
};

inline Area AreaOf(const EllipseShape& ellipse) {
    const auto& [center, radius] = ellipse;
    return {center.x - radius.x, center.y - radius.y, center.x + radius.x, center.y + radius.y};
}

inline Area AreaOf(const PolygonShape& polygon) {
    Area area;
    for (const POINT& point : polygon.points)
        area.Add({static_cast<double>(point.x), static_cast<double>(point.y)});
    return area;
}

/// A slice counts as its whole ellipse.
inline Area AreaOf(const Shape& shape) {
    return std::visit(Overloaded{
                          [](const PolygonShape& polygon) { return AreaOf(polygon); },
                          [](const EllipseShape& ellipse) { return AreaOf(ellipse); },
                          [](const SliceShape& slice) { return AreaOf(slice.whole); },
                      },
                      shape);
}

/// The edge of a whole pixel; what is no number or too large ends at the edge of what an int can name.
inline int WholeEdge(double value) {
    return std::isnan(value) ? 0 : static_cast<int>(std::clamp<double>(value, INT32_MIN, INT32_MAX));
}

/// Whole pixels around an area that is grown by `by`.
inline RECT PixelsAround(const Area& area, double by) {
    return {WholeEdge(std::floor(area.left - by)), WholeEdge(std::floor(area.top - by)),
            WholeEdge(std::ceil(area.right + by)), WholeEdge(std::ceil(area.bottom + by))};
}

constexpr int kFullTurn = 3600; ///< escapements are tenths of a degree

/// A point turned about the origin by `escapement` tenths of a degree, counter-clockwise on a surface.
inline PointD Turned(PointD p, int escapement) {
    const double angle = escapement % kFullTurn * std::numbers::pi / (kFullTurn / 2.0);
    return {p.x * std::cos(angle) + p.y * std::sin(angle), p.y * std::cos(angle) - p.x * std::sin(angle)};
}

/// The corners of a box of width x height whose top-left one is at `at`, turned about that by `escapement`; in the
/// order top left, top right, bottom right, bottom left.
inline std::array<PointD, 4> TurnedBox(POINT at, double width, double height, int escapement) {
    const auto turned = [&](double x, double y) -> PointD {
        const PointD way = Turned({x, y}, escapement);
        return {at.x + way.x, at.y + way.y};
    };
    return {turned(0, 0), turned(width, 0), turned(width, height), turned(0, height)};
}

} // namespace melkar
