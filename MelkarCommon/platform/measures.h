#pragma once

#include <cstdint>

/// @file
/// Internal. Lengths and limits that the rooms of the drawing layer, and layouts above it, have in common.

namespace melkar {

constexpr int kScreenDpi = 96; ///< at which a pen of width 1 is a pixel wide; other dots an inch scale pens and fonts
constexpr int kPointsPerInch = 72;
constexpr int kDefaultEm = 12; ///< pixels at `kScreenDpi`, of a font that has no height

constexpr int kMostSide = 32767;                            ///< of a surface, a page or a picture
constexpr std::int64_t kMostPixels = std::int64_t{1} << 27; ///< of one: half a gigabyte

/// Whether a surface, a page or a picture can have this size: anything else is a mistake, not a wish.
constexpr bool IsPictureSize(int width, int height) {
    return width >= 1 && height >= 1 && width <= kMostSide && height <= kMostSide &&
           std::int64_t{width} * height <= kMostPixels;
}

/// Further off than any surface reaches, as far as a layout puts anything: sums of some such coordinates, and products
/// with small numbers, stay within an int.
constexpr int kFarOff = 1 << 24;

} // namespace melkar
