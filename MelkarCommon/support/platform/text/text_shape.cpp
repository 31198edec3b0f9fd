#include <MelkarCommon/support/platform/text/text_face.h>
#include <MelkarCommon/support/platform/text/text_parts.h>

#include <MelkarCommon/support/platform/files/report.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

/// @file
/// Pango's part: it itemises, shapes, orders and breaks a paragraph; here its runs become glyphs with positions.

namespace melkar {
namespace {

constexpr int kMaxWrap = INT32_MAX / PANGO_SCALE;

/// A line on its way from Pango: where it stands in the paragraph, how far its glyphs have come.
struct LineBuilder {
    TextFace& face;
    const std::string& paragraph;
    int contentEnd;       ///< byte behind the last character that counts; blanks at a wrap stand behind it
    std::int64_t pen = 0; ///< in Pango's units
    TextLine line;
};

std::shared_ptr<cairo_scaled_font_t> ScaledFontOf(PangoFont* font) {
    cairo_scaled_font_t* scaled = pango_cairo_font_get_scaled_font(reinterpret_cast<PangoCairoFont*>(font));
    if (scaled == nullptr || cairo_scaled_font_status(scaled) != CAIRO_STATUS_SUCCESS)
        return nullptr;
    return {cairo_scaled_font_reference(scaled), cairo_scaled_font_destroy};
}

void ReportUnknown(TextFace& face) {
    if (face.unknownReported)
        return;
    face.unknownReported = true;
    LogText(("Text: no font of this machine has all characters of a text in " + face.name).c_str());
}

double ToPixels(std::int64_t units) { return static_cast<double>(units) / PANGO_SCALE; }

/// Places the run's glyphs and moves the pen behind them; glyphs that stand for nothing visible are left out.
void PlaceGlyphs(LineBuilder& builder, const PangoGlyphItem& item, GlyphRun& run) {
    const PangoGlyphString& string = *item.glyphs;
    run.glyphs.reserve(static_cast<std::size_t>(string.num_glyphs));
    for (int i = 0; i < string.num_glyphs; ++i) {
        const PangoGlyphInfo& info = string.glyphs[i];
        PangoGlyph glyph = info.glyph;
        if ((glyph & PANGO_GLYPH_UNKNOWN_FLAG) != 0) {
            ReportUnknown(builder.face);
            glyph = 0; // the font's own sign for a missing glyph
        }
        if (info.glyph != PANGO_GLYPH_EMPTY)
            run.glyphs.push_back(
                {glyph, ToPixels(builder.pen + info.geometry.x_offset), ToPixels(info.geometry.y_offset)});
        if (item.item->offset + string.log_clusters[i] < builder.contentEnd)
            builder.pen += info.geometry.width;
    }
}

/// Which glyphs stand for which characters, in the order of the characters.
void AddClusters(const std::string& paragraph, PangoGlyphItem& item, GlyphRun& run) {
    PangoGlyphItemIter iter;
    for (gboolean more = pango_glyph_item_iter_init_start(&iter, &item, paragraph.c_str()); more != FALSE;
         more = pango_glyph_item_iter_next_cluster(&iter)) {
        const int low = std::min(iter.start_glyph, iter.end_glyph + 1);
        const int high = std::max(iter.start_glyph + 1, iter.end_glyph);
        const auto glyphs = std::count_if(item.glyphs->glyphs + low, item.glyphs->glyphs + high,
                                          [](const PangoGlyphInfo& info) { return info.glyph != PANGO_GLYPH_EMPTY; });
        run.clusters.push_back({iter.end_index - iter.start_index, static_cast<int>(glyphs)});
    }
}

void AddRun(LineBuilder& builder, PangoGlyphItem& item) {
    GlyphRun run;
    PlaceGlyphs(builder, item, run);
    run.font = ScaledFontOf(item.item->analysis.font);
    if (run.font == nullptr || run.glyphs.empty())
        return;
    run.utf8 = builder.paragraph.substr(static_cast<std::size_t>(item.item->offset),
                                        static_cast<std::size_t>(item.item->length));
    run.backward = (item.item->analysis.level & 1) != 0;
    AddClusters(builder.paragraph, item, run);
    builder.line.runs.push_back(std::move(run));
}

TextLine TakeLine(TextFace& face, const std::string& paragraph, const PangoLayoutLine& source, bool wrapped) {
    const std::string_view whole = std::string_view(paragraph).substr(static_cast<std::size_t>(source.start_index),
                                                                      static_cast<std::size_t>(source.length));
    const std::string_view content = wrapped ? WithoutTrailingBlanks(whole) : whole;
    LineBuilder builder{face, paragraph, source.start_index + static_cast<int>(content.size()), 0, {}};
    builder.line.utf8 = content;
    for (const GSList* run = source.runs; run != nullptr; run = run->next)
        AddRun(builder, *static_cast<PangoGlyphItem*>(run->data));
    builder.line.width = static_cast<int>(std::ceil(ToPixels(builder.pen)));
    return std::move(builder.line);
}

/// Blanks at the beginning stay with the first word, so that no empty line comes before it.
void KeepLeadingBlanks(PangoLayout* shaper, const std::string& paragraph) {
    const std::size_t blanks = std::min(paragraph.find_first_not_of(' '), paragraph.size());
    if (blanks == 0) {
        pango_layout_set_attributes(shaper, nullptr);
        return;
    }
    PangoAttribute* together = pango_attr_allow_breaks_new(FALSE);
    together->start_index = 0;
    together->end_index = static_cast<guint>(blanks) + 1;
    PangoAttrList* attributes = pango_attr_list_new();
    pango_attr_list_insert(attributes, together);
    pango_layout_set_attributes(shaper, attributes);
    pango_attr_list_unref(attributes);
}

} // namespace

void ShapeParagraph(TextFace& face, const std::string& paragraph, int wrapWidth, std::vector<TextLine>& lines) {
    PangoLayout* shaper = face.shaper.get();
    pango_layout_set_width(shaper, wrapWidth == kNoWrap ? -1 : std::min(wrapWidth, kMaxWrap) * PANGO_SCALE);
    KeepLeadingBlanks(shaper, paragraph);
    pango_layout_set_text(shaper, paragraph.data(), static_cast<int>(paragraph.size()));
    for (const GSList* line = pango_layout_get_lines_readonly(shaper); line != nullptr; line = line->next)
        lines.push_back(
            TakeLine(face, paragraph, *static_cast<const PangoLayoutLine*>(line->data), line->next != nullptr));
}

} // namespace melkar
