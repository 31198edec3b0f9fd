#pragma once

#include <MelkarCommon/platform/pixels/pixel_discs.h>

/// @file
/// Internal. Slices of a pie. Their discs are kept; new with each figure are the radials only, whose coverage is exact.

namespace melkar {

/// False for a slice that is no number, or so small that its apex lies far from the centre.
bool IsCutFromDisc(const SliceShape& slice);

/// Such a slice, and its reach below the next one, in the disc of its whole ellipse. `clip` lies within the buffer.
void PaintSlice(const PixelBuffer& buffer, const RECT& clip, const PlacedDisc& disc, const SliceShape& slice,
                Color color);

} // namespace melkar
