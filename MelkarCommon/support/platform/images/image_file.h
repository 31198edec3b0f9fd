#pragma once

#include <MelkarCommon/support/platform/seam/backend.h>

/// @file
/// Internal. Pictures to and from files; reading is `LoadImageFile` in backend.h.

namespace melkar {

/// Writes a PNG file under a temporary name beside `path`, then gives it its name: no half picture ever stands
/// there. @return 0, or -1 with a log line and nothing changed.
int WritePngFile(const PixelBuffer& pixels, const char* path);

} // namespace melkar
