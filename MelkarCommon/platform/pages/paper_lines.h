#pragma once

#include <MelkarCommon/platform/seam/shape.h>
#include <MelkarCommon/platform/seam/stroke.h>

#include <optional>
#include <vector>

/// @file
/// Internal. Lines on paper: they cover the area that they would cover on pixels, and an outline is one path.

namespace melkar {

/// What a path encloses.
struct PolygonFilling {
    Color color;
    bool winding = true; ///< non-zero winding instead of even-odd
};

/// A path to be stroked.
struct PaperLine {
    std::vector<PointD> points;
    double phase = 0; ///< of the pattern at the first point
    bool isClosed = false;
    bool hasRoundCorners = false; ///< else whole ones
    bool hasRoundEnds = false;    ///< where it has no pattern; else cut off at the last points
    std::optional<PolygonFilling> filling = std::nullopt;
};

/// What of a polyline, as `Backend::StrokePolyline` has it, is to be stroked to be seen within `clip`; the width is
/// taken as it is.
std::vector<PaperLine> LinesOnPaper(std::span<const POINT> points, const RECT& clip, const Stroke& stroke);

/// The same of solid polylines drawn one after the other, without repeats. Sloped lines that run side by side, a unit
/// apart, would have pale seams between them and ends like combs: a row of such lines is one outline, and so are rows
/// that go on where the one before ends.
std::vector<PaperLine> RowsOnPaper(std::span<const std::vector<POINT>> lines, const RECT& clip, const Stroke& stroke);

/// A polygon and the line around it, the first of `lines`, as one path that fills and strokes: points are most of what
/// such a page costs. The polygon's edge lies under the middle of the line instead of half a unit beside it, which
/// can't be seen below a line a unit wide; only where no line closes the polygon it stays where it is. Nothing if the
/// line goes elsewhere, isn't closed by a level edge, or is one of several that lie side by side.
std::optional<PaperLine> FilledOutline(const PolygonShape& polygon, Color color,
                                       std::span<const std::vector<POINT>> lines, const Stroke& stroke);

} // namespace melkar
