#pragma once

#include <MelkarCommon/platform/seam/area.h>
#include <MelkarCommon/platform/text/text_engine.h>

#include <cairo.h>

/// @file
/// Internal. Lines of text on a cairo context.

namespace melkar {

/// What a line inks from (x, y), its top-left corner, turned by `escapement`; empty if nothing.
Area LineInk(const TextLayout& layout, std::size_t line, double x, double y, int escapement);

/// Shows a line with cairo at (x, y), its top-left corner, in the context's current source, with the text
/// attached so that a page can be searched. Turns it by `escapement`.
void ShowLine(cairo_t* cr, const TextLayout& layout, std::size_t line, double x, double y, int escapement);

/// The same for pixels that a line covers in part only: by its outlines, of which no more is computed than the clip
/// shows. As glyphs each would be drawn whole and kept, which takes seconds and gigabytes at the largest sizes.
/// @param scale pixels a unit of the layout; x and y are pixels
void FillLine(cairo_t* cr, const TextLayout& layout, std::size_t line, double x, double y, int escapement,
              double scale = 1);

} // namespace melkar
