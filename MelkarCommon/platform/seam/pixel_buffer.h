#pragma once

#include <MelkarCommon/platform/types.h>

#include <cstddef>
#include <cstdint>

/// @file
/// Internal. Pixels in memory.

namespace melkar {

/// A picture in memory, 0xFFRRGGBB; width, height and stride in pixels.
struct PixelBuffer {
    std::uint32_t* pixels = nullptr;
    int width = 0;
    int height = 0;
    int stride = 0;
    double scale = 1; ///< pixels that a unit has in what drew it
};

inline std::uint32_t* PixelAt(const PixelBuffer& buffer, int x, int y) {
    return buffer.pixels + static_cast<std::ptrdiff_t>(y) * buffer.stride + x;
}

constexpr bool IsKnownOperation(DWORD operation) {
    return operation == SRCCOPY || operation == SRCPAINT || operation == SRCAND;
}

/// True if the operation is known and the source is a rectangle within the picture: anything else draws nothing.
constexpr bool CanBlit(const PixelBuffer& pixels, const RECT& source, DWORD operation) {
    return IsKnownOperation(operation) && pixels.pixels != nullptr && source.left >= 0 && source.top >= 0 &&
           source.left < source.right && source.top < source.bottom && source.right <= pixels.width &&
           source.bottom <= pixels.height;
}

} // namespace melkar
