#pragma once

#include <MelkarCommon/platform/pixels/pixel_spans.h>

/// @file
/// Internal. Smooth scaling: area averages when a side shrinks, linear interpolation when it grows. The colour of a
/// target pixel doesn't depend on what part of the target is visible.

namespace melkar {

/// `source` of `from` onto `target`, of which `visible` is drawn. Neither rectangle is empty, `source` lies within
/// `from`, `visible` within `to` and `target`; the two pictures share no memory.
void ScaleSmooth(const PixelBuffer& to, const RECT& visible, const Box& target, const PixelBuffer& from,
                 const RECT& source);

/// The source pixel under the centre of target pixel `index`, when `sourceSize` pixels become `targetSize`.
int NearestPixel(std::int64_t index, std::int64_t targetSize, int sourceSize);

} // namespace melkar
