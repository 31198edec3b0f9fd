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
    bool isFilled = false;        ///< what it encloses, in the stroke's colour
};

/// What of a polyline, as `Backend::StrokePolyline` has it, is to be stroked to be seen within `clip`; the width is
/// taken as it is.
std::vector<PaperLine> LinesOnPaper(std::span<const POINT> points, const RECT& clip, const Stroke& stroke);

/// The same of solid polylines drawn one after the other. Sloped lines that run side by side, a unit apart, would have
/// pale seams between them and ends like combs: a row of such lines is one outline, and so are rows that go on where
/// the one before ends.
std::vector<PaperLine> RowsOnPaper(std::span<const std::vector<POINT>> lines, const RECT& clip, const Stroke& stroke);

} // namespace melkar
