#pragma once

#include <MelkarCommon/platform/pixels/pixel_lanes.h>
#include <MelkarCommon/platform/pixels/pixel_spans.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

/// @file
/// Internal. An opaque colour through the coverage of texts and discs, as many pixels at once as there are lanes.

namespace melkar {

/// Coverages in one read.
template <int kLanes> using Coverages = std::conditional_t<kLanes == 8, std::uint64_t, std::uint32_t>;
template <int kLanes> constexpr Coverages<kLanes> kAllWhole = static_cast<Coverages<kLanes>>(-1);

template <int kLanes> Coverages<kLanes> ReadCoverages(const std::uint8_t* coverage) {
    Coverages<kLanes> all = 0;
    std::memcpy(&all, coverage, sizeof all);
    return all;
}

inline void BlendPixel(std::uint32_t& pixel, Color color, std::uint32_t coverage) {
    if (coverage == 255)
        pixel = color;
    else if (coverage != 0)
        pixel = MixColor255(pixel, color, coverage);
}

/// Each pixel as `MixColor255` does it; what is added to the half above green makes the unused byte 0xFF.
template <int kLanes> void BlendLanes(std::uint32_t* pixel, Coverages<kLanes> coverages, Color color) {
    using Pixels = typename Lanes<kLanes>::Pixels;
    using Channels = typename Lanes<kLanes>::Channels;
    constexpr std::uint32_t kRedBlue = 0xFF00FFU;
    Pixels weights{};
    Lanes<kLanes>::Spread(weights, coverages);
    const Channels weight = Channels(weights & kRedBlue);
    const Channels rest = 255 - weight;
    Pixels pixels{};
    std::memcpy(&pixels, pixel, sizeof pixels);
    const Channels redBlue =
        Channels(Pixels{} + (color & kRedBlue)) * weight + Channels(pixels & kRedBlue) * rest + 0x80;
    const Channels green = Channels(Pixels{} + ((color >> 8U) & 0xFFU)) * weight +
                           Channels((pixels >> 8) & 0xFF) * rest + Channels(Pixels{} + 0xFF000080U);
    pixels = Pixels((redBlue + (redBlue >> 8)) >> 8) | (Pixels(green + (green >> 8)) & 0xFF00FF00U);
    std::memcpy(pixel, &pixels, sizeof pixels);
}

/// Blank parts are blended, too: where they begin and end is guessed wrong too often. What is left at the end goes once
/// more through the pixels before it, which coverages of 0 leave as they are.
template <int kLanes>
void BlendRow(std::uint32_t* pixels, const std::uint8_t* coverage, std::size_t count, Color color) {
    if (count < kLanes) {
        if constexpr (kLanes > 4)
            return BlendRow<4>(pixels, coverage, count, color);
        for (std::size_t i = 0; i < count; ++i)
            BlendPixel(pixels[i], color, coverage[i]);
        return;
    }
    std::size_t i = 0;
    for (; i + kLanes <= count; i += kLanes)
        BlendLanes<kLanes>(pixels + i, ReadCoverages<kLanes>(coverage + i), color);
    if (i == count)
        return;
    const std::size_t last = count - kLanes;
    BlendLanes<kLanes>(pixels + last, ReadCoverages<kLanes>(coverage + last) & kAllWhole<kLanes> << 8 * (i - last),
                       color);
}

} // namespace melkar
