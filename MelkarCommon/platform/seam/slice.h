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

/// How far a slice reaches under the next one.
struct SliceReach {
    double width = 1;       ///< a pixel of whoever will look at it
    bool isPointed = false; ///< begins as a point at the apex; else a width before it, so that no ground shows there
};

/// A strip beyond the radial at which a slice ends; it is filled together with it. Two slices that share a radial each
/// blend with the ground there, so that the ground would show between them as a pale seam. With the strip one of both
/// covers it. The next slice of a pie, drawn from that radial on, lies over the strip with its own exact edge; only the
/// last one covers a strip of the first. A strip that isn't pointed stands out at the apex by its width: a trifle where
/// that is a pixel, a nib where pixels are smaller. It goes round as the slice does, so that both fill as one by
/// non-zero winding.
inline std::array<PointD, 4> ReachOf(const SliceShape& slice, const SliceReach& reach) {
    const double end = slice.from + slice.sweep;
    const PointD rim = RimPoint(slice.whole, end);
    const double speed = std::hypot(slice.whole.radius.x * std::sin(end), slice.whole.radius.y * std::cos(end));
    const PointD beyond = RimPoint(slice.whole, end + reach.width / speed);
    const PointD& apex = slice.apex;
    const double length = std::max(std::hypot(rim.x - apex.x, rim.y - apex.y), 1.0 / 256);
    const PointD along{(rim.x - apex.x) / length * reach.width, (rim.y - apex.y) / length * reach.width};
    if (reach.isPointed)
        return {apex, rim, beyond, {apex.x + along.x + along.y, apex.y + along.y - along.x}};
    const PointD start{apex.x - along.x, apex.y - along.y};
    return {start, rim, beyond, {start.x + along.y, start.y - along.x}};
}

} // namespace melkar
