#include <MelkarCommon/platform/cairo/handles.h>
#include <MelkarCommon/platform/cairo/shapes.h>
#include <MelkarCommon/platform/pixels/pixel_backend.h>
#include <MelkarCommon/platform/pixels/pixel_blit.h>
#include <MelkarCommon/platform/pixels/pixel_chains.h>
#include <MelkarCommon/platform/pixels/pixel_discs.h>
#include <MelkarCommon/platform/pixels/pixel_layers.h>
#include <MelkarCommon/platform/pixels/pixel_lines.h>
#include <MelkarCommon/platform/pixels/pixel_pending.h>
#include <MelkarCommon/platform/pixels/pixel_slices.h>
#include <MelkarCommon/platform/pixels/pixel_spans.h>
#include <MelkarCommon/platform/seam/corners.h>
#include <MelkarCommon/platform/seam/scaling_backend.h>
#include <MelkarCommon/platform/text/text_engine.h>
#include <MelkarCommon/platform/text/text_on_cairo.h>

#include <array>

namespace melkar {

namespace {

/// The line drawn last, if nothing else was drawn since.
struct LastLine {
    POINT from{0, 0};
    POINT to{0, 0};
    Color color = 0;
    bool isSolid = false; ///< only solid lines close up

    Neighbour NextTo(POINT nextFrom, POINT nextTo, const Stroke& stroke) const {
        const bool matches = isSolid && stroke.IsSolid() && stroke.color == color;
        return matches ? NeighbourOf(from, to, nextFrom, nextTo) : Neighbour::None;
    }
};

/// A walk ends along a row or a column instead of at a right angle. That shows where a line is wider.
constexpr int kWidestWalk = 4;

/// Rectangles, lines, simple polygons, small discs, text masks and copies go straight to the pixels; the rest through a
/// cairo context that is made when it is first needed.
class PixelBackend final : public Backend {
public:
    PixelBackend(const PixelBuffer& pixels, PendingFill* pending)
        : m_buffer(pixels), m_clip(Whole()), m_ground(m_buffer, pending) {}

    void Flush() override { m_ground.WriteAll(); }

    void SetClip(const RECT& clip) override {
        m_clip = ClipBox(ToBox(clip), Whole());
        m_contextClipped = false;
    }

    void FillRect(const RECT& rect, Color color) override {
        m_lastLine = {};
        m_ground.Fill(ClipBox(ToBox(rect), m_clip), color);
    }

    void FillRects(std::span<const Fill> fills) override;

    void FillShape(const Shape& shape, Color color) override {
        const auto* polygon = std::get_if<PolygonShape>(&shape);
        const auto* ellipse = std::get_if<EllipseShape>(&shape);
        const auto* slice = std::get_if<SliceShape>(&shape);
        const bool isDone = (polygon && FillAsChains(*polygon, color)) || (ellipse && TryDisc(*ellipse, 0, color)) ||
                            (slice && TrySlice(*slice, color));
        if (!isDone)
            OnContext([&](cairo_t* cr) { FillShapeOn(cr, m_clip, shape, color); });
    }

    void StrokeShape(const Shape& shape, const Stroke& stroke) override {
        const auto* ellipse = std::get_if<EllipseShape>(&shape);
        if (!ellipse || !(stroke.width > 0) || !TryDisc(*ellipse, stroke.width, stroke.color))
            OnContext([&](cairo_t* cr) { StrokeShapeOn(cr, m_clip, shape, stroke); });
    }

    void StrokePolyline(std::span<const POINT> points, const Stroke& stroke) override {
        if (IsEmptyRect(m_clip) || points.size() < stroke.drawn + 2)
            return;
        StrokeSegments(points, stroke);
        if (WholeWidth(stroke.width) > 1 && !HasPattern(stroke))
            JoinLines(points, stroke);
    }
    void PaintText(const std::shared_ptr<const TextLayout>& layout, std::size_t line, POINT at, int escapement,
                   Color color, const RECT& clip) override;

