#pragma once

#include <MelkarCommon/platform/seam/color.h>
#include <MelkarCommon/platform/seam/pixel_buffer.h>
#include <MelkarCommon/platform/text/text_engine.h>

/// @file
/// Internal. Pixels and coverage onto pixels. Everywhere `clip` lies within `to`.

namespace melkar {

/// `source` of `from` onto `target`. A buffer may be copied onto itself. Draws nothing for an unknown operation, an
/// empty rectangle, or a source that reaches beyond its picture.
void BlitPixels(const PixelBuffer& to, const RECT& clip, const RECT& target, const PixelBuffer& from,
                const RECT& source, DWORD operation);

/// `color` through the mask, whose top-left pixel falls on (x, y).
void BlendMask(const PixelBuffer& to, const RECT& clip, const CoverageMask& mask, std::int64_t x, std::int64_t y,
               Color color);

} // namespace melkar
