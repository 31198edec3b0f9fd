#pragma once

#include <MelkarCommon/platform/seam/backend.h>

#include <vector>

/// @file
/// Internal. Rectangles upon rectangles: a canvas on its ground, bars on the canvas. Writing pixels is most of what
/// such a picture costs, so that large ones are seen before anything is written.

namespace melkar {

/// Fills one after the other, all of which lie within the buffer. What a large one covers is not written before, and
/// one of the colour that it lies on is not written at all.
void FillLayers(const PixelBuffer& buffer, std::vector<Fill> fills);

} // namespace melkar
