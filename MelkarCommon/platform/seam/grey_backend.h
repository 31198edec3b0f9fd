#pragma once

#include <MelkarCommon/platform/seam/backend.h>

namespace melkar {

/// The grey that is as light as a colour.
constexpr Color GreyOf(Color color) {
    const Color red = (color >> 16U) & 0xFFU;
    const Color green = (color >> 8U) & 0xFFU;
    const Color blue = color & 0xFFU;
    return 0xFF000000U | (299U * red + 587U * green + 114U * blue + 500U) / 1000U * 0x010101U;
}

/// Draws on `to` in shades of grey.
std::unique_ptr<Backend> MakeGreyBackend(std::unique_ptr<Backend> to);

} // namespace melkar
