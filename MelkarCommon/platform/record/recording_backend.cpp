#include <MelkarCommon/platform/record/ground_first.h>
#include <MelkarCommon/platform/record/recording_parts.h>
#include <MelkarCommon/platform/seam/box.h>
#include <MelkarCommon/platform/text/text_engine.h>

#include <utility>

/// @file
/// Keeps drawing operations and plays them again. While the clip is narrower than the surface, operations outside of
/// it are dropped, rectangles and copies are cut to it, and what can't be cut carries it along.

namespace melkar {

namespace {

bool SameSize(const RECT& a, const RECT& b) {
    const Box one = ToBox(a);
    const Box other = ToBox(b);
    return one.right - one.left == other.right - other.left && one.bottom - one.top == other.bottom - other.top;
}

class RecordingBackend final : public Backend {
public:
    RecordingBackend(std::vector<RecordedOp>& ops, int width, int height, Masks masks, Covered covered)
        : m_ops(ops), m_whole{0, 0, width, height}, m_clip(m_whole), m_masks(masks), m_covered(covered) {}

    void SetClip(const RECT& clip) override {
        m_clip = ClipBox(ToBox(clip), m_whole);
        m_narrow = !Covers(clip, m_whole);
    }

    void FillRect(const RECT& rect, Color color) override {
        const RECT cut = m_narrow ? ClipBox(ToBox(rect), m_clip) : rect;
        if (IsEmptyRect(cut))
            return;
        if (Covers(cut, m_whole) && m_covered == Covered::Drop)
            DropCovered();
        m_ops.emplace_back(Fill{cut, color});
    }
    void FillShape(const Shape& shape, Color color) override { Keep(FillShapeOp{shape, color}); }
    void StrokeShape(const Shape& shape, const Stroke& stroke) override { Keep(StrokeShapeOp{shape, stroke}); }
    void StrokePolyline(std::span<const POINT> points, const Stroke& stroke) override {
        Keep(StrokePolylineOp{LinePoints(points), stroke});
    }
    void PaintText(const std::shared_ptr<const TextLayout>& layout, std::size_t line, POINT at, int escapement,
                   Color color, const RECT& clip) override;
    void Blit(const RECT& target, const PixelBuffer& pixels, const RECT& source, DWORD operation) override;

private:
    /// Nothing of what was drawn so far shows any longer. The mark of a copy that the covering fill begins stays.
    void DropCovered() {
        const bool isCopy = !m_ops.empty() && std::holds_alternative<CopyMark>(m_ops.back().verb);
        m_ops.erase(m_ops.begin(), m_ops.end() - (isCopy ? 1 : 0));
    }
    /// Keeps an operation that is drawn whole, under the clip if that cuts it. It is made in its place: moved there, a
    /// chart of two hundred takes 1% longer.
    template <class Verb> void Keep(Verb verb) {
        m_ops.emplace_back(std::move(verb));
        if (m_narrow)
            CutLast();
    }
    void CutLast() {
        RecordedOp& op = m_ops.back();
        if (IsEmptyRect(ClipBox(BoxOf(op), m_clip)))
            return m_ops.pop_back();
        op.clip = m_clip;
        if (!IsCut(op))
            op.clip = {};
    }

    std::vector<RecordedOp>& m_ops;
    RECT m_whole;
    RECT m_clip;
    Masks m_masks;
    Covered m_covered;
    bool m_narrow = false; ///< part of the surface lies outside of the clip
};

void RecordingBackend::PaintText(const std::shared_ptr<const TextLayout>& layout, std::size_t line, POINT at,
                                 int escapement, Color color, const RECT& clip) {
    if (layout == nullptr || line >= layout->lines.size())
        return;
    // The clip stays even if it doesn't cut: ink may reach beyond the box.
    const RECT cut = m_narrow ? ClipBox(ToBox(clip), m_clip) : clip;
    if (IsEmptyRect(cut))
        return;
    m_ops.emplace_back(TextOp{m_masks == Masks::Keep ? layout : WithoutMasks(layout), line, at, escapement, color},
                       cut);
    if (m_narrow && IsEmptyRect(ClipBox(BoxOf(m_ops.back()), m_clip)))
        m_ops.pop_back();
}

/// The pixels of a rectangle, row by row.
std::vector<std::uint32_t> CopyOf(const PixelBuffer& pixels, const RECT& source) {
    std::vector<std::uint32_t> copy;
    for (int y = source.top; y < source.bottom; ++y)
        copy.insert(copy.end(), PixelAt(pixels, source.left, y), PixelAt(pixels, source.right, y));
    return copy;
}

void RecordingBackend::Blit(const RECT& target, const PixelBuffer& pixels, const RECT& source, DWORD operation) {
    if (IsEmptyRect(target) || !CanBlit(pixels, source, operation))
        return;
    BlitOp blit{target, source, operation, nullptr};
    if (m_narrow && SameSize(target, source)) {
        blit.target = ClipBox(ToBox(target), m_clip);
        if (IsEmptyRect(blit.target))
            return;
        blit.source.left += blit.target.left - target.left;
        blit.source.top += blit.target.top - target.top;
        blit.source.right -= target.right - blit.target.right;
        blit.source.bottom -= target.bottom - blit.target.bottom;
    }
    blit.pixels = std::make_shared<const std::vector<std::uint32_t>>(CopyOf(pixels, blit.source));
    Keep(std::move(blit));
}

/// Plays operations somewhere else. What lands beyond an int ends at its edge, far off any surface.
class Player {
public:
    Player(Backend& to, const RECT& landing, std::int64_t dx, std::int64_t dy)
        : m_to(to), m_landing(landing), m_dx(dx), m_dy(dy), m_isMoved(dx != 0 || dy != 0) {}

