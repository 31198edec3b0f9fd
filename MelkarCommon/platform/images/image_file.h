#pragma once

#include <MelkarCommon/platform/seam/pixel_buffer.h>

#include <string>

/// @file
/// Internal. Pictures to and from files.

namespace melkar {

/// Reads an image file; `pixels` stays null if it can't be read. The memory comes from `TakePixels`.
PixelBuffer LoadImageFile(const char* path);

/// A picture in another size, made as a copy by `operation` would take it: smooth for SRCCOPY, else of the nearest
/// pixels. `pixels` stays null without memory or for a size that makes no sense.
PixelBuffer Resized(const PixelBuffer& picture, int width, int height, DWORD operation);

/// Writes a PNG file under a temporary name beside `path`, then gives it its name: no half picture ever stands
/// there. @return 0, or -1 with a log line and nothing changed.
int WritePngFile(const PixelBuffer& pixels, const char* path);

/// The bytes of a PNG file; empty without memory. @param hasAlpha the pixels are 0xAARRGGBB, multiplied by alpha
std::string EncodePng(const PixelBuffer& pixels, bool hasAlpha);

} // namespace melkar
