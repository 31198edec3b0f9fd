#include <MelkarCommon/platform/seam/scaled_lines.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>

namespace melkar {

namespace {

using Axis = int POINT::*;

/// A stroke in pixels, and where its lines lie.
class Pen {
public:
    /// @param slopes whether the path begins with a sloped line: of an even width such a one runs through the middle of
    /// its pixel, an axis-parallel one along its edge
    Pen(const Stroke& stroke, bool slopes, const PixelGrid& grid) : m_grid(grid) {
        const int units = WholeWidth(stroke.width);
        const bool isThroughMiddle = slopes || units % 2 != 0;
        m_first = (isThroughMiddle ? 0.5 : 0) - units / 2.0;
        m_stroke = stroke;
        m_stroke.width = grid.Width(units);
        m_stroke.on = grid.Length(stroke.on);
        m_stroke.off = grid.Length(stroke.off);
        m_stroke.phase = grid.Length(stroke.phase);
        m_stroke.betweenPixels = true;
    }

    const Stroke& Pixels() const { return m_stroke; }
    int Width() const { return static_cast<int>(m_stroke.width); }
    /// The first row that a line at this place covers; of a steep one, the first column.
    int FirstRow(int units) const { return m_grid.Edge(units + m_first); }
    POINT At(POINT p) const { return {Through(FirstRow(p.x), Width()), Through(FirstRow(p.y), Width())}; }
    /// Where a line of `width` names the pixel whose first row is `first`.
    static int Through(int first, int width) { return AddEdge(first, width / 2); }

    /// An end of a line that goes from there to `other`, or comes from it. The pixel at which an axis-parallel one
    /// starts is its own, that at which it ends isn't, whichever way it goes.
    POINT EndAt(POINT end, POINT other, bool isStart) const {
        POINT pixel = At(end);
        if (IsSloped(end, other) || IsSamePoint(end, other))
            return pixel;
        const Axis along = end.y == other.y ? &POINT::x : &POINT::y;
        const bool grows = (end.*along < other.*along) == isStart;
        pixel.*along = grows ? m_grid.Edge(end.*along) : SubtractEdge(m_grid.Edge(end.*along + 1.0), 1);
        return pixel;
    }

private:
    const PixelGrid& m_grid;
    double m_first; ///< of the rows of a line, from its place
    Stroke m_stroke;
};

/// The first point of the range that isn't `point`; `point` if there is none.
template <class Iterator> POINT FirstOther(Iterator first, Iterator last, POINT point) {
    const auto other = std::find_if(first, last, [point](POINT p) { return !IsSamePoint(p, point); });
    return other != last ? *other : point;
}

PixelPath PathOnGrid(std::span<const POINT> points, const Stroke& stroke, const PixelGrid& grid) {
    const POINT first = points.front();
    const POINT last = points.back();
    const POINT second = FirstOther(points.begin(), points.end(), first);
    const POINT lastButOne = FirstOther(points.rbegin(), points.rend(), last);
    const Pen pen(stroke, IsSloped(first, second), grid);
    PixelPath path{{}, pen.Pixels()};
    for (const POINT& point : points)
        path.points.push_back(pen.At(point));
    if (!IsSamePoint(first, last)) {
        path.points.front() = pen.EndAt(first, second, true);
        path.points.back() = pen.EndAt(last, lastButOne, false);
    }
    return path;
}

/// The direction across a line.
Axis AcrossOf(POINT from, POINT to) {
    const auto length = [](int a, int b) { return std::abs(std::int64_t{b} - a); };
    return length(from.x, to.x) >= length(from.y, to.y) ? &POINT::y : &POINT::x;
}

} // namespace

std::vector<PixelPath> LinesOnGrid(std::span<const POINT> points, const Stroke& stroke, const PixelGrid& grid) {
    if (points.size() < 2)
        return {};
    if (!HasPattern(stroke))
        return {PathOnGrid(points, stroke, grid)};
    std::vector<PixelPath> paths;
    ForEachSegment(points, stroke, [&](POINT from, POINT to, const Stroke& own) {
        paths.push_back(PathOnGrid(std::array{from, to}, own, grid));
    });
    return paths;
}

std::vector<PixelPath> NeighbouringLines::Add(POINT from, POINT to, const Stroke& stroke, const PixelGrid& grid) {
    constexpr std::size_t kMostKept = 64; // as many pieces may a thick line have that is drawn row by row
    if (WholeWidth(stroke.width) > 1)
        return {};
    const Axis across = AcrossOf(from, to);
    const Axis along = across == &POINT::x ? &POINT::y : &POINT::x;
    const Pen pen(stroke, IsSloped(from, to), grid);
    std::vector<PixelPath> seams;
    for (const Line& line : m_lines) {
        const std::int64_t step = std::int64_t{from.*across} - line.from.*across;
        const bool isBeside = std::abs(step) == 1 && std::int64_t{to.*across} - line.to.*across == step &&
                              from.*along == line.from.*along && to.*along == line.to.*along && line.stroke == stroke;
        if (!isBeside)
            continue;
        // From the last row of the one to the first row of the other.
        PixelPath seam = PathOnGrid(std::array{from, to}, stroke, grid);
        const POINT& upperFrom = step > 0 ? line.from : from;
        const POINT& upperTo = step > 0 ? line.to : to;
        const int starts[] = {AddEdge(pen.FirstRow(upperFrom.*across), pen.Width() - 1),
                              AddEdge(pen.FirstRow(upperTo.*across), pen.Width() - 1)};
        const int ends[] = {pen.FirstRow(upperFrom.*across + 1), pen.FirstRow(upperTo.*across + 1)};
        const int width = 1 + std::max({1, SubtractEdge(ends[0], starts[0]), SubtractEdge(ends[1], starts[1])});
        seam.stroke.width = width;
        seam.points[0].*across = Pen::Through(starts[0], width);
        seam.points[1].*across = Pen::Through(starts[1], width);
        seams.push_back(std::move(seam));
    }
    m_lines.push_back({from, to, stroke});
    if (m_lines.size() > kMostKept)
        m_lines.pop_front();
    return seams;
}

} // namespace melkar
