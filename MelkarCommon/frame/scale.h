#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/cstring.h>
#include <MelkarCommon/platform/geometry.h>

/// @file
/// Scales. A scale knows values: its ends, and the step from line to line. On a canvas it has pixels, and what value is
/// where is a question to them. All y are device units, growing downwards. On a scale without range its one value
/// stands at the bottom, as does what is no number; nothing leaves the canvas unless a function says so.
///
///               +--------------+ top, its highest value
///         40 ---|--------------|--- 68      labels stand half-way over their line, each with a gap to the canvas
///         20 ---|--------------|--- 64
///          0 ---+--------------+--- 60      bottom, its lowest value

namespace melkar {

/// The values of a scale.
struct Scale {
    double min = 0;  ///< lowest value
    double max = 0;  ///< highest value
    double step = 0; ///< from line to line

    bool HasRange() const { return max > min; } ///< whether it has more than one value
    /// Whether a value lies on the scale, both ends included; false for what is no number.
    bool Holds(double value) const { return value >= min && value <= max; }
};

constexpr double kStepOfNone = 10.0; ///< of a scale whose profile gives it no step above 0
constexpr int kScaleGap = 5;         ///< between the canvas and a label of its scale

/// A scale, and the rows of a canvas that it stands on.
struct ScalePixels {
    Scale scale; ///< its values
    int top;     ///< row of the highest value
    int bottom;  ///< row of the lowest value

    int Height() const { return bottom - top; } ///< rows from end to end
};

/// A scale along the whole height of a canvas.
inline ScalePixels PixelsOf(const Scale& scale, const CRect& canvas) { return {scale, canvas.top, canvas.bottom}; }

/// y of a scale line: bottom - trunc((v - min) x height / (max - min)).
MELKAR_API int ScaleLineY(const ScalePixels& on, double value);

/// y of a figure measured from the bottom of the scale: bottom - trunc((v - min) / (max - min) x height). Below the
/// scale it is the bottom, above it the top.
MELKAR_API int FigureY(const ScalePixels& on, double value);

/// y of a figure measured from 0, whatever the bottom of the scale: bottom - trunc(v / max x height). Below the
/// scale it is the bottom, above it the top. A negative figure on a scale that begins below 0 leaves the canvas
/// downwards.
MELKAR_API int FigureFromZeroY(const ScalePixels& on, double value);

/// y of a target: trunc(bottom - (v - min) x height / (max - min)), one pixel higher than a figure's where the product
/// leaves a fraction. The value lies within the scale.
MELKAR_API int TargetY(const ScalePixels& on, double value);

/// y of an average: the distance from the bottom of the scale is cut to a whole number before it is scaled, all in
/// whole numbers. The value lies within the scale.
MELKAR_API int AverageY(const ScalePixels& on, double value);

/// The lines of a scale: `count` of them from `first` on, `step` apart.
struct ScaleWalk {
    double first; ///< value of the lowest line
    double step;  ///< from line to line
    int count;    ///< lines

    double At(int line) const { return first + line * step; } ///< value of a line, from 0
};

/// Every step (above 0) from the bottom while not above the top. Where there would be more lines than pixel rows,
/// only a round multiple of the step gets a line, so that labels of `labelHeight` have room.
MELKAR_API ScaleWalk WalkScale(const ScalePixels& on, int labelHeight);

/// One line of a scale with its label, ready to be placed.
struct ScaleStep {
    CString label; ///< its value as text
    CRect size;    ///< of the label; its top-left corner is at (0, 0)
    int y;         ///< of the line
    bool even;     ///< the first line and every second one after it: has no label in coach mode
};

/// Where a label stands whose box ends at `right`.
inline CRect LabelBoxTo(int right, const ScaleStep& step) {
    const int top = step.y - step.size.Height() / 2;
    return {right - step.size.Width(), top, right, top + step.size.Height()};
}

/// Where a label stands whose box begins at `left`.
inline CRect LabelBoxFrom(int left, const ScaleStep& step) { return LabelBoxTo(left + step.size.Width(), step); }

/// A whole value without decimals, any other with `decimals` of them.
MELKAR_API CString ScaleLabel(double value, int decimals);

} // namespace melkar
