#pragma once

#include <MelkarCommon/platform/seam/box.h>
#include <MelkarCommon/platform/seam/color.h>
#include <MelkarCommon/platform/seam/pixel_buffer.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

/// @file
/// Internal. What every verb of the pixel backend stands on: clipping in 64 bits, filled rows, blended pixels.

namespace melkar {

/// Fills a rectangle that lies within the buffer. Only the C library picks the widest stores of the machine at run
/// time: so a white picture, the usual ground, goes through memset, and wide rows are copies of the first.
inline void FillRows(const PixelBuffer& buffer, const RECT& rect, Color color) {
    constexpr std::size_t kWorthCopying = 128;
    if (IsEmptyRect(rect))
        return;
    const std::size_t width = static_cast<std::size_t>(rect.right) - static_cast<std::size_t>(rect.left);
    const std::size_t height = static_cast<std::size_t>(rect.bottom) - static_cast<std::size_t>(rect.top);
    std::uint32_t* const first = PixelAt(buffer, rect.left, rect.top);
    if (width == static_cast<std::size_t>(buffer.stride) && color == kWhitePixel) {
        std::memset(first, 0xFF, width * height * sizeof(Color));
        return;
    }
    std::fill_n(first, width, color);
    std::uint32_t* row = first + buffer.stride;
    for (std::size_t y = 1; y < height; ++y, row += buffer.stride) {
        if (width >= kWorthCopying)
            std::memcpy(row, first, width * sizeof(Color));
        else
            std::fill_n(row, width, color);
    }
}

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
