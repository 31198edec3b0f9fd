#pragma once

#include <MelkarCommon/support/platform/seam/pixel_buffer.h>

/// @file
/// Internal. Pictures to and from files.

namespace melkar {

/// Reads an image file; `pixels` stays null if it can't be read. Scaled to width x height unless both are 0.
/// The memory comes from `TakePixels`.
PixelBuffer LoadImageFile(const char* path, int width, int height);

/// Writes a PNG file under a temporary name beside `path`, then gives it its name: no half picture ever stands
/// there. @return 0, or -1 with a log line and nothing changed.
int WritePngFile(const PixelBuffer& pixels, const char* path);

} // namespace melkar
