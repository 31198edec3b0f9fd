#pragma once

#include <MelkarCommon/support/platform/cstring.h>
#include <MelkarCommon/support/platform/geometry.h>

/// @file
/// Scales: where a value stands between the bottom and the top of a canvas, and the walk of the scale lines. All y are
/// device units, growing downwards. On a scale without range its one value stands at the bottom, as does what is no
/// number; nothing leaves the canvas unless a function says so.

namespace melkar {

/// The part of a scale that stands on a canvas from `top` to `bottom`.
struct Scale {
    double min;
    double max;
    int top;
    int bottom;

    int Height() const { return bottom - top; }
    bool HasRange() const { return max > min; }
};

/// y of a scale line: bottom - trunc((v - min) x height / (max - min)).
int ScaleLineY(const Scale& scale, double value);

/// y of a figure measured from the bottom of the scale: bottom - trunc((v - min) / (max - min) x height). Below the
/// scale it is the bottom, above it the top.
int FigureY(const Scale& scale, double value);

/// y of a figure measured from 0, whatever the bottom of the scale: bottom - trunc(v / max x height). Below the
/// scale it is the bottom, above it the top. A negative figure on a scale that begins below 0 leaves the canvas
/// downwards.
int FigureFromZeroY(const Scale& scale, double value);

/// y of a target: trunc(bottom - (v - min) x height / (max - min)), one pixel higher than a figure's where the product
/// leaves a fraction. The value lies within the scale.
int TargetY(const Scale& scale, double value);

/// y of an average: the distance from the bottom of the scale is cut to a whole number before it is scaled, all in
/// whole numbers. The value lies within the scale.
int AverageY(const Scale& scale, double value);

/// Whether a value lies on the scale, both ends included; false for what is no number.
inline bool LiesOn(const Scale& scale, double value) { return value >= scale.min && value <= scale.max; }

/// The lines of a scale: `count` of them from `first` on, `step` apart.
struct ScaleWalk {
    double first;
    double step;
    int count;

    double At(int line) const { return first + line * step; }
};

/// Every `interval` (above 0) from the bottom while not above the top. Where there would be more lines than pixel rows,
/// only a round multiple of the interval gets a line, so that labels of `labelHeight` have room.
ScaleWalk WalkScale(const Scale& scale, double interval, int labelHeight);

/// One step of a scale, ready to be placed.
struct ScaleStep {
    CString label;
    CRect box; ///< the label's size, its top-left corner at (0, 0)
    int y;     ///< of the line
    bool even; ///< the first step and every second one after it: has no label in coach mode
};

/// A whole value without decimals, any other with `decimals` of them.
CString ScaleLabel(double value, int decimals);

} // namespace melkar