    void FillAll(std::vector<Fill> fills) {
        for (Fill& fill : fills)
            fill.rect = Moved(fill.rect);
        m_to.SetClip(m_landing);
        m_to.FillRects(fills);
    }

    void Play(const RecordedOp& op) {
        ClipFor(op);
        std::visit(
            Overloaded{
                [&](const Fill& fill) { m_to.FillRect(Moved(fill.rect), fill.color); },
                [&](const FillShapeOp& fill) {
                    m_isMoved ? m_to.FillShape(Moved(fill.shape), fill.color) : m_to.FillShape(fill.shape, fill.color);
                },
                [&](const StrokeShapeOp& outline) { m_to.StrokeShape(Moved(outline.shape), outline.stroke); },
                [&](const StrokePolylineOp& lines) {
                    m_isMoved ? m_to.StrokePolyline(MovedAll(lines.points), lines.stroke)
                              : m_to.StrokePolyline(lines.points, lines.stroke);
                },
                [&](const TextOp& text) {
                    m_to.PaintText(text.layout, text.line, Moved(text.at), text.escapement, text.color, Moved(op.clip));
                },
                [&](const BlitOp& blit) { PlayBlit(blit); },
                [](const CopyMark&) {},
            },
            op.verb);
    }

private:
    RECT Moved(const RECT& r) const { return ToRect({r.left + m_dx, r.top + m_dy, r.right + m_dx, r.bottom + m_dy}); }
    POINT Moved(POINT p) const { return {NearestInt(p.x + m_dx), NearestInt(p.y + m_dy)}; }
    template <class Points> Points MovedAll(Points points) const {
        for (POINT& point : points)
            point = Moved(point);
        return points;
    }
    PointD Moved(PointD p) const { return {p.x + static_cast<double>(m_dx), p.y + static_cast<double>(m_dy)}; }
    Shape Moved(const Shape& shape) const {
        return std::visit(Overloaded{
                              [&](const PolygonShape& polygon) -> Shape {
                                  return PolygonShape{MovedAll(polygon.points), polygon.winding};
                              },
                              [&](const EllipseShape& ellipse) -> Shape {
                                  return EllipseShape{Moved(ellipse.center), ellipse.radius};
                              },
                              [&](const SliceShape& slice) -> Shape {
                                  return SliceShape{{Moved(slice.whole.center), slice.whole.radius},
                                                    slice.from,
                                                    slice.sweep,
                                                    Moved(slice.apex)};
                              },
                          },
                          shape);
    }
    void PlayBlit(const BlitOp& blit) {
        const int width = blit.source.right - blit.source.left;
        const int height = blit.source.bottom - blit.source.top;
        auto* pixels = const_cast<std::uint32_t*>(blit.pixels->data()); // a source is only read
        m_to.Blit(Moved(blit.target), {pixels, width, height, width}, {0, 0, width, height}, blit.operation);
    }
    /// The landing rectangle; for an operation that was cut, what its own clip leaves of it.
    void ClipFor(const RecordedOp& op) {
        const bool narrow = !IsEmptyRect(op.clip) && !std::holds_alternative<TextOp>(op.verb);
        if (!narrow && !m_narrow)
            return;
        m_to.SetClip(narrow ? ClipBox(ToBox(Moved(op.clip)), m_landing) : m_landing);
        m_narrow = narrow;
    }

    Backend& m_to;
    RECT m_landing;
    std::int64_t m_dx;
    std::int64_t m_dy;
    bool m_isMoved;       ///< else points are played as they are, uncopied
    bool m_narrow = true; ///< the target's clip isn't `m_landing`
};

/// Calls play(Player), unless all of it would land beyond the surface.
template <class Play> void PlayAt(Backend& to, const RECT& source, POINT at, const RECT& whole, const Play& play) {
    const std::int64_t dx = std::int64_t{at.x} - source.left;
    const std::int64_t dy = std::int64_t{at.y} - source.top;
    const RECT landing = ClipBox({at.x, at.y, source.right + dx, source.bottom + dy}, whole);
    if (!IsEmptyRect(landing)) {
        Player player(to, landing, dx, dy);
        play(player);
    }
    to.SetClip(whole);
}

} // namespace

std::unique_ptr<Backend> MakeRecordingBackend(std::vector<RecordedOp>& ops, int width, int height, Masks masks,
                                              Covered covered) {
    return std::make_unique<RecordingBackend>(ops, width, height, masks, covered);
}

void DropMasks(std::vector<RecordedOp>& ops) {
    for (RecordedOp& op : ops)
        if (auto* text = std::get_if<TextOp>(&op.verb))
            text->layout = WithoutMasks(text->layout);
}

void Replay(std::span<const RecordedOp> ops, Backend& to, const RECT& source, POINT at, const RECT& whole) {
    PlayAt(to, source, at, whole, [&](Player& player) {
        for (const RecordedOp& op : ops)
            player.Play(op);
    });
}

void ReplayOnPixels(std::span<const RecordedOp> ops, Backend& to, const RECT& source, POINT at, const RECT& whole) {
    PlayAt(to, source, at, whole, [&](Player& player) {
        GroundFirst sorted = SortGroundFirst(ops);
        player.FillAll(std::move(sorted.ground));
        for (const RecordedOp* op : sorted.rest)
            player.Play(*op);
    });
}

} // namespace melkar
