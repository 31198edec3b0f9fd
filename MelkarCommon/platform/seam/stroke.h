#pragma once

#include <MelkarCommon/platform/measures.h>
#include <MelkarCommon/platform/seam/color.h>
#include <MelkarCommon/platform/types.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <span>
#include <vector>

/// @file
/// Internal. How lines look, and what every backend asks of that.

namespace melkar {

/// Lengths in device units. An empty pattern is a solid line; else `on` and `off` alternate.
struct Stroke {
    Color color = kBlackPixel;
    double width = 1;
    double on = 0;
    double off = 0;
    double phase = 0;  ///< distance already gone along the pattern
    bool gaps = false; ///< the gaps are painted in `gapColor`
    Color gapColor = kWhitePixel;
    /// Of a polyline: segments at its front that stand on the surface already. They count for the corner at their end
    /// and for the pattern; drawing them again is harmless where nothing blends.
    std::size_t drawn = 0;
    /// A sloped line of even width runs between two pixels, as an axis-parallel one does, and not through their middle.
    bool betweenPixels = false;

    bool operator==(const Stroke&) const = default;
    bool IsSolid() const { return on <= 0 || off <= 0; }
};

/// A line along the edge of the largest surface that is as wide as this covers all of it.
constexpr double kWidestStroke = 2.0 * (kMostSide + 1);

/// The width in whole pixels, at least 1.
inline int WholeWidth(double width) { return width > 1 ? static_cast<int>(std::min(width, kWidestStroke) + 0.5) : 1; }

/// Where a sloped line runs across the pixel that its points name.
inline double MiddleOfSlope(const Stroke& stroke) {
    return stroke.betweenPixels && WholeWidth(stroke.width) % 2 == 0 ? 0 : 0.5;
}

/// True if the pattern can be seen: two finite lengths that take a pixel at least. Anything else is drawn solid.
inline bool HasPattern(const Stroke& stroke) {
    const double period = stroke.on + stroke.off;
    return !stroke.IsSolid() && period >= 1 && std::isfinite(period);
}

/// `phase` brought into one period of the pattern; 0 if it is no number.
inline double PhaseInPeriod(const Stroke& stroke, double phase) {
    const double period = stroke.on + stroke.off;
    if (!std::isfinite(phase))
        return 0;
    if (phase >= 0 && phase < period)
        return phase;
    const double rest = std::fmod(phase, period);
    return rest < 0 ? rest + period : rest;
}

constexpr bool IsSamePoint(POINT a, POINT b) { return a.x == b.x && a.y == b.y; }
constexpr bool IsSloped(POINT from, POINT to) { return from.x != to.x && from.y != to.y; }

/// The points of a polyline without those that stand on the one before: only these have a direction.
inline std::vector<POINT> WithoutRepeats(std::span<const POINT> points) {
    std::vector<POINT> corners;
    corners.reserve(points.size());
    std::unique_copy(points.begin(), points.end(), std::back_inserter(corners), IsSamePoint);
    return corners;
}

inline double Distance(POINT from, POINT to) {
    return std::hypot(double{1} * to.x - from.x, double{1} * to.y - from.y);
}

/// Takes a polyline apart: calls draw(from, to, stroke) for each segment that isn't drawn yet; the pattern runs on from
/// one to the next.
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
