#include <MelkarCommon/platform/cairo/handles.h>
#include <MelkarCommon/platform/text/glyph_run.h>
#include <MelkarCommon/platform/text/text_parts.h>

#include <algorithm>
#include <cmath>

/// @file
/// A line of a layout for a picture of more pixels. Each word keeps its place and its room, and so does all that is
/// placed by them; the glyphs are those of a font of the real size, at the distances that such a font wants, as far as
/// the room allows.

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

/// A glyph of a line, in pixels.
struct Place {
    cairo_glyph_t* glyph; ///< stands where whole pixels of a unit wanted it
    double coarse;        ///< its advance there
    double exact;         ///< that of the larger font
    bool isBlank;
};

cairo_text_extents_t ExtentsOf(cairo_scaled_font_t* font, const cairo_glyph_t& glyph) {
    cairo_text_extents_t extents;
    cairo_scaled_font_glyph_extents(font, &glyph, 1, &extents);
    return extents;
}

std::vector<Place> PlacesOf(std::vector<GlyphRun>& runs, const TextLine& line, double scale) {
    std::vector<Place> places;
    for (std::size_t i = 0; i < runs.size(); ++i)
        for (std::size_t k = 0; k < runs[i].glyphs.size(); ++k) {
            const double coarse = ExtentsOf(line.runs[i].font.get(), line.runs[i].glyphs[k]).x_advance * scale;
            const cairo_text_extents_t exact = ExtentsOf(runs[i].font.get(), runs[i].glyphs[k]);
            places.push_back({&runs[i].glyphs[k], coarse, exact.x_advance, !(exact.width > 0)});
        }
    return places;
}

/// Puts the glyphs of a word at the distances of the larger font, as far as that is possible between where it began and
/// where it ended.
void SpreadWord(std::vector<Place>::iterator first, std::vector<Place>::iterator last) {
    const double start = first->glyph->x;
    const double room = (last - 1)->glyph->x + (last - 1)->coarse - start;
    double gained = 0; ///< by the glyphs so far
    for (auto place = first; place != last; ++place) {
        place->glyph->x += gained;
        gained += place->exact - place->coarse;
    }
    if (!(room > 0 && room + gained > 0))
        return;
    for (auto place = first; place != last; ++place)
        place->glyph->x = start + (place->glyph->x - start) * room / (room + gained);
}

void SpreadWords(std::vector<Place> places) {
    const auto isBlank = [](const Place& place) { return place.isBlank; };
    for (auto word = places.begin(); word != places.end();) {
        const auto end = std::find_if(word, places.end(), isBlank);
        if (word != end)
            SpreadWord(word, end);
        word = std::find_if_not(end, places.end(), isBlank);
    }
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
    SpreadWords(PlacesOf(larger.runs, line, scale));
    return enlarged;
}

} // namespace melkar
