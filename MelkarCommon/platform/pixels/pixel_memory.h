#pragma once

#include <cstdint>

/// @file
/// Internal. Memory of pictures.

namespace melkar {

/// Memory for width x height pixels, content undefined; null without it. A few freed buffers are kept by each
/// thread, so that a redraw finds warm memory.
std::uint32_t* TakePixels(int width, int height);
void GivePixelsBack(std::uint32_t* pixels, int width, int height);
/// Frees what this thread keeps of them.
void TrimPixels();

} // namespace melkar
