#include <MelkarCommon/platform/cairo/handles.h>
#include <MelkarCommon/platform/seam/area.h>
#include <MelkarCommon/platform/text/figure_text.h>
#include <MelkarCommon/platform/text/glyph_run.h>
#include <MelkarCommon/platform/text/text_on_cairo.h>
#include <MelkarCommon/platform/text/text_parts.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <numbers>

/// @file
/// From placed glyphs to coverage, and to cairo.

namespace melkar {
namespace {

constexpr double kMaxMaskPixels = 5e5; ///< beyond it the part of a text that shows is drawn faster from outlines
constexpr double kMargin = 2;          // pixels around the ink that fonts promise; hinting may go beyond it
constexpr int kQuarterTurn = kFullTurn / 4;

cairo_matrix_t TurnMatrix(int escapement) {
    cairo_matrix_t matrix;
    cairo_matrix_init_rotate(&matrix, -escapement * 2 * std::numbers::pi / kFullTurn);
    return matrix;
}

/// A ruled line along the text, from the line's left end over its whole width.
struct Rule {
    int top;
    int height;
};

int RuleHeight(const TextLayout& layout) { return std::max(1, layout.lineHeight / 20); }

Rule Underline(const TextLayout& layout) { return {layout.ascent + RuleHeight(layout), RuleHeight(layout)}; }

Rule StrikeOut(const TextLayout& layout) {
    constexpr double kHeightInAscents = 0.3; // about the middle of small letters
    const auto up = static_cast<int>(std::lround(layout.ascent * kHeightInAscents));
    return {layout.ascent - up, RuleHeight(layout)};
}

std::vector<Rule> RulesOf(const TextLayout& layout, const TextLine& line) {
    std::vector<Rule> rules;
    if (line.underline)
        rules.push_back(Underline(layout));
    if (line.strikeOut)
        rules.push_back(StrikeOut(layout));
    return rules;
}

void Add(Area& ink, double left, double top, double width, double height) {
    if (!(width > 0 && height > 0))
        return;
    ink.Add({left, top});
    ink.Add({left + width, top + height});
}

/// The ink of a line that isn't turned, from its top-left corner.
Area InkOf(const TextLayout& layout, const TextLine& line) {
    Area ink;
    const double stretch = line.stretch;
    for (const GlyphRun& run : line.runs) {
        cairo_text_extents_t extents;
        cairo_scaled_font_glyph_extents(run.font.get(), run.glyphs.data(), static_cast<int>(run.glyphs.size()),
                                        &extents);
        // bearings count from the first glyph
        Add(ink, stretch * (run.glyphs[0].x + extents.x_bearing), layout.ascent + run.glyphs[0].y + extents.y_bearing,
            stretch * extents.width, extents.height);
    }
    for (const Rule& rule : RulesOf(layout, line))
        Add(ink, 0, rule.top, line.width, rule.height);
    return ink;
}

/// The upright area around a turned one.
Area Turned(const Area& area, int escapement) {
    Area turned;
    for (const PointD& corner :
         {PointD{area.left, area.top}, {area.right, area.top}, {area.left, area.bottom}, {area.right, area.bottom}})
        turned.Add(Turned(corner, escapement));
    return turned;
}

/// While it lives, a context has the coordinates of a line's glyphs.
class GlyphSpace {
public:
    GlyphSpace(cairo_t* cr, const TextLayout& layout, const TextLine& line) : m_cr(cr) {
        cairo_get_matrix(cr, &m_outer);
        cairo_translate(cr, 0, layout.ascent);
        cairo_scale(cr, line.stretch, 1);
    }
    GlyphSpace(const GlyphSpace&) = delete;
    GlyphSpace& operator=(const GlyphSpace&) = delete;
    ~GlyphSpace() { cairo_set_matrix(m_cr, &m_outer); }

private:
    cairo_t* m_cr;
    cairo_matrix_t m_outer;
};

/// Outlines in place of cached glyphs: those stand on whole pixels only, so that a slanted line would be uneven.
void FillOutlines(cairo_t* cr, const GlyphRun& run) {
    cairo_glyph_path(cr, run.glyphs.data(), static_cast<int>(run.glyphs.size()));
    cairo_fill(cr);
}

void FillRules(cairo_t* cr, const TextLayout& layout, const TextLine& line) {
    for (const Rule& rule : RulesOf(layout, line)) {
        cairo_rectangle(cr, 0, rule.top, line.width, rule.height);
        cairo_fill(cr);
    }
}

void DrawGlyphs(cairo_t* cr, const TextLayout& layout, const TextLine& line, bool outlines) {
    const GlyphSpace space(cr, layout, line);
    for (const GlyphRun& run : line.runs) {
        cairo_set_scaled_font(cr, run.font.get());
        if (outlines)
            FillOutlines(cr, run);
        else
            cairo_show_glyphs(cr, run.glyphs.data(), static_cast<int>(run.glyphs.size()));
    }
}

/// With the characters that they stand for.
void ShowGlyphs(cairo_t* cr, const TextLayout& layout, const TextLine& line) {
    const GlyphSpace space(cr, layout, line);
    for (const GlyphRun& run : line.runs) {
        cairo_set_scaled_font(cr, run.font.get());
        cairo_show_text_glyphs(
            cr, run.utf8.data(), static_cast<int>(run.utf8.size()), run.glyphs.data(),
            static_cast<int>(run.glyphs.size()), run.clusters.data(), static_cast<int>(run.clusters.size()),
            run.backward ? CAIRO_TEXT_CLUSTER_FLAG_BACKWARD : static_cast<cairo_text_cluster_flags_t>(0));
    }
}

/// Adds the glyphs' outlines to the path.
void TraceGlyphs(cairo_t* cr, const TextLayout& layout, const TextLine& line) {
    const GlyphSpace space(cr, layout, line);
    for (const GlyphRun& run : line.runs) {
        cairo_set_scaled_font(cr, run.font.get());
        cairo_glyph_path(cr, run.glyphs.data(), static_cast<int>(run.glyphs.size()));
    }
}

/// Coverage in a cairo surface.
struct Canvas {
    const std::uint8_t* data;
    int width;
    int height;
    int stride;

