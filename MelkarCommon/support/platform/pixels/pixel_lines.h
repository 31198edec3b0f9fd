#pragma once

#include <MelkarCommon/support/platform/seam/pixel_buffer.h>
#include <MelkarCommon/support/platform/seam/stroke.h>

/// @file
/// Internal. Lines straight on the pixels: axis-aligned ones of any width, sloped ones one pixel wide.

namespace melkar {

/// Exact rows or columns. `clip` lies within the buffer; nothing is drawn for a line of no length.
void StrokeAxisLine(const PixelBuffer& buffer, const RECT& clip, POINT from, POINT to, const Stroke& stroke);

/// Whether a sloped line lies against one of the same colour drawn just before, a pixel further in its shorter
/// direction. Each of them shares pixels with the other, which then are covered whole: lines one beside the other make
/// a thick one without a seam.
enum class Neighbour { None, Before, Behind };

/// Where the line drawn just before lies, seen from the one from `from` to `to`.
Neighbour NeighbourOf(POINT formerFrom, POINT formerTo, POINT from, POINT to);

/// A thin sloped line: one step per pixel of its longer direction, each step one pixel's worth of colour, split
/// between the two pixels beside the exact position.
void StrokeThinLine(const PixelBuffer& buffer, const RECT& clip, POINT from, POINT to, const Stroke& stroke,
                    Neighbour neighbour = Neighbour::None);

} // namespace melkar
