#pragma once

#include <MelkarCommon/platform/pixels/pixel_walk.h>
#include <MelkarCommon/platform/seam/pixel_buffer.h>
#include <MelkarCommon/platform/seam/stroke.h>

#include <span>

/// @file
/// Internal. Lines of any width straight on the pixels.

namespace melkar {

/// Where the line drawn just before lies, seen from the one from `from` to `to`.
Neighbour NeighbourOf(POINT formerFrom, POINT formerTo, POINT from, POINT to);

/// What is missing where two wide lines meet. Lines that go on along the same axis share a whole row or column there.
enum class Corner {
    None,
    Square, ///< of two lines along different axes: the square of their width about the common pixel
    Round,  ///< the disc of their width about it
};
Corner CornerBetween(POINT before, POINT at, POINT next);

/// The polyline's segments that aren't drawn yet, without what is missing at their corners; of any width along an axis,
/// up to 4 else. Along an axis they are exact rows or columns. A sloped line takes one step per pixel of its longer
/// direction: with width 1 each step gives one pixel's worth of colour, split between the two pixels beside the exact
/// position; a wider line ends along a row or a column. `neighbour` is how the first of the segments lies: lines that
/// follow each other meet in a point and are never side by side. `clip` lies within the buffer.
void StrokeLines(const PixelBuffer& buffer, const RECT& clip, std::span<const POINT> points, const Stroke& stroke,
                 Neighbour neighbour = Neighbour::None);

} // namespace melkar
