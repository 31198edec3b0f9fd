#pragma once

#include <MelkarCommon/platform/seam/shape.h>

#include <algorithm>
#include <array>
#include <cmath>

/// @file
/// Internal. What slices of one pie owe each other.

namespace melkar {

/// The point of an ellipse at an angle in its own units.
inline PointD RimPoint(const EllipseShape& ellipse, double angle) {
    return {ellipse.center.x + ellipse.radius.x * std::cos(angle),
            ellipse.center.y - ellipse.radius.y * std::sin(angle)};
}

/// A strip, `reach` wide, beyond the radial at which a slice ends; it is filled together with it. Two slices that share
/// a radial each blend with the ground there, so that the ground would show between them as a pale seam. With the strip
/// one of both covers it. The next slice of a pie, drawn from that radial on, lies over the strip with its own exact
/// edge; only the last one covers a strip of the first. The strip begins a little before the apex, where all slices
/// meet. It goes round as the slice does, so that both fill as one by non-zero winding.
inline std::array<PointD, 4> ReachOf(const SliceShape& slice, double reach) {
    const double end = slice.from + slice.sweep;
    const PointD rim = RimPoint(slice.whole, end);
    const double speed = std::hypot(slice.whole.radius.x * std::sin(end), slice.whole.radius.y * std::cos(end));
    const PointD beyond = RimPoint(slice.whole, end + reach / speed);
    const double length = std::max(std::hypot(rim.x - slice.apex.x, rim.y - slice.apex.y), 1.0 / 256);
    const PointD along{(rim.x - slice.apex.x) / length * reach, (rim.y - slice.apex.y) / length * reach};
    const PointD start{slice.apex.x - along.x, slice.apex.y - along.y};
    return {start, rim, beyond, {start.x + along.y, start.y - along.x}};
}

} // namespace melkar