    void Blit(const RECT& target, const PixelBuffer& pixels, const RECT& source, DWORD operation) override {
        m_lastLine = {};
        m_ground.WriteAll();
        BlitPixels(m_buffer, m_clip, target, pixels, source, operation);
    }

private:
    RECT Whole() const {
        const bool any = m_buffer.pixels != nullptr && m_buffer.width > 0 && m_buffer.height > 0;
        return any ? RECT{0, 0, m_buffer.width, m_buffer.height} : RECT{0, 0, 0, 0};
    }

    bool FillAsChains(const PolygonShape& polygon, Color color);
    bool TryDisc(const EllipseShape& ellipse, double strokeWidth, Color color);
    bool TrySlice(const SliceShape& slice, Color color);
    void PaintAt(const PlacedDisc& disc, POINT at, Color color);
    void StrokeSegments(std::span<const POINT> points, const Stroke& stroke);
    void StrokeWideLine(POINT from, POINT to, const Stroke& stroke);
    void JoinLines(std::span<const POINT> points, const Stroke& stroke);
    void FillCorner(Corner corner, POINT at, const Stroke& stroke, const PlacedDisc& disc);
    cairo_t* Context();
    template <class Draw> void OnContext(const Draw& draw);
    void PaintHugeText(const TextLayout& layout, std::size_t line, POINT at, int escapement, Color color,
                       const RECT& visible);