    bool RowHasInk(int y) const {
        const std::uint8_t* row = data + static_cast<std::ptrdiff_t>(y) * stride;
        return std::any_of(row, row + width, [](std::uint8_t c) { return c != 0; });
    }
};

/// The part of a canvas that has ink.
CoverageMask Trim(const Canvas& canvas, int left, int top) {
    int first = 0;
    int last = canvas.height - 1;
    while (first <= last && !canvas.RowHasInk(first))
        ++first;
    while (last > first && !canvas.RowHasInk(last))
        --last;
    int from = canvas.width;
    int to = 0;
    for (int y = first; y <= last; ++y) {
        const std::uint8_t* row = canvas.data + static_cast<std::ptrdiff_t>(y) * canvas.stride;
        const auto ink = [](std::uint8_t c) { return c != 0; };
        from = std::min(from, static_cast<int>(std::find_if(row, row + from, ink) - row));
        while (to < canvas.width && std::any_of(row + to, row + canvas.width, ink))
            ++to;
    }
    if (from >= to)
        return {};
    CoverageMask mask{0, left + from, top + first, to - from, last + 1 - first, to - from, {}};
    mask.coverage.reserve(static_cast<std::size_t>(mask.width) * static_cast<std::size_t>(mask.height));
    for (int y = first; y <= last; ++y) {
        const std::uint8_t* row = canvas.data + static_cast<std::ptrdiff_t>(y) * canvas.stride;
        mask.coverage.insert(mask.coverage.end(), row + from, row + to);
    }
    return mask;
}

/// A mask a quarter turn further, counter-clockwise.
CoverageMask TurnQuarter(const CoverageMask& mask) {
    CoverageMask turned{0, mask.top, -(mask.left + mask.width), mask.height, mask.width, mask.height, {}};
    turned.coverage.reserve(mask.coverage.size());
    for (int x = mask.width - 1; x >= 0; --x)
        for (int y = 0; y < mask.height; ++y)
            turned.coverage.push_back(
                mask.coverage[static_cast<std::size_t>(y) * static_cast<std::size_t>(mask.stride) +
                              static_cast<std::size_t>(x)]);
    return turned;
}

/// Quarter turns are turned pixels, so that they are as crisp as the upright text. A figure takes the memory.
CoverageMask MakeMask(const TextLayout& layout, const TextLine& line, int turn, std::vector<std::uint8_t> memory) {
    if (turn % kQuarterTurn != 0)
        return DrawMask(layout, line, turn);
    CoverageMask mask =
        layout.figures != nullptr ? layout.figures->Mask(line.utf8, std::move(memory)) : DrawMask(layout, line, 0);
    for (int quarter = 0; quarter < turn / kQuarterTurn; ++quarter)
        mask = TurnQuarter(mask);
    return mask;
}

CoverageMask MakeEnlargedMask(const TextLayout& layout, const TextLine& line, int turn, double scale) {
    const TextLayout enlarged = EnlargeLine(layout, line, scale);
    return MakeMask(enlarged, enlarged.lines[0], turn, {});
}

int NormalTurn(int escapement) { return (escapement % kFullTurn + kFullTurn) % kFullTurn; }

/// Of the masks that a thread made. Those may live longer than it does.
using MaskCount = std::shared_ptr<std::atomic<std::ptrdiff_t>>;

const MaskCount& ThreadMasks() {
    static thread_local const MaskCount bytes = std::make_shared<std::atomic<std::ptrdiff_t>>(0);
    return bytes;
}

/// A mask that counts while it lives. With a surface that is handed on it may die on another thread.
struct CountedMask : CoverageMask {
    CountedMask() : m_count(ThreadMasks()) {}
    CountedMask(const CountedMask&) = delete;
    CountedMask& operator=(const CountedMask&) = delete;
    ~CountedMask() { Become({}); }

