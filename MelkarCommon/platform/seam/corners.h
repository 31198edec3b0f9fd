#pragma once

#include <MelkarCommon/platform/measures.h>
#include <MelkarCommon/platform/seam/area.h>

#include <numbers>
#include <vector>

/// @file
/// Internal. Which shapes can be drawn as they are, and what stands for those that reach too far.

namespace melkar {

constexpr double kTurn = 2 * std::numbers::pi;

/// False for a shape without an area: fewer than three points, a radius that isn't above 0, no numbers.
bool HasArea(const Shape& shape);

/// False if a shape, widened by `margin`, can't touch the clip.
bool Touches(const Area& bounds, const RECT& clip, double margin);

/// Twice the largest surface. Rasterisers mislay edges that are four times as long, and readers of pages count in
/// floats.
constexpr int kNearEdge = 2 * (kMostSide + 1);

/// False if it reaches further; then what is within stands for it.
bool IsNear(const Area& bounds);
constexpr bool IsNear(POINT p) { return p.x > -kNearEdge && p.x < kNearEdge && p.y > -kNearEdge && p.y < kNearEdge; }

/// A polygon in place of a shape that isn't near, cut to what is.
std::vector<PointD> NearCorners(const PolygonShape& polygon);
std::vector<PointD> NearCorners(const EllipseShape& ellipse);
std::vector<PointD> NearCorners(const SliceShape& slice);

/// The part of a line within bounds, as fractions of its length. Empty if first >= last.
struct LinePart {
    double first = 0;
    double last = 1;
};

/// What of a line from `start` along `way` is in the clip or less than `margin` beside it.
LinePart PartWithin(PointD start, PointD way, const RECT& clip, double margin);

} // namespace melkar
