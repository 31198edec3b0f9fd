#include <MelkarCommon/platform/seam/area.h>
#include <MelkarCommon/platform/seam/box.h>
#include <MelkarCommon/platform/seam/pixel_grid.h>
#include <MelkarCommon/platform/seam/scaled_lines.h>
#include <MelkarCommon/platform/seam/scaling_backend.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace melkar {

namespace {

/// Pixels side by side, and where they go.
struct Span {
    int to;
    int from;
    int count;
};

/// A copy of whole pixels along one axis, of which the target may have one more or less than the source.
class Spans {
public:
    Spans(int to, int toEnd, int from, int fromEnd)
        : m_first{to, from, std::min(SubtractEdge(toEnd, to), SubtractEdge(fromEnd, from))},
          m_missing(SubtractEdge(toEnd, to) - SubtractEdge(fromEnd, from)) {}

    bool IsAsItIs() const { return m_first.count > 0 && m_missing >= -1 && m_missing <= 1; }
    std::vector<Span> Get() const {
        std::vector<Span> spans{m_first};
        if (m_missing == 1)
            spans.push_back({m_first.to + m_first.count, m_first.from + m_first.count - 1, 1});
        return spans;
    }

private:
    Span m_first;
    int m_missing; ///< pixels that the target has and the source doesn't
};

class ScalingBackend final : public Backend {
public:
    ScalingBackend(std::unique_ptr<Backend> to, double scale) : m_to(std::move(to)), m_grid(scale) {}

    void Flush() override { m_to->Flush(); }
    void SetClip(const RECT& clip) override { m_to->SetClip(m_grid.Edges(clip)); }
    void FillRect(const RECT& rect, Color color) override {
        m_lines.Forget();
        m_to->FillRect(m_grid.Edges(rect), color);
    }
    void FillFramed(const RECT& outer, int width, Color frame, std::optional<Color> ground) override {
        m_lines.Forget();
        m_to->FillFramed(m_grid.Edges(outer), m_grid.Width(width), frame, ground);
    }
    void FillShape(const Shape& shape, Color color) override {
        m_lines.Forget();
        m_to->FillShape(OnGrid(shape, 0), color);
    }
    void StrokeShape(const Shape& shape, const Stroke& stroke) override {
        m_lines.Forget();
        Stroke wide = stroke;
        wide.width = m_grid.Width(stroke.width);
        m_to->StrokeShape(OnGrid(shape, stroke.width), wide);
    }
    void StrokePolyline(std::span<const POINT> points, const Stroke& stroke) override;
    void PaintText(const std::shared_ptr<const TextLayout>& layout, std::size_t line, POINT at, int escapement,
                   Color color, const RECT& clip) override {
        m_lines.Forget();
        m_to->PaintText(layout, line, {m_grid.Edge(at.x), m_grid.Edge(at.y)}, escapement, color, m_grid.Edges(clip));
    }
    void Blit(const RECT& target, const PixelBuffer& pixels, const RECT& source, DWORD operation) override;

private:
    Shape OnGrid(const Shape& shape, double strokeWidth) const;
    EllipseShape OnGrid(const EllipseShape& ellipse, double strokeWidth) const;

    std::unique_ptr<Backend> m_to;
    PixelGrid m_grid;
    NeighbouringLines m_lines;
};

/// The outer edges land on whole pixels. @param strokeWidth of the outline, half of which lies outside; or 0
EllipseShape ScalingBackend::OnGrid(const EllipseShape& ellipse, double strokeWidth) const {
    const double half = strokeWidth / 2;
    const Area outer = AreaOf(EllipseShape{ellipse.center, {ellipse.radius.x + half, ellipse.radius.y + half}});
    const Area pixels{m_grid.Edge(outer.left) * 1.0, m_grid.Edge(outer.top) * 1.0, m_grid.Edge(outer.right) * 1.0,
                      m_grid.Edge(outer.bottom) * 1.0};
    const double rest = strokeWidth > 0 ? m_grid.Width(strokeWidth) / 2.0 : 0;
    const auto radius = [rest](double units, double diameter) {
        return units > 0 ? std::max(0.0, diameter / 2 - rest) : 0;
    };
    return {
        {(pixels.left + pixels.right) / 2, (pixels.top + pixels.bottom) / 2},
        {radius(ellipse.radius.x, pixels.right - pixels.left), radius(ellipse.radius.y, pixels.bottom - pixels.top)}};
}

Shape ScalingBackend::OnGrid(const Shape& shape, double strokeWidth) const {
    return std::visit(Overloaded{
                          [&](const PolygonShape& polygon) -> Shape {
                              PolygonShape pixels{{}, polygon.winding};
                              for (const POINT& point : polygon.points)
                                  pixels.points.push_back({m_grid.Edge(point.x), m_grid.Edge(point.y)});
                              return pixels;
                          },
                          [&](const EllipseShape& ellipse) -> Shape { return OnGrid(ellipse, strokeWidth); },
                          [&](const SliceShape& slice) -> Shape {
                              SliceShape pixels{OnGrid(slice.whole, strokeWidth), slice.from, slice.sweep};
                              pixels.apex = {pixels.whole.center.x + m_grid.Length(slice.apex.x - slice.whole.center.x),
                                             pixels.whole.center.y +
                                                 m_grid.Length(slice.apex.y - slice.whole.center.y)};
                              return pixels;
                          },
                      },
                      shape);
}

void ScalingBackend::StrokePolyline(std::span<const POINT> points, const Stroke& stroke) {
    for (const PixelPath& path : LinesOnGrid(points, stroke, m_grid))
        m_to->StrokePolyline(path.points, path.stroke);
    ForEachSegment(points, stroke, [&](POINT from, POINT to, const Stroke& own) {
        for (const PixelPath& seam : m_lines.Add(from, to, own, m_grid))
            m_to->StrokePolyline(seam.points, seam.stroke);
    });
}

/// Pixels of the same scale are copied as they are: rounded edges make the target a pixel smaller or larger than the
/// source at most. What it has no room for is left out; the last pixels stand for one that is missing.
void ScalingBackend::Blit(const RECT& target, const PixelBuffer& pixels, const RECT& source, DWORD operation) {
    m_lines.Forget();
    const RECT to = m_grid.Edges(target);
    const Spans columns(to.left, to.right, source.left, source.right);
    const Spans rows(to.top, to.bottom, source.top, source.bottom);
    if (pixels.scale != m_grid.Scale() || !columns.IsAsItIs() || !rows.IsAsItIs())
        return m_to->Blit(to, pixels, source, operation);
    for (const Span& y : rows.Get())
        for (const Span& x : columns.Get())
            m_to->Blit({x.to, y.to, x.to + x.count, y.to + y.count}, pixels,
                       {x.from, y.from, x.from + x.count, y.from + y.count}, operation);
}

} // namespace

std::unique_ptr<Backend> MakeScalingBackend(std::unique_ptr<Backend> to, double scale) {
    return std::make_unique<ScalingBackend>(std::move(to), scale);
}

} // namespace melkar
