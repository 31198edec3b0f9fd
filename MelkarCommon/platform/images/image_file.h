#pragma once

#include <MelkarCommon/platform/seam/pixel_buffer.h>

/// @file
/// Internal. Pictures from files.

namespace melkar {

/// Reads an image file; `pixels` stays null if it can't be read. The memory comes from `TakePixels`.
PixelBuffer LoadImageFile(const char* path);

/// A picture in another size, made as a copy by `operation` would take it: smooth for SRCCOPY, else of the nearest
/// pixels. `pixels` stays null without memory or for a size that makes no sense.
PixelBuffer Resized(const PixelBuffer& picture, int width, int height, DWORD operation);

} // namespace melkar
