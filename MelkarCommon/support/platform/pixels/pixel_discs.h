#pragma once

#include <MelkarCommon/support/platform/seam/shape.h>
#include <MelkarCommon/support/platform/text/text_engine.h>

#include <cstdint>
#include <memory>

/// @file
/// Internal. Small discs and rings, as plots draw them by the dozen: the rasteriser draws each size once, and its
/// coverage is kept by the thread.

namespace melkar {

/// Coverage and where its top-left pixel falls.
struct PlacedMask {
    std::shared_ptr<const CoverageMask> mask; ///< null: not a small disc
    std::int64_t x = 0;
    std::int64_t y = 0;
};

/// The coverage of an ellipse of at most 48 pixels, its outline included; of its outline alone if `strokeWidth` is
/// above 0.
PlacedMask FindDisc(const EllipseShape& ellipse, double strokeWidth);

} // namespace melkar
