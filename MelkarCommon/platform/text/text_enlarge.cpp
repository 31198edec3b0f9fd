#include <MelkarCommon/platform/cairo/handles.h>
#include <MelkarCommon/platform/text/glyph_run.h>
#include <MelkarCommon/platform/text/text_parts.h>

#include <cmath>

/// @file
/// A line of a layout for a picture of more pixels. Its room, and so everything that is placed by it, stays; its glyphs
/// are those of a font of the real size, at the distances that such a font wants, as far as the room allows.

namespace melkar {
namespace {

using ScaledFont = std::shared_ptr<cairo_scaled_font_t>;

/// The same font larger, with exact advances.
ScaledFont Enlarged(cairo_scaled_font_t* font, double scale) {
    cairo_matrix_t size;
    cairo_matrix_t surface;
    cairo_scaled_font_get_font_matrix(font, &size);
    cairo_scaled_font_get_ctm(font, &surface);
    cairo_matrix_scale(&size, scale, scale);
    const CairoFontOptions options(cairo_font_options_create());
    cairo_scaled_font_get_font_options(font, options.get());
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    return {cairo_scaled_font_create(cairo_scaled_font_get_font_face(font), &size, &surface, options.get()),
            cairo_scaled_font_destroy};
}

double AdvanceOf(cairo_scaled_font_t* font, const cairo_glyph_t& glyph) {
    cairo_text_extents_t extents;
    cairo_scaled_font_glyph_extents(font, &glyph, 1, &extents);
    return extents.x_advance;
}

/// Moves the glyphs, which stand as whole pixels of a unit wanted it, to the distances of the larger fonts; the line
/// begins and ends where it did.
void SetDistances(std::vector<GlyphRun>& runs, const TextLine& line, double scale) {
    double gained = 0; ///< by the glyphs so far
    double end = 0;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        for (std::size_t k = 0; k < runs[i].glyphs.size(); ++k) {
            cairo_glyph_t& glyph = runs[i].glyphs[k];
            const double coarse = AdvanceOf(line.runs[i].font.get(), line.runs[i].glyphs[k]) * scale;
            end = glyph.x + coarse;
            glyph.x += gained;
            gained += AdvanceOf(runs[i].font.get(), glyph) - coarse;
        }
    }
    if (!(end > 0))
        return;
    for (GlyphRun& run : runs)
        for (cairo_glyph_t& glyph : run.glyphs)
            glyph.x *= end / (end + gained);
}

} // namespace

TextLayout EnlargeLine(const TextLayout& layout, const TextLine& line, double scale) {
    const auto scaled = [scale](int units) { return static_cast<int>(std::lround(units * scale)); };
    TextLayout enlarged;
    enlarged.lineHeight = scaled(layout.lineHeight);
    enlarged.ascent = scaled(layout.ascent);
    enlarged.width = scaled(line.width);
    enlarged.isEnlarged = true;
    TextLine& larger = enlarged.lines.emplace_back();
    larger.width = enlarged.width;
    larger.stretch = line.stretch;
    larger.underline = line.underline;
    larger.strikeOut = line.strikeOut;
    larger.runs = line.runs;
    for (GlyphRun& run : larger.runs) {
        run.font = Enlarged(run.font.get(), scale);
        for (cairo_glyph_t& glyph : run.glyphs) {
            glyph.x *= scale;
            glyph.y *= scale;
        }
    }
    SetDistances(larger.runs, line, scale);
    return enlarged;
}

} // namespace melkar
