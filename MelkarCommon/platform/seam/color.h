#pragma once

#include <MelkarCommon/platform/types.h>

#include <cstdint>

/// @file
/// Internal. Colours as pixels hold them.

namespace melkar {

using Color = std::uint32_t; ///< opaque 0xFFRRGGBB

constexpr Color ToColor(COLORREF c) {
    return 0xFF000000U | ((c & 0xFFU) << 16U) | (c & 0xFF00U) | ((c >> 16U) & 0xFFU);
}

} // namespace melkar
