#pragma once

#include <MelkarCommon/platform/types.h>

#include <cstdint>

/// @file
/// Internal. Colours as pixels hold them.

namespace melkar {

using Color = std::uint32_t; ///< opaque 0xFFRRGGBB

constexpr Color kOpaque = 0xFF000000U; ///< the bits of a whole alpha
constexpr Color kBlackPixel = kOpaque;
constexpr Color kWhitePixel = 0xFFFFFFFFU;

constexpr Color RedOf(Color color) { return (color >> 16U) & 0xFFU; }
constexpr Color GreenOf(Color color) { return (color >> 8U) & 0xFFU; }
constexpr Color BlueOf(Color color) { return color & 0xFFU; }

constexpr Color ToColor(COLORREF c) { return kOpaque | ((c & 0xFFU) << 16U) | (c & 0xFF00U) | ((c >> 16U) & 0xFFU); }

} // namespace melkar
