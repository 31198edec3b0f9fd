#include <MelkarCommon/platform/text/text_face.h>
#include <MelkarCommon/platform/text/text_parts.h>
#include <MelkarCommon/platform/text/text_wrap.h>

#include <MelkarCommon/platform/files/log_sink.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <numeric>
#include <utility>

/// @file
/// Pango's part: it itemises, shapes and orders a paragraph on one line; here the runs are cut into lines by the rule
/// of `text_wrap.h` and become glyphs with positions.

namespace melkar {
namespace {

/// A line on its way from Pango: how far its glyphs have come.
struct LineBuilder {
    TextFace& face;
    const std::string& paragraph;
    std::int64_t pen = 0; ///< in Pango's units
    bool joins = false;   ///< some letters must touch the next one
    TextLine line;
};

/// What one line has of one of Pango's runs: bytes of the paragraph, and their glyphs.
struct RunPart {
    const PangoItem* item;
    const PangoGlyphString* glyphs;
    int start;
    int end;
    int firstGlyph;
    int endGlyph;

    bool IsBackward() const { return (item->analysis.level & 1) != 0; }
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
    Report(("Text: no font of this machine has all characters of a text in " + face.name).c_str());
}

struct PangoFree {
    void operator()(PangoGlyphItem* run) const { pango_glyph_item_free(run); }
    void operator()(GList* items) const {
        g_list_free_full(items, [](void* item) { pango_item_free(static_cast<PangoItem*>(item)); });
    }
};

double ToPixels(std::int64_t units) { return static_cast<double>(units) / PANGO_SCALE; }

/// Places the part's glyphs and moves the pen behind them; glyphs that stand for nothing visible are left out.
void PlaceGlyphs(LineBuilder& builder, const RunPart& part, GlyphRun& run) {
    run.glyphs.reserve(static_cast<std::size_t>(part.endGlyph - part.firstGlyph));
    for (int i = part.firstGlyph; i < part.endGlyph; ++i) {
        const PangoGlyphInfo& info = part.glyphs->glyphs[i];
        PangoGlyph glyph = info.glyph;
        if ((glyph & PANGO_GLYPH_UNKNOWN_FLAG) != 0) {
            ReportUnknown(builder.face);
            glyph = 0; // the font's own sign for a missing glyph
        }
        if (info.glyph != PANGO_GLYPH_EMPTY)
            run.glyphs.push_back(
                {glyph, ToPixels(builder.pen + info.geometry.x_offset), ToPixels(info.geometry.y_offset)});
        builder.pen += info.geometry.width;
    }
}

/// Which glyphs stand for which characters, in the order of the characters. Together they are all of the part's bytes:
/// cairo fails at anything else.
void AddClusters(const RunPart& part, GlyphRun& run) {
    const int step = part.IsBackward() ? -1 : 1;
    const int stop = part.IsBackward() ? part.firstGlyph - 1 : part.endGlyph;
    int byte = part.start;
    for (int i = part.IsBackward() ? part.endGlyph - 1 : part.firstGlyph; i != stop;) {
        const int cluster = part.glyphs->log_clusters[i];
        int glyphs = 0;
        for (; i != stop && part.glyphs->log_clusters[i] == cluster; i += step)
            glyphs += part.glyphs->glyphs[i].glyph != PANGO_GLYPH_EMPTY ? 1 : 0;
        const int end = i != stop ? part.item->offset + part.glyphs->log_clusters[i] : part.end;
        run.clusters.push_back({end - byte, glyphs});
        byte = end;
    }
}

/// Whether gaps between letters would show: cursive scripts, and those whose letters hang from one line.
bool Joins(const PangoItem& item) {
    switch (item.analysis.script) {
    case PANGO_SCRIPT_ARABIC:
    case PANGO_SCRIPT_SYRIAC:
    case PANGO_SCRIPT_MONGOLIAN:
    case PANGO_SCRIPT_NKO:
    case PANGO_SCRIPT_DEVANAGARI:
    case PANGO_SCRIPT_BENGALI:
    case PANGO_SCRIPT_GURMUKHI:
        return true;
    default:
        return false;
    }
}

void AddRun(LineBuilder& builder, const RunPart& part) {
    GlyphRun run;
    PlaceGlyphs(builder, part, run);
    run.font = ScaledFontOf(part.item->analysis.font);
    if (run.font == nullptr || run.glyphs.empty())
        return;
    run.utf8 =
        builder.paragraph.substr(static_cast<std::size_t>(part.start), static_cast<std::size_t>(part.end - part.start));
    run.backward = part.IsBackward();
    AddClusters(part, run);
    builder.line.letters += static_cast<int>(run.clusters.size());
    builder.joins = builder.joins || Joins(*part.item);
    builder.line.runs.push_back(std::move(run));
}

/// The first glyph, in the order of the characters, whose character stands at `byte` or behind it; counted from that
/// order's beginning.
int GlyphAt(const PangoGlyphItem& run, int byte) {
    const int* const clusters = run.glyphs->log_clusters;
    const int* const end = clusters + run.glyphs->num_glyphs;
    const int wanted = byte - run.item->offset;
    if ((run.item->analysis.level & 1) == 0)
        return static_cast<int>(std::lower_bound(clusters, end, wanted) - clusters);
    const std::reverse_iterator first(end);
    return static_cast<int>(std::lower_bound(first, std::reverse_iterator(clusters), wanted) - first);
}

/// What a run has in the span; without bytes if there is nothing.
RunPart PartOf(const PangoGlyphItem& run, const LineSpan& span) {
    const int offset = run.item->offset;
    RunPart part{run.item,
                 run.glyphs,
                 std::max(offset, static_cast<int>(span.start)),
                 std::min(offset + run.item->length, static_cast<int>(span.end)),
                 0,
                 0};
    part.firstGlyph = GlyphAt(run, part.start);
    part.endGlyph = GlyphAt(run, part.end);
    if (part.IsBackward())
        part = {part.item,
                part.glyphs,
                part.start,
                part.end,
                run.glyphs->num_glyphs - part.endGlyph,
                run.glyphs->num_glyphs - part.firstGlyph};
    return part;
}

/// From the order of the characters to that of the eye: from the highest level down, each stretch of that level or a
/// higher one is turned round.
void OrderForTheEye(std::vector<RunPart>& parts) {
    int level = 0;
    for (const RunPart& part : parts)
        level = std::max(level, int{part.item->analysis.level});
    for (; level > 0; --level) {
        const auto isLower = [&](const RunPart& part) { return part.item->analysis.level < level; };
        for (auto start = parts.begin(); start != parts.end();) {
            start = std::find_if_not(start, parts.end(), isLower);
            const auto end = std::find_if(start, parts.end(), isLower);
            std::reverse(start, end);
            start = end;
        }
    }
}

/// Pango's runs of a paragraph on one line, in the order of the characters.
using Run = std::unique_ptr<PangoGlyphItem, PangoFree>;
using Runs = std::vector<Run>;

Run ShapeRun(PangoItem* item, std::string_view paragraph, PangoShapeFlags flags) {
    Run run(g_slice_new0(PangoGlyphItem));
    run->item = item;
    run->glyphs = pango_glyph_string_new();
    pango_shape_item(item, paragraph.data(), static_cast<int>(paragraph.size()), nullptr, run->glyphs, flags);
    return run;
}

/// By Pango's single steps, the direction being that of the first letter: a layout of its own would measure what it has
/// shaped, for which it looks for the fonts once more and shapes a sample of each.
Runs ShapeLine(TextFace& face, std::string_view paragraph) {
    if (!face.hasShaped)
        RequireRoom();
    face.hasShaped = true;
    PangoContext* shaper = face.shaper.get();
    const bool rounds = pango_context_get_round_glyph_positions(shaper) != FALSE;
    const std::unique_ptr<GList, PangoFree> items(
        pango_itemize(shaper, paragraph.data(), 0, static_cast<int>(paragraph.size()), nullptr, nullptr));
    Runs runs;
    for (GList* item = items.get(); item != nullptr; item = item->next)
        runs.push_back(ShapeRun(static_cast<PangoItem*>(std::exchange(item->data, nullptr)), paragraph,
                                rounds ? PANGO_SHAPE_ROUND_POSITIONS : PANGO_SHAPE_NONE));
    return runs;
}

/// Where lines may break, character by character.
std::vector<PangoLogAttr> AttributesOf(const Runs& runs, std::string_view paragraph) {
    const auto length = static_cast<int>(paragraph.size());
    std::vector<PangoLogAttr> attributes(static_cast<std::size_t>(g_utf8_strlen(paragraph.data(), length)) + 1);
    pango_default_break(paragraph.data(), length, nullptr, attributes.data(), static_cast<int>(attributes.size()));
    PangoLogAttr* first = attributes.data();
    for (const Run& run : runs) {
        PangoItem* item = run->item;
        pango_tailor_break(paragraph.data() + item->offset, item->length, &item->analysis, -1, first,
                           item->num_chars + 1);
        first += item->num_chars;
    }
    return attributes;
}

/// A line at the advances of its glyphs.
struct ShapedLine {
    TextLine line;
    double advance; ///< device units
};

/// @param run the first that may reach into the span; afterwards that of the next span
ShapedLine TakeLine(TextFace& face, const std::string& paragraph, const LineSpan& span, Runs::const_iterator& run,
                    Runs::const_iterator end) {
    std::vector<RunPart> parts;
    while (run != end && (*run)->item->offset + (*run)->item->length <= static_cast<int>(span.start))
        ++run;
    for (auto next = run; next != end && (*next)->item->offset < static_cast<int>(span.end); ++next)
        parts.push_back(PartOf(**next, span));
    OrderForTheEye(parts);
    LineBuilder builder{face, paragraph, 0, false, {}};
    builder.line.utf8 = paragraph.substr(span.start, span.end - span.start);
    for (const RunPart& part : parts)
        AddRun(builder, part);
    if (builder.joins)
        builder.line.letters = 0;
    return {std::move(builder.line), ToPixels(builder.pen)};
}

/// How far the text reaches before each of its bytes, in Pango's units. A glyph's width counts behind the first byte
/// of its cluster.
std::vector<std::int64_t> ReachOf(const Runs& runs, std::size_t bytes) {
    std::vector<std::int64_t> reach(bytes + 1);
    for (const Run& run : runs)
        for (int i = 0; i < run->glyphs->num_glyphs; ++i)
            reach[static_cast<std::size_t>(run->item->offset + run->glyphs->log_clusters[i]) + 1] +=
                run->glyphs->glyphs[i].geometry.width;
    std::partial_sum(reach.begin(), reach.end(), reach.begin());
    return reach;
}

/// Bytes of a paragraph on one line, and the room that they take.
struct LineRoom {
    LineSpan span;
    int width; ///< device units
};

/// The lines of a paragraph that a face has just shaped, by the advances of its glyphs.
std::vector<LineRoom> RoomsBy(const Runs& runs, std::string_view paragraph, int wrapWidth) {
    WrapText text{paragraph, {paragraph.size()}, ReachOf(runs, paragraph.size())};
    if (wrapWidth != kNoWrap)
        text.breaks = BreaksOf(paragraph, AttributesOf(runs, paragraph).data());
    const std::int64_t room = wrapWidth != kNoWrap ? std::int64_t{wrapWidth} * PANGO_SCALE : text.reach.back();
    std::vector<LineRoom> rooms;
    for (const LineSpan& span : WrapLines(text, room))
        rooms.push_back({span, static_cast<int>(std::ceil(ToPixels(text.reach[span.end] - text.reach[span.start])))});
    return rooms;
}

/// The same as measured on the screen. What fits there is no wider here than what it has to fit into.
std::vector<LineRoom> RoomsOn(const ScreenMeasure& measure, std::string_view paragraph, int wrapWidth) {
    const int onScreen = wrapWidth != kNoWrap ? measure.ToScreen(wrapWidth) : kNoWrap;
    std::vector<LineRoom> rooms = RoomsBy(ShapeLine(*measure.face, paragraph), paragraph, onScreen);
    for (LineRoom& room : rooms) {
        const bool fits = room.width <= onScreen;
        room.width = measure.FromScreen(room.width);
        if (fits)
            room.width = std::min(room.width, wrapWidth);
    }
    return rooms;
}

} // namespace

void ShapeParagraph(TextFace& face, const std::string& paragraph, int wrapWidth, std::vector<TextLine>& lines) {
    const Runs runs = ShapeLine(face, paragraph);
    const std::vector<LineRoom> rooms =
        face.measure ? RoomsOn(*face.measure, paragraph, wrapWidth) : RoomsBy(runs, paragraph, wrapWidth);
    auto run = runs.begin();
    for (const LineRoom& room : rooms) {
        auto [line, advance] = TakeLine(face, paragraph, room.span, run, runs.end());
        line.width = room.width;
        if (face.measure && advance > 0)
            line.stretch = room.width / advance;
        lines.push_back(std::move(line));
    }
}

} // namespace melkar
