#pragma once

#include <MelkarCommon/platform/text/text_engine.h>

#include <cairo.h>

/// @file
/// Internal. What a line of text is made of, for the text engine and for what paints on cairo.

namespace melkar {

/// Glyphs of one scaled font in one direction, positions relative to the line's left end and baseline.
struct GlyphRun {
    std::shared_ptr<cairo_scaled_font_t> font;
    std::vector<cairo_glyph_t> glyphs;
    std::string utf8; ///< the run's characters, in the order of `clusters`
    std::vector<cairo_text_cluster_t> clusters;
    bool backward = false;
};

} // namespace melkar
