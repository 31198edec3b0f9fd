#pragma once

#include <MelkarCommon/platform/seam/color.h>
#include <MelkarCommon/platform/seam/pixel_buffer.h>
#include <MelkarCommon/platform/seam/shape.h>

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

/// @file
/// Internal. Discs and rings, as plots draw them by the dozen and a gauge draws one again and again: the rasteriser
/// draws each size once, and its coverage is kept by the thread: most of a disc is covered whole, most of a
/// ring not at all.

namespace melkar {

/// Pixels side by side that are covered whole; places are counted from the mask's top-left pixel.
struct DiscSpan {
    std::int16_t x;
    std::int16_t y;
    std::int16_t count;
};

/// Four pixels side by side of which some are covered in part or not at all.
struct DiscRim {
    std::int16_t x;
    std::int16_t y;
    std::array<std::uint8_t, 4> coverage;
};

/// The first parts of a row, by their numbers.
struct DiscRow {
    std::size_t span;
    std::size_t rim;
};

/// Where the colour of a disc goes; `left` and `top` are those of its box, from the pixel that its centre lies in.
struct DiscMask {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    std::vector<DiscSpan> spans;
    std::vector<DiscRim> rims;
    std::vector<DiscRow> rows; ///< and one behind the last, which has none
};

/// A mask and where its top-left pixel falls.
struct PlacedDisc {
    std::shared_ptr<const DiscMask> mask; ///< null: not such a disc
    std::int64_t x = 0;
    std::int64_t y = 0;
};

/// The coverage of an ellipse of at most 512 pixels, its outline included; of its outline alone if `strokeWidth` is
/// above 0.
PlacedDisc FindDisc(const EllipseShape& ellipse, double strokeWidth);

/// Lets go what this thread keeps of them.
void TrimDiscs();

/// The mask's top-left pixel falls on (x, y). `clip` lies within the buffer.
void PaintDisc(const PixelBuffer& buffer, const RECT& clip, const DiscMask& mask, std::int64_t x, std::int64_t y,
               Color color);

} // namespace melkar
