#include <MelkarCommon/support/platform/pixels/pixel_spans.h>
#include <MelkarCommon/support/platform/record/recording_parts.h>
#include <MelkarCommon/support/platform/seam/backend.h>

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

bool Covers(const RECT& a, const RECT& b) {
    return a.left <= b.left && a.top <= b.top && a.right >= b.right && a.bottom >= b.bottom;
}

class RecordingBackend final : public Backend {
public:
    RecordingBackend(std::vector<RecordedOp>& ops, int width, int height)
        : m_ops(ops), m_whole{0, 0, width, height}, m_clip(m_whole) {}

    void SetClip(const RECT& clip) override {
        m_clip = ClipBox(ToBox(clip), m_whole);
        m_narrow = !Covers(clip, m_whole);
    }

    void FillRect(const RECT& rect, Color color) override {
        RecordedOp op;
        op.verb = RecordedOp::Verb::FillRect;
        op.rect = m_narrow ? ClipBox(ToBox(rect), m_clip) : rect;
        op.color = color;
        if (!IsEmptyRect(op.rect))
            m_ops.push_back(std::move(op));
    }

    void FillShape(const Shape& shape, Color color) override {
        RecordedOp op;
        op.verb = RecordedOp::Verb::FillShape;
        op.shape = shape;
        op.color = color;
        Keep(std::move(op));
    }

    void StrokeShape(const Shape& shape, const Stroke& stroke) override {
        RecordedOp op;
        op.verb = RecordedOp::Verb::StrokeShape;
        op.shape = shape;
        op.stroke = stroke;
        Keep(std::move(op));
    }

    void StrokePolyline(std::span<const POINT> points, const Stroke& stroke) override {
        RecordedOp op;
        op.verb = RecordedOp::Verb::StrokePolyline;
        op.points.assign(points.begin(), points.end());
        op.stroke = stroke;
        Keep(std::move(op));
    }

    void PaintText(const std::shared_ptr<const TextLayout>& layout, std::size_t line, POINT at, int escapement,
                   Color color, const RECT& clip) override;
    void Blit(const RECT& target, const PixelBuffer& pixels, const RECT& source, DWORD operation) override;

private:
    /// Keeps an operation that is drawn whole, under the clip if that cuts it.
    void Keep(RecordedOp op) {
        if (m_narrow) {
            if (IsEmptyRect(ClipBox(BoxOf(op), m_clip)))
                return;
            op.clip = m_clip;
            if (!IsCut(op))
                op.clip = {};
        }
        m_ops.push_back(std::move(op));
    }

    std::vector<RecordedOp>& m_ops;
    RECT m_whole;
    RECT m_clip;
    bool m_narrow = false; ///< part of the surface lies outside of the clip
};

void RecordingBackend::PaintText(const std::shared_ptr<const TextLayout>& layout, std::size_t line, POINT at,
                                 int escapement, Color color, const RECT& clip) {
    if (layout == nullptr || line >= layout->lines.size())
        return;
    RecordedOp op;
    op.verb = RecordedOp::Verb::Text;
    op.layout = WithoutMasks(layout);
    op.line = line;
    op.from = at;
    op.escapement = escapement;
    op.color = color;
    op.clip = m_narrow ? ClipBox(ToBox(clip), m_clip) : clip; // even if it doesn't cut: ink may reach beyond the box
    const bool outside = m_narrow && IsEmptyRect(ClipBox(BoxOf(op), m_clip));
    if (!outside && !IsEmptyRect(op.clip))
        m_ops.push_back(std::move(op));
}

void RecordingBackend::Blit(const RECT& target, const PixelBuffer& pixels, const RECT& source, DWORD operation) {
    if (IsEmptyRect(target) || !CanBlit(pixels, source, operation))
        return;
    RecordedOp op;
    op.verb = RecordedOp::Verb::Blit;
    op.rect = target;
    op.source = source;
    op.operation = operation;
    if (m_narrow && SameSize(target, source)) {
        op.rect = ClipBox(ToBox(target), m_clip);
        if (IsEmptyRect(op.rect))
            return;
        op.source.left += op.rect.left - target.left;
        op.source.top += op.rect.top - target.top;
        op.source.right -= target.right - op.rect.right;
        op.source.bottom -= target.bottom - op.rect.bottom;
    }
    op.pixels = std::make_shared<std::vector<std::uint32_t>>();
    for (int y = op.source.top; y < op.source.bottom; ++y) {
        const std::uint32_t* row = PixelAt(pixels, 0, y);
        op.pixels->insert(op.pixels->end(), row + op.source.left, row + op.source.right);
    }
    Keep(std::move(op));
}