    PixelBuffer m_buffer;
    RECT m_clip;
    PixelGround m_ground;
    LastLine m_lastLine;
    CairoContext m_context;
    bool m_contextClipped = false; ///< the context's clip is `m_clip`
};

/// The context with the clip set; null without memory or for a picture that is too large for it.
cairo_t* PixelBackend::Context() {
    if (m_context == nullptr) {
        const CairoSurface surface(cairo_image_surface_create_for_data(
            reinterpret_cast<unsigned char*>(m_buffer.pixels), CAIRO_FORMAT_RGB24, m_buffer.width, m_buffer.height,
            m_buffer.stride * static_cast<int>(sizeof(std::uint32_t))));
        m_context.reset(cairo_create(surface.get()));
        cairo_set_line_join(m_context.get(), CAIRO_LINE_JOIN_ROUND);
        m_contextClipped = false;
    }
    cairo_t* cr = m_context.get();
    if (!m_contextClipped) {
        cairo_reset_clip(cr);
        cairo_rectangle(cr, m_clip.left, m_clip.top, m_clip.right - m_clip.left, m_clip.bottom - m_clip.top);
        cairo_clip(cr);
        m_contextClipped = true;
    }
    if (cairo_status(cr) == CAIRO_STATUS_SUCCESS)
        return cr;
    m_context.reset(); // an error would stick to it
    return nullptr;
}

template <class Draw> void PixelBackend::OnContext(const Draw& draw) {
    if (IsEmptyRect(m_clip))
        return;
    cairo_t* cr = Context();
    if (cr == nullptr)
        return;
    m_lastLine = {};
    m_ground.WriteAll();
    cairo_surface_t* surface = cairo_get_target(cr);
    cairo_surface_mark_dirty(surface);
    draw(cr);
    cairo_surface_flush(surface);
}

void PixelBackend::FillRects(std::span<const Fill> fills) {
    std::vector<Fill> visible;
    visible.reserve(fills.size());
    for (const auto& [rect, color] : fills)
        if (const RECT cut = ClipBox(ToBox(rect), m_clip); !IsEmptyRect(cut))
            visible.push_back({cut, color});
    if (visible.empty())
        return;
    m_lastLine = {};
    m_ground.MakeWay(visible[0].rect);
    m_ground.WriteAll();
    FillLayers(m_buffer, std::move(visible));
}

/// @return false, with nothing drawn, if the polygon needs the rasteriser.
bool PixelBackend::FillAsChains(const PolygonShape& polygon, Color color) {
    if (polygon.points.size() < 3)
        return true;
    const std::optional<ChainColumns> chains = FindChains(polygon.points, m_clip);
    if (!chains)
        return false;
    if (chains->columns.empty())
        return true;
    m_lastLine = {};
    const auto lowest = std::max_element(polygon.points.begin(), polygon.points.end(),
                                         [](const POINT& a, const POINT& b) { return a.y < b.y; });
    m_ground.WriteDownTo(lowest->y);
    FillChains(m_buffer, m_clip, *chains, color);
    return true;
}

/// The disc, or its outline if `strokeWidth` is above 0. @return false, with nothing drawn, if it needs the rasteriser.
bool PixelBackend::TryDisc(const EllipseShape& ellipse, double strokeWidth, Color color) {
    const PlacedDisc disc = FindDisc(ellipse, strokeWidth);
    if (disc.mask == nullptr)
        return false;
    PaintAt(disc, {0, 0}, color);
    return true;
}

/// @return false, with nothing drawn, if the slice needs the rasteriser.
bool PixelBackend::TrySlice(const SliceShape& slice, Color color) {
    const PlacedDisc disc = IsCutFromDisc(slice) ? FindDisc(slice.whole, 0) : PlacedDisc{};
    if (disc.mask == nullptr)
        return false;
    m_lastLine = {};
    m_ground.WriteDownTo(disc.y + disc.mask->height);
    if (slice.sweep < kTurn)
        PaintSlice(m_buffer, m_clip, disc, slice, color);
    else
        PaintDisc(m_buffer, m_clip, *disc.mask, disc.x, disc.y, color);
    return true;
}

/// The disc, moved by `at`.
void PixelBackend::PaintAt(const PlacedDisc& disc, POINT at, Color color) {
    m_lastLine = {};
    m_ground.WriteDownTo(disc.y + at.y + disc.mask->height);
    PaintDisc(m_buffer, m_clip, *disc.mask, disc.x + at.x, disc.y + at.y, color);
}

void PixelBackend::StrokeSegments(std::span<const POINT> points, const Stroke& stroke) {
    Stroke rest = stroke; // without the ends that have no length: they lie beside nothing
    while (rest.drawn + 1 < points.size() && IsSamePoint(points[rest.drawn], points[rest.drawn + 1]))
        ++rest.drawn;
    while (rest.drawn + 1 < points.size() && IsSamePoint(points[points.size() - 2], points.back()))
        points = points.first(points.size() - 1);
    const std::span<const POINT> open = points.subspan(rest.drawn);
    if (open.size() < 2)
        return;
    const auto lowest = std::max_element(open.begin(), open.end(), [](POINT a, POINT b) { return a.y < b.y; });
    m_ground.WriteDownTo(std::int64_t{lowest->y} + WholeWidth(stroke.width));
    if (WholeWidth(stroke.width) > kWidestWalk)
        ForEachSegment(points, rest,
                       [this](POINT from, POINT to, const Stroke& own) { StrokeWideLine(from, to, own); });
    else
        StrokeLines(m_buffer, m_clip, points, rest, m_lastLine.NextTo(open[0], open[1], stroke));
    m_lastLine = {points[points.size() - 2], points.back(), stroke.color, stroke.IsSolid()};
}

void PixelBackend::StrokeWideLine(POINT from, POINT to, const Stroke& stroke) {
    if (IsSloped(from, to))
        OnContext([&](cairo_t* cr) { StrokeWideLineOn(cr, m_clip, from, to, stroke); });
    else
        StrokeLines(m_buffer, m_clip, std::array{from, to}, stroke);
}

/// Makes the corners of wide lines whole, and rounds the ends of sloped ones. Those before the lines that are drawn
/// already are whole, and a rounded end becomes a corner as it is: twice, its rim would be too dark.
void PixelBackend::JoinLines(std::span<const POINT> points, const Stroke& stroke) {
    const std::vector<POINT> corners = WithoutRepeats(points);
    if (corners.size() < 2)
        return;
    const std::size_t last = corners.size() - 1;
    const std::size_t drawn = WithoutRepeats(points.first(std::min(stroke.drawn + 1, points.size()))).size() - 1;
    const double radius = WholeWidth(stroke.width) / 2.0;
    const double middle = MiddleOfSlope(stroke);
    const PlacedDisc disc = FindDisc({{middle, middle}, {radius, radius}}, 0);
    const bool hasEnd = drawn > 0 && IsSloped(corners[drawn - 1], corners[drawn]);
    for (std::size_t i = hasEnd ? drawn + 1 : std::max<std::size_t>(drawn, 1); i < last; ++i)
        FillCorner(CornerBetween(corners[i - 1], corners[i], corners[i + 1]), corners[i], stroke, disc);
    if (IsSamePoint(corners.front(), corners.back()))
        return FillCorner(CornerBetween(corners[last - 1], corners[0], corners[1]), corners[0], stroke, disc);
    if (stroke.drawn == 0 && IsSloped(corners[0], corners[1]))
        FillCorner(Corner::Round, corners[0], stroke, disc);
    if (IsSloped(corners[last - 1], corners[last]))
        FillCorner(Corner::Round, corners[last], stroke, disc);
}

/// `disc` is the one about (0, 0) that rounds a corner; without a mask the rasteriser fills it.
void PixelBackend::FillCorner(Corner corner, POINT at, const Stroke& stroke, const PlacedDisc& disc) {
    const int width = WholeWidth(stroke.width);
    const std::int64_t left = std::int64_t{at.x} - width / 2;
    const std::int64_t top = std::int64_t{at.y} - width / 2;
    if (corner == Corner::Square)
        FillRect(ToRect(Box{left, top, left + width, top + width}), stroke.color);
    else if (corner == Corner::Round && disc.mask != nullptr)
        PaintAt(disc, at, stroke.color);
    else if (corner == Corner::Round)
        FillShape(
            EllipseShape{{at.x + MiddleOfSlope(stroke), at.y + MiddleOfSlope(stroke)}, {width / 2.0, width / 2.0}},
            stroke.color);
}

void PixelBackend::PaintText(const std::shared_ptr<const TextLayout>& layout, std::size_t line, POINT at,
                             int escapement, Color color, const RECT& clip) {
    const RECT visible = ClipBox(ToBox(clip), m_clip);
    if (layout == nullptr || line >= layout->lines.size() || IsEmptyRect(visible))
        return;
    m_lastLine = {};
    m_ground.WriteDownTo(visible.bottom);
    if (const auto mask = LineMask(*layout, line, escapement, m_buffer.scale))
        BlendMask(m_buffer, visible, *mask, std::int64_t{at.x} + mask->left, std::int64_t{at.y} + mask->top, color);
    else if (!layout->lines[line].runs.empty())
        PaintHugeText(*layout, line, at, escapement, color, visible);
}

void PixelBackend::PaintHugeText(const TextLayout& layout, std::size_t line, POINT at, int escapement, Color color,
                                 const RECT& visible) {
    constexpr int kFarthestGlyph = 1 << 20; // cairo's coordinates wrap at 2^23, and glyphs reach out from here
    if (at.x < -kFarthestGlyph || at.x > kFarthestGlyph || at.y < -kFarthestGlyph || at.y > kFarthestGlyph)
        return;
    OnContext([&](cairo_t* cr) {
        cairo_save(cr);
        cairo_new_path(cr);
        cairo_rectangle(cr, visible.left, visible.top, visible.right - visible.left, visible.bottom - visible.top);
        cairo_clip(cr);
        SetSourceColor(cr, color);
        FillLine(cr, layout, line, at.x, at.y, escapement, m_buffer.scale);
        cairo_restore(cr);
    });
}

} // namespace

std::unique_ptr<Backend> MakePixelBackend(const PixelBuffer& pixels, PendingFill* pending) {
    auto backend = std::make_unique<PixelBackend>(pixels, pending);
    if (pixels.scale == 1)
        return backend;
    return MakeScalingBackend(std::move(backend), pixels.scale);
}

} // namespace melkar
