#pragma once

#include <MelkarCommon/support/platform/seam/backend.h>

#include <cmath>
#include <span>

/// @file
/// Internal. A polyline taken apart into its segments, for whoever can only draw, measure or tell single lines.

namespace melkar {

inline double Distance(POINT from, POINT to) {
    return std::hypot(double{1} * to.x - from.x, double{1} * to.y - from.y);
}

/// Calls draw(from, to, stroke) for each segment that isn't drawn yet; the pattern runs on from one to the next.
template <class Draw> void ForEachSegment(std::span<const POINT> points, const Stroke& stroke, const Draw& draw) {
    Stroke own = stroke;
    own.drawn = 0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        if (i > stroke.drawn)
            draw(points[i - 1], points[i], own);
        if (!stroke.IsSolid())
            own.phase += Distance(points[i - 1], points[i]);
    }
}

} // namespace melkar
