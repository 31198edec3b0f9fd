#pragma once

#include <MelkarCommon/platform/seam/shape.h>
#include <MelkarCommon/platform/seam/stroke.h>

#include <optional>
#include <vector>

/// @file
/// Internal. Lines on paper: they cover the area that they would cover on pixels, and an outline is one path.

namespace melkar {

/// A path to be stroked.
struct PaperLine {
    std::vector<PointD> points;
    double phase = 0; ///< of the pattern at the first point
    bool isClosed = false;
    bool hasRoundCorners = false; ///< else whole ones
    bool hasRoundEnds = false;    ///< where it has no pattern; else cut off at the last points
};

/// What of a polyline, as `Backend::StrokePolyline` has it, is to be stroked to be seen within `clip`; the width is
/// taken as it is.
std::vector<PaperLine> LinesOnPaper(std::span<const POINT> points, const RECT& clip, const Stroke& stroke);

/// Covers the seam between two polylines drawn one after the other; none if there is no seam. Thin and solid, sloped
/// lines that run side by side, a unit apart, all the way, would show a pale one.
std::optional<PaperLine> SeamBetween(std::span<const POINT> one, std::span<const POINT> other);

} // namespace melkar
