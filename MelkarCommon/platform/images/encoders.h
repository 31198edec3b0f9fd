#pragma once

#include <MelkarCommon/platform/seam/pixel_buffer.h>
#include <MelkarCommon/platform/surface.h>

#include <span>
#include <string>

/// @file
/// Internal. Pixels to picture files: one row of a table for each format.

namespace melkar {

class NewFile;

struct Encoder {
    PictureFormat format;
    /// The highest byte of a pixel means nothing. @return 0, or the number of an error; one of the file counts before
    /// it
    int (*write)(const PixelBuffer& pixels, NewFile& file);
};

std::span<const Encoder> Encoders();

/// Writes a picture file under a temporary name beside `path`, then gives it its name: no half picture ever stands
/// there. @param format a suffix, in any case; null: that of the path @return 0, or -1 with a log line, `errno` and
/// nothing changed
int WritePictureFile(const PixelBuffer& pixels, const char* path, const char* format);

/// The bytes of a PNG file; throws `std::bad_alloc` without memory. @param hasAlpha the pixels are 0xAARRGGBB,
/// multiplied by alpha
std::string EncodePng(const PixelBuffer& pixels, bool hasAlpha);

} // namespace melkar
