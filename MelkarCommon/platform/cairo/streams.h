#pragma once

#include <MelkarCommon/platform/files/new_file.h>

#include <cairo.h>

/// @file
/// Internal. Where cairo writes. It is C: nothing is thrown through it.

namespace melkar {

/// Into a `NewFile`, which keeps the reason of a failure.
inline cairo_status_t WriteToFile(void* file, const unsigned char* bytes, unsigned int count) noexcept {
    return static_cast<NewFile*>(file)->Write(bytes, count) ? CAIRO_STATUS_SUCCESS : CAIRO_STATUS_WRITE_ERROR;
}

} // namespace melkar
