#pragma once

#include <MelkarCommon/platform/seam/box.h>
#include <MelkarCommon/platform/seam/color.h>
#include <MelkarCommon/platform/seam/pixel_buffer.h>

#include <cstdint>

/// @file
/// Internal. What every verb of the pixel backend stands on: clipping in 64 bits, filled rows, blended pixels.

namespace melkar {

/// Fills a rectangle that lies within the buffer, with stores as wide as the machine has: of a whole picture in a third
/// less time than with those of any machine, or by copies of a row.
void FillRows(const PixelBuffer& buffer, const RECT& rect, Color color);

/// `weight` 256ths of `color` over `under`, rounded; red and blue travel together in one multiplication. What is below
/// zero on the way there isn't at the end: 256 under + weight (color - under) is a sum of two shares of a whole.
inline Color MixColor256(Color under, Color color, std::uint32_t weight) {
    constexpr std::uint32_t kRedBlue = 0xFF00FFU;
    const std::uint32_t pair = under & kRedBlue;
    const std::uint32_t one = (under >> 8U) & 0xFFU;
    const std::uint32_t redBlue = (pair << 8U) + ((color & kRedBlue) - pair) * weight + 0x800080U;
    const std::uint32_t green = (one << 8U) + (((color >> 8U) & 0xFFU) - one) * weight + 0x80U;
    return kOpaque | ((redBlue >> 8U) & kRedBlue) | (green & 0xFF00U);
}

/// `coverage` 255ths of `color` over `under`, rounded: t + t / 256, / 256 divides by 255 without a division.
inline Color MixColor255(Color under, Color color, std::uint32_t coverage) {
    constexpr std::uint32_t kRedBlue = 0xFF00FFU;
    const std::uint32_t rest = 255U - coverage;
    std::uint32_t redBlue = (color & kRedBlue) * coverage + (under & kRedBlue) * rest + 0x800080U;
    std::uint32_t green = ((color >> 8U) & 0xFFU) * coverage + ((under >> 8U) & 0xFFU) * rest + 0x80U;
    redBlue += (redBlue >> 8U) & kRedBlue;
    green += green >> 8U;
    return kOpaque | ((redBlue >> 8U) & kRedBlue) | (green & 0xFF00U);
}

} // namespace melkar
