#pragma once

#include <MelkarCommon/platform/pixels/pixel_memory.h>

/// @file
/// Internal. Pictures from files.

namespace melkar {

/// Reads an image file; without pixels if it can't be read.
OwnPixels LoadImageFile(const char* path);

/// A picture in another size, made as a copy by `operation` would take it: smooth for SRCCOPY, else of the nearest
/// pixels. Without pixels if there is no memory, or for a size that makes no sense.
OwnPixels Resized(const PixelBuffer& picture, int width, int height, DWORD operation);

} // namespace melkar
