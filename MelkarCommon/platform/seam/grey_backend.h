#pragma once

#include <MelkarCommon/platform/seam/backend.h>

namespace melkar {

/// The grey that is as light as a colour.
constexpr Color GreyOf(Color color) {
    return kOpaque | (299U * RedOf(color) + 587U * GreenOf(color) + 114U * BlueOf(color) + 500U) / 1000U * 0x010101U;
}

/// Draws on `to`, which outlives it, in shades of grey.
std::unique_ptr<Backend> MakeGreyBackend(Backend& to);

} // namespace melkar
