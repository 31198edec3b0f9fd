#pragma once

#include <MelkarCommon/platform/geometry.h>

#include <optional>

/// @file
/// Where the points of a plot graph stand, and the lines that join them. Device units.
///
///        ___                  ___
///       /   \                /   \       circle: diameter `size`, an odd one comes out one smaller
///      |  p  |--------------|  q  |      join: from rim to rim along the line of the centres
///       \___/                \___/

namespace melkar {

/// The point at the rates (0 to 1) of its values: x from the left edge of the graph area, y from its bottom. All in
/// single precision, as rates are: it rounds away what a rate such as 0.7 lacks, which double precision would cut to
/// the pixel before the grid line. Few points stand there still.
CPoint PlotAt(const CRect& graph, float rateX, float rateY);

CRect PlotCircle(const CPoint& at, int size);

struct PlotJoin {
    CPoint from;
    CPoint to;
};

/// The line between two circles. Circles that overlap still get it, running back from rim to rim; two points at one
/// pixel have no direction and nothing to join.
std::optional<PlotJoin> JoinOf(const CPoint& from, int fromSize, const CPoint& to, int toSize);

} // namespace melkar
