#pragma once

#include <MelkarCommon/frame/legend_layout.h>
#include <MelkarCommon/frame/scale.h>
#include <MelkarCommon/platform/geometry.h>

#include <optional>

/// @file
/// The weight plan: its scale, which shares the grid lines of the left one, and where its figures stand.
///
///        [] bars   [] weight   ==== target       from right to left, all at the top of the first
///   1000 +---------------------------------+ 72   as many steps as the left scale has,
///    800 |   []       ____________---------| 69   each a whole number of kilograms,
///    600 |_______-----        []           | 66   the top a little above the highest weight

namespace melkar {

/// The scale, all whole numbers within an int, for weights from `lowest` to `highest` with `steps` steps. The top is
/// ceil(highest + 1.9), the bottom at or below floor(lowest - 0.9), or 0 where that is negative, and may itself be
/// negative. Nothing if there is a range but no step to divide it into.
std::optional<Scale> WeightScaleFor(int highest, int lowest, int steps);

/// x of the centre of row `row` of `rows`.
int WeightX(const CRect& canvas, int row, int rows);

/// y of the target line: bottom - trunc((target - min) x height) / (max - min), the last division between integers. It
/// may lie outside of the canvas, at most 2^24 away.
int TargetWeightY(const ScalePixels& on, double target);

/// y of a measured weight, cut to whole kilograms and kept on the canvas.
int WeightY(const ScalePixels& on, double weight);

/// The square of a measured weight, a fiftieth of the canvas wide.
inline CRect WeightSquareOf(const CRect& canvas, const CPoint& centre) {
    const int half = canvas.Width() / 100;
    return {centre.x - half, centre.y - half, centre.x + half, centre.y + half};
}

struct PlanLegend {
    LegendEntry line;   ///< the target weight
    LegendEntry weight; ///< a square as wide as high, like that of the bars
    LegendEntry bars;
};

/// Each entry a text height left of the one at its right.
PlanLegend PlanLegendOf(const CRect& canvas, const CRect& lineSize, const CRect& weightSize, const CRect& barsSize);

} // namespace melkar
