#pragma once

#include <MelkarCommon/support/platform/seam/pixel_buffer.h>
#include <MelkarCommon/support/platform/seam/stroke.h>

/// @file
/// Internal. Lines of any width straight on the pixels.

namespace melkar {

/// Exact rows or columns. `clip` lies within the buffer; nothing is drawn for a line of no length.
void StrokeAxisLine(const PixelBuffer& buffer, const RECT& clip, POINT from, POINT to, const Stroke& stroke);

/// Whether a sloped line lies against one of the same colour drawn just before, a pixel further in its shorter
/// direction. Each of them shares pixels with the other, which then are covered whole: lines one beside the other make
/// a thick one without a seam.
enum class Neighbour { None, Before, Behind };

/// Where the line drawn just before lies, seen from the one from `from` to `to`.
Neighbour NeighbourOf(POINT formerFrom, POINT formerTo, POINT from, POINT to);

/// What is missing where two wide lines meet. Lines that go on along the same axis share a whole row or column there.
enum class Corner {
    None,
    Square, ///< of two lines along different axes: the square of their width about the common pixel
    Round,  ///< the disc of their width about it
};
Corner CornerBetween(POINT before, POINT at, POINT next);

/// A sloped line: one step per pixel of its longer direction. A line of width 1 gives each step one pixel's worth of
/// colour, split between the two pixels beside the exact position; a wider one ends along a row or a column.
void StrokeSlopedLine(const PixelBuffer& buffer, const RECT& clip, POINT from, POINT to, const Stroke& stroke,
                      Neighbour neighbour = Neighbour::None);

} // namespace melkar