    void Become(CoverageMask&& mask) {
        CoverageMask::operator=(std::move(mask));
        const auto bytes = static_cast<std::ptrdiff_t>(coverage.size());
        m_count->fetch_add(bytes - std::exchange(m_counted, bytes), std::memory_order_relaxed);
    }

private:
    const MaskCount m_count;
    std::ptrdiff_t m_counted = 0; ///< bytes
};

bool IsFor(const KeptMask& kept, int turn, double scale) {
    return kept.mask != nullptr && !kept.isOfFormer && kept.mask->escapement == turn && kept.mask->scale == scale;
}

/// In the memory of the former one, unless somebody still looks at that.
void MakeAnew(KeptMask& kept, const TextLayout& layout, const TextLine& line, int turn, double scale) {
    kept.isOfFormer = true; // also if there is no memory for this one
    if (kept.mask.use_count() != 1)
        kept.mask = std::make_shared<CountedMask>();
    auto& mask = static_cast<CountedMask&>(*kept.mask);
    CoverageMask drawn = scale == 1 ? MakeMask(layout, line, turn, std::move(mask.coverage))
                                    : MakeEnlargedMask(layout, line, turn, scale);
    drawn.escapement = turn;
    drawn.scale = scale;
    mask.Become(std::move(drawn));
    kept.isOfFormer = false;
}

} // namespace

std::ptrdiff_t MaskBytes() { return ThreadMasks()->load(std::memory_order_relaxed); }

CoverageMask DrawMask(const TextLayout& layout, const TextLine& line, int escapement) {
    const cairo_matrix_t turn = TurnMatrix(escapement);
    const Area upright = InkOf(layout, line);
    if (upright.IsEmpty())
        return {};
    const Area ink = Turned(upright, escapement);
    const double left = std::floor(ink.left) - kMargin;
    const double top = std::floor(ink.top) - kMargin;
    const double width = std::ceil(ink.right) + kMargin - left;
    const double height = std::ceil(ink.bottom) + kMargin - top;
    if (!(width * height <= kMaxMaskPixels))
        return {};
    const CairoSurface surface(
        cairo_image_surface_create(CAIRO_FORMAT_A8, static_cast<int>(width), static_cast<int>(height)));
    const CairoContext cr(cairo_create(surface.get()));
    cairo_translate(cr.get(), -left, -top);
    cairo_transform(cr.get(), &turn);
    DrawGlyphs(cr.get(), layout, line, escapement != 0 || layout.isEnlarged);
    FillRules(cr.get(), layout, line);
    cairo_surface_flush(surface.get());
    if (cairo_status(cr.get()) != CAIRO_STATUS_SUCCESS)
        return {};
    const Canvas canvas{cairo_image_surface_get_data(surface.get()), static_cast<int>(width), static_cast<int>(height),
                        cairo_image_surface_get_stride(surface.get())};
    return Trim(canvas, static_cast<int>(left), static_cast<int>(top));
}

std::shared_ptr<const CoverageMask> LineMask(const TextLayout& layout, std::size_t line, int escapement, double scale) {
    if (line >= layout.lines.size())
        return nullptr;
    const TextLine& text = layout.lines[line];
    const int turn = NormalTurn(escapement);
    KeptMask none;
    KeptMask& kept = layout.keepsMasks ? text.kept : none;
    if (!IsFor(kept, turn, scale))
        MakeAnew(kept, layout, text, turn, scale);
    return kept.mask->width > 0 ? kept.mask : nullptr;
}

Area LineInk(const TextLayout& layout, std::size_t line, double x, double y, int escapement) {
    if (line >= layout.lines.size())
        return {};
    const Area upright = InkOf(layout, layout.lines[line]);
    const Area ink = upright.IsEmpty() ? upright : Turned(upright, NormalTurn(escapement));
    return {x + ink.left, y + ink.top, x + ink.right, y + ink.bottom};
}

void ShowLine(cairo_t* cr, const TextLayout& layout, std::size_t line, double x, double y, int escapement) {
    if (line >= layout.lines.size())
        return;
    const TextLine& text = layout.lines[line];
    const cairo_matrix_t turn = TurnMatrix(NormalTurn(escapement));
    cairo_save(cr);
    cairo_translate(cr, x, y);
    cairo_transform(cr, &turn);
    ShowGlyphs(cr, layout, text);
    FillRules(cr, layout, text);
    cairo_restore(cr);
}

void FillLine(cairo_t* cr, const TextLayout& layout, std::size_t line, double x, double y, int escapement,
              double scale) {
    if (line >= layout.lines.size())
        return;
    if (scale != 1)
        return FillLine(cr, EnlargeLine(layout, layout.lines[line], scale), 0, x, y, escapement);
    const cairo_matrix_t turn = TurnMatrix(NormalTurn(escapement));
    cairo_save(cr);
    cairo_translate(cr, x, y);
    cairo_transform(cr, &turn);
    DrawGlyphs(cr, layout, layout.lines[line], true);
    FillRules(cr, layout, layout.lines[line]);
    cairo_restore(cr);
}

std::vector<OutlineStep> LineOutline(const TextLayout& layout, std::size_t line) {
    if (line >= layout.lines.size())
        return {};
    // Without bounds: on a bounded one cairo leaves out glyphs that stand ten ems beyond it.
    const CairoSurface surface(cairo_recording_surface_create(CAIRO_CONTENT_ALPHA, nullptr));
    const CairoContext cr(cairo_create(surface.get()));
    TraceGlyphs(cr.get(), layout, layout.lines[line]);
    for (const Rule& rule : RulesOf(layout, layout.lines[line]))
        cairo_rectangle(cr.get(), 0, rule.top, layout.lines[line].width, rule.height);
    std::vector<OutlineStep> outline;
    const std::unique_ptr<cairo_path_t, void (*)(cairo_path_t*)> path(cairo_copy_path(cr.get()), cairo_path_destroy);
    for (int i = 0; i < path->num_data; i += path->data[i].header.length) {
        constexpr OutlineStep::Kind kKinds[] = {OutlineStep::Move, OutlineStep::Line, OutlineStep::Curve,
                                                OutlineStep::Close};
        OutlineStep step{kKinds[path->data[i].header.type], {}};
        for (int k = 0; k < step.Points(); ++k)
            step.points[k] = {path->data[i + 1 + k].point.x, path->data[i + 1 + k].point.y};
        outline.push_back(step);
    }
    if (!outline.empty() && outline.back().kind == OutlineStep::Move)
        outline.pop_back(); // where cairo would go on
    return outline;
}

} // namespace melkar