/// Plays operations somewhere else. What lands beyond an int ends at its edge, far off any surface.
class Player {
public:
    Player(Backend& to, const RECT& landing, std::int64_t dx, std::int64_t dy)
        : m_to(to), m_landing(landing), m_dx(dx), m_dy(dy) {}

    void Play(const RecordedOp& op) {
        ClipFor(op);
        switch (op.verb) {
        case RecordedOp::Verb::FillRect:
            return m_to.FillRect(Moved(op.rect), op.color);
        case RecordedOp::Verb::FillShape:
            return m_to.FillShape(Moved(op.shape), op.color);
        case RecordedOp::Verb::StrokeShape:
            return m_to.StrokeShape(Moved(op.shape), op.stroke);
        case RecordedOp::Verb::StrokePolyline:
            return m_to.StrokePolyline(Moved(op.points), op.stroke);
        case RecordedOp::Verb::Text:
            return m_to.PaintText(op.layout, op.line, Moved(op.from), op.escapement, op.color, Moved(op.clip));
        case RecordedOp::Verb::Blit:
            return PlayBlit(op);
        case RecordedOp::Verb::Copy:
            return; // tells where the operations behind it come from
        }
    }

private:
    RECT Moved(const RECT& r) const {
        return Saturated({r.left + m_dx, r.top + m_dy, r.right + m_dx, r.bottom + m_dy});
    }
    POINT Moved(POINT p) const {
        const RECT moved = Moved(RECT{p.x, p.y, p.x, p.y});
        return {moved.left, moved.top};
    }
    std::vector<POINT> Moved(std::vector<POINT> points) const {
        for (POINT& point : points)
            point = Moved(point);
        return points;
    }
    Shape Moved(const Shape& shape) const {
        Shape moved = shape;
        moved.points = Moved(shape.points);
        moved.center.x += static_cast<double>(m_dx);
        moved.center.y += static_cast<double>(m_dy);
        return moved;
    }
    void PlayBlit(const RecordedOp& op) {
        const int width = op.source.right - op.source.left;
        const int height = op.source.bottom - op.source.top;
        m_to.Blit(Moved(op.rect), {op.pixels->data(), width, height, width}, {0, 0, width, height}, op.operation);
    }
    /// The landing rectangle; for an operation that was cut, what its own clip leaves of it.
    void ClipFor(const RecordedOp& op) {
        const bool narrow = !IsEmptyRect(op.clip) && op.verb != RecordedOp::Verb::Text;
        if (!narrow && !m_narrow)
            return;
        m_to.SetClip(narrow ? ClipBox(ToBox(Moved(op.clip)), m_landing) : m_landing);
        m_narrow = narrow;
    }

    Backend& m_to;
    RECT m_landing;
    std::int64_t m_dx;
    std::int64_t m_dy;
    bool m_narrow = true; ///< the target's clip isn't `m_landing`
};

} // namespace

std::unique_ptr<Backend> MakeRecordingBackend(std::vector<RecordedOp>& ops, int width, int height) {
    return std::make_unique<RecordingBackend>(ops, width, height);
}

void Replay(const std::vector<RecordedOp>& ops, Backend& to, const RECT& source, int x, int y, const RECT& whole) {
    const std::int64_t dx = std::int64_t{x} - source.left;
    const std::int64_t dy = std::int64_t{y} - source.top;
    const RECT landing = ClipBox({x, y, source.right + dx, source.bottom + dy}, whole);
    if (!IsEmptyRect(landing)) {
        Player player(to, landing, dx, dy);
        for (const RecordedOp& op : ops)
            player.Play(op);
    }
    to.SetClip(whole);
}

} // namespace melkar
