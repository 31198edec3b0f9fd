#pragma once

#include <MelkarCommon/platform/pixels/pending_fill.h>
#include <MelkarCommon/platform/seam/backend.h>

namespace melkar {

/// Draws on a picture in memory that someone else owns and that outlives the backend; it takes units of as many pixels
/// as the picture's scale says. With `pending`, which lives as
/// long as the picture, wide fills may wait there; `Flush` comes before anyone looks at the memory.
std::unique_ptr<Backend> MakePixelBackend(const PixelBuffer& pixels, PendingFill* pending = nullptr);

} // namespace melkar
