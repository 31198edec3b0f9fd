#pragma once

#include <MelkarCommon/platform/geometry.h>

#include <optional>
#include <vector>

/// @file
/// Where the slices of a circle graph stand. Device units; integer divisions truncate towards zero.
///
///            12 o'clock
///          .---|---.        slices: from the last to the first, counter-clockwise from 12 o'clock, so that read
///         /  1 | n  \       clockwise they stand in the order of the list
///        |-----+     |      label: a box about the point half-way out along the slice's middle
///         \  2  \ 3 /       square: the largest that fits the graph area, centred
///          '-----\-'

namespace melkar {

constexpr const char* kPlainPieFigure = "%.0f"; ///< the format of labels unless the profile says another

/// The pie's square and its middle.
struct PieSquare {
    CRect box;
    int radius;

    CPoint Middle() const { return {(box.left + box.right) / 2, (box.top + box.bottom) / 2}; }
};
PieSquare PieSquareOf(const CRect& graph);

/// One slice that is shown. Angles in radians, counter-clockwise from 12 o'clock.
struct PieSlice {
    int index; ///< in the list of values
    double from;
    double to;

    double Middle() const { return (from + to) / 2; }
    bool IsMost() const { return to - from > 3; } ///< its two radials may lie on each other with the slice around them
};

/// The slices of `values`, in the order of painting. Left out are shares below `leastShare`, shares of 0 and such that
/// are no number; they stay in the sum, so that the pie doesn't close.
std::vector<PieSlice> PieSlicesOf(const std::vector<double>& values, double leastShare);

/// The point on the rim at an angle.
CPoint PieRimAt(const PieSquare& pie, double angle);

/// The points on the rim between which a slice is painted.
struct PieRadials {
    CPoint from;
    CPoint to;
};
/// Those of a slice; none for one so thin that both have one direction from the middle, for that would be the whole
/// disc. At 12, 3, 6 and 9 o'clock such points may differ: the cut to whole units leaves one before the other.
std::optional<PieRadials> PieRadialsOf(const PieSquare& pie, const PieSlice& slice);

/// A slice's label: a third of the radius to either side, one text size up and down.
CRect PieLabelBox(const CPoint& outer, const CPoint& centre, int radius, int textSize);

} // namespace melkar
