#pragma once

#include <MelkarCommon/platform/surface.h>

/// @file
/// Surfaces on what a host has already: a context of cairo's, in its window or its print dialog.

/// As cairo.h has it, which hosts without cairo don't need.
using cairo_t = struct _cairo;

namespace melkar {

/// Draws on a context that is the host's, as vectors, the way pages are drawn: texts as glyphs with their characters.
/// Units of the surface are those of the context as it stands (its matrix counts, turned ones too), from (0, 0) to
/// (width, height), within its clip; nothing is cleared before. `dpi` tells how many of them are an inch, for texts and
/// lines: a print context that counts in points takes the same layout as a screen of 96 an inch after `cairo_scale(cr,
/// 0.75, 0.75)`. A window of a whole number of pixels a unit is sharper by `WrapScaledPixels`.
///
/// Until `DeleteDC` the context is the surface's: the host draws nothing on it. Then its matrix, clip, path and all
/// else that is set on it are as they were, and it lives on; what was drawn is its only trace. `DeleteDC` is FALSE,
/// with a log line, if something is missing, for want of memory or because the context failed. Null also for a null
/// context and for one that has failed.
///
/// @code{.cpp}
/// inline void DrawPage(cairo_t* sheet, char* path) { // of a print dialog that counts in points
///     HDC surface = melkar::CreateContextSurface(sheet, 500, 300, 72);
///     CStepGraph(nullptr, surface, "STEPS", surface, nullptr, nullptr).Draw(CRect(0, 0, 500, 300), path);
///     DeleteDC(surface);
/// }
/// @endcode
MELKAR_API HDC CreateContextSurface(cairo_t* context, int width, int height, int dpi = 96);

} // namespace melkar
