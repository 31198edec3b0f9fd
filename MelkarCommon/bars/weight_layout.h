#pragma once

#include <MelkarCommon/frame/scale.h>
#include <MelkarCommon/support/platform/geometry.h>

#include <optional>

/// @file
/// The weight plan: its scale, which shares the grid lines of the left one, and where its figures stand.
///
///   |  72 -- 1000 |     as many steps as the left scale has,
///   |  69 --  800 |     each a whole number of kilograms,
///   |  66 --  600 |     the top a little above the highest weight
///   |  ...        |

namespace melkar {

/// The scale, all whole numbers within an int, for weights from `lowest` to `highest` with `steps` steps. The top is
/// ceil(highest + 1.9), the bottom at or below floor(lowest - 0.9), or 0 where that is negative, and may itself be
/// negative. Nothing if there is a range but no step to divide it into.
std::optional<Scale> WeightScaleFor(int highest, int lowest, int steps);

/// Centre of row `row` of `rows`.
int WeightX(const CRect& canvas, int row, int rows);

/// y of the target line: bottom - trunc((target - min) x height) / (max - min), the last division between integers. It
/// may lie outside of the canvas, at most 2^24 away.
int TargetWeightY(const ScalePixels& on, double target);

/// y of a measured weight, cut to whole kilograms and kept on the canvas.
int WeightY(const ScalePixels& on, double weight);

} // namespace melkar
