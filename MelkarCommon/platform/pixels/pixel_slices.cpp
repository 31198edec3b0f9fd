#include <MelkarCommon/platform/pixels/pixel_blend.h>
#include <MelkarCommon/platform/pixels/pixel_slices.h>
#include <MelkarCommon/platform/seam/corners.h>
#include <MelkarCommon/platform/seam/slice.h>

#include <array>
#include <cmath>
#include <span>
#include <utility>

namespace melkar {

namespace {

constexpr int kMostColumns = 520; ///< of a disc, and some

/// Pixels from..to-1 of a row; those that aren't whole have a coverage each.
struct Part {
    int from;
    int to;
    bool isWhole;
};

/// The edge of a polygon, which goes downwards.
struct Edge {
    PointD upper;
    double bottom;
    double slope; ///< to the right, a row
    int winding;  ///< 1, or -1 for one that went upwards
    int firstRow;
    int endRow;

    double At(double y) const { return upper.x + (y - upper.y) * slope; }
};

/// What two radials cut out of a plane, row by row. A polygon of few edges: each leaves in the pixels that it passes
/// what it adds to the winding from there on, and a sum along the row is the coverage.
class Wedge {
public:
    /// In a disc whose mask has its corner at `origin`.
    Wedge(const SliceShape& slice, PointD origin, const DiscMask& mask)
        : m_origin(origin), m_width(mask.width), m_height(mask.height) {
        AddEdges(slice);
    }

    /// Rows from the first one of which something may be covered to behind the last one.
    int FirstRow() const { return m_firstRow; }
    int EndRow() const { return m_endRow; }

    /// What is covered of row y, from left to right; until the next row.
    std::span<const Part> Row(int y) {
        m_parts = m_passages = 0;
        m_start = 0;
        for (int i = 0; i < m_edges; ++i)
            if (const Edge& edge = m_edge[static_cast<std::size_t>(i)]; y >= edge.firstRow && y < edge.endRow)
                Pass(edge, y);
        AddUp();
        return {m_part.data(), static_cast<std::size_t>(m_parts)};
    }
    /// Of the pixels of parts that aren't whole.
    const std::uint8_t* Coverage() const { return m_coverage.data(); }

private:
    static constexpr int kMostEdges = 12;

    /// From the apex along one radial, round outside of the disc, and back beyond the other one by the reach below the
    /// next slice, which begins at the apex.
    void AddEdges(const SliceShape& slice) {
        constexpr double kFar = 8; // radii: beyond the pixels of any rim, between two corners as well
        const auto beyond = [](PointD from, PointD rim) -> PointD {
            return {from.x + kFar * (rim.x - from.x), from.y + kFar * (rim.y - from.y)};
        };
        const int steps = 1 + static_cast<int>(slice.sweep * 6 / kTurn);
        PointD last = slice.apex;
        const auto goTo = [&](PointD next) { Add(std::exchange(last, next), next); };
        for (int i = 0; i <= steps; ++i)
            goTo(beyond(slice.apex, RimPoint(slice.whole, slice.from + slice.sweep * i / steps)));
        const auto reach = ReachOf(slice, {});
        goTo(beyond(reach[3], reach[2]));
        goTo(reach[3]);
        goTo(slice.apex);
    }

    void Add(PointD from, PointD to) {
        const PointD& upper = from.y < to.y ? from : to;
        const PointD& lower = from.y < to.y ? to : from;
        const PointD start{upper.x - m_origin.x, upper.y - m_origin.y};
        const PointD end{lower.x - m_origin.x, lower.y - m_origin.y};
        if (start.y == end.y || start.y >= m_height || end.y <= 0 || std::min(start.x, end.x) >= m_width)
            return;
        const int firstRow = std::max(0, static_cast<int>(start.y));
        const int endRow = static_cast<int>(std::min(std::ceil(end.y), 1.0 * m_height));
        const double slope = (end.x - start.x) / (end.y - start.y);
        const int winding = from.y < to.y ? 1 : -1;
        m_edge[static_cast<std::size_t>(m_edges++)] = {start, end.y, slope, winding, firstRow, endRow};
        m_firstRow = std::min(m_firstRow, firstRow);
        m_endRow = std::max(m_endRow, endRow);
    }

    /// Leaves in a row what an edge adds there.
    void Pass(const Edge& edge, int y) {
        const double top = std::max<double>(edge.upper.y, y);
        const double bottom = std::min<double>(edge.bottom, y + 1);
        const double one = edge.At(top);
        const double other = edge.At(bottom);
        const double left = std::min(one, other);
        const double right = std::max(one, other);
        const double height = edge.winding * (bottom - top);
        if (right <= 0)
            m_start += height;
        if (right <= 0 || left >= m_width)
            return;
        const double perColumn = right > left ? height / (right - left) : 0;
        const double first = std::max(left, 0.0);
        const double last = std::min<double>(right, m_width);
        m_start += perColumn * (first - left); // before the first column
        const int to = static_cast<int>(last);
        for (int x = static_cast<int>(first); x <= to; ++x) {
            const double in = std::max<double>(first, x);
            const double out = std::min<double>(last, x + 1);
            const double added = right > left ? perColumn * (out - in) : height;
            const double later = added * ((in + out) / 2 - x); // the edge covers what is to its right
            m_added[static_cast<std::size_t>(x)] += added - later;
            m_added[static_cast<std::size_t>(x) + 1] += later;
        }
        AddPassage({static_cast<int>(first), to + 2, false});
    }

    /// From left to right.
    void AddPassage(const Part& passage) {
        auto at = static_cast<std::size_t>(m_passages++);
        for (; at > 0 && m_passage[at - 1].from > passage.from; --at)
            m_passage[at] = m_passage[at - 1];
        m_passage[at] = passage;
    }

    /// From what was left in a row to its parts.
    void AddUp() {
        double winding = m_start;
        int x = 0;
        for (int i = 0; i < m_passages; ++i) {
            const Part& passage = m_passage[static_cast<std::size_t>(i)];
            AddEven(x, passage.from, winding);
            const int from = std::max(x, passage.from);
            for (x = from; x < passage.to; ++x) {
                winding += std::exchange(m_added[static_cast<std::size_t>(x)], 0);
                m_coverage[static_cast<std::size_t>(x)] = CoverageOf(winding);
            }
            AddPart({from, std::min(x, m_width), false});
        }
        AddEven(x, m_width, winding);
    }

    static std::uint8_t CoverageOf(double winding) {
        return static_cast<std::uint8_t>(std::min(std::abs(winding), 1.0) * 255 + 0.5);
    }

    void AddEven(int from, int to, double winding) {
        const std::uint8_t coverage = CoverageOf(winding);
        if (coverage == 0 || from >= to)
            return;
        if (coverage != 255)
            std::fill(m_coverage.begin() + from, m_coverage.begin() + to, coverage);
        AddPart({from, to, coverage == 255});
    }

    void AddPart(const Part& part) {
        if (part.from < part.to)
            m_part[static_cast<std::size_t>(m_parts++)] = part;
    }

    PointD m_origin;
    int m_width;
    int m_height;
    int m_firstRow = kMostColumns;
    int m_endRow = 0;
    int m_edges = 0;
    int m_passages = 0;
    int m_parts = 0;
    double m_start = 0; ///< the winding before the first column
    std::array<Edge, kMostEdges> m_edge;
    std::array<Part, kMostEdges> m_passage;
    std::array<Part, 2 * kMostEdges + 1> m_part;
    std::array<double, kMostColumns> m_added{};
    std::array<std::uint8_t, kMostColumns> m_coverage;
};

/// Paints columns left..right-1 of one row of a disc.
template <int kLanes> class RowPainter {
public:
    /// @param pixels the one below the mask's first column
    RowPainter(const DiscMask& mask, int y, std::uint32_t* pixels, int left, int right, Color color)
        : m_pixels(pixels), m_left(left), m_right(right), m_color(color) {
        const DiscRow* const row = &mask.rows[static_cast<std::size_t>(y)];
        m_spans = std::span(mask.spans).subspan(row[0].span, row[1].span - row[0].span);
        m_rims = std::span(mask.rims).subspan(row[0].rim, row[1].rim - row[0].rim);
    }

    void Fill(const Part& part) const {
        for (const DiscSpan& span : m_spans) {
            const auto [from, to] = Common(part, span.x, span.count);
            if (from < to)
                FillSpan<kLanes>(m_pixels + from, static_cast<std::size_t>(to - from), m_color);
        }
        for (const DiscRim& rim : m_rims) {
            const auto [from, to] = Common(part, rim.x, kRim);
            if (to - from == kRim)
                BlendLanes<kRim>(m_pixels + rim.x, ReadCoverages<kRim>(rim.coverage.data()), m_color);
            else
                BlendRim(rim, from, to, [](int) { return 255U; });
        }
    }

    /// Through a coverage of its own for each column.
    void Blend(const Part& part, const std::uint8_t* coverage) const {
        for (const DiscSpan& span : m_spans) {
            const auto [from, to] = Common(part, span.x, span.count);
            if (from < to)
                BlendRow<kLanes>(m_pixels + from, coverage + from, static_cast<std::size_t>(to - from), m_color);
        }
        for (const DiscRim& rim : m_rims) {
            const auto [from, to] = Common(part, rim.x, kRim);
            BlendRim(rim, from, to, [coverage](int x) -> std::uint32_t { return coverage[x]; });
        }
    }

private:
    static constexpr int kRim = 4;

    struct Columns {
        int from;
        int to;
    };

    Columns Common(const Part& part, int x, int count) const {
        return {std::max(std::max(part.from, m_left), x), std::min(std::min(part.to, m_right), x + count)};
    }

    template <class CoverageAt>
    void BlendRim(const DiscRim& rim, int from, int to, const CoverageAt& coverageAt) const {
        for (int x = from; x < to; ++x)
            BlendPixel(m_pixels[x], m_color,
                       (coverageAt(x) * rim.coverage[static_cast<std::size_t>(x - rim.x)] + 127U) / 255U);
    }

    std::span<const DiscSpan> m_spans;
    std::span<const DiscRim> m_rims;
    std::uint32_t* m_pixels;
    int m_left;
    int m_right;
    Color m_color;
};

} // namespace

bool IsCutFromDisc(const SliceShape& slice) {
    constexpr double kFarthestApex = 1.0 / 8; // radii: half a pixel of four
    const auto& [center, radius] = slice.whole;
    return HasArea(slice) && std::abs(slice.apex.x - center.x) <= radius.x * kFarthestApex &&
           std::abs(slice.apex.y - center.y) <= radius.y * kFarthestApex;
}

void PaintSlice(const PixelBuffer& buffer, const RECT& clip, const PlacedDisc& disc, const SliceShape& slice,
                Color color) {
    const RECT visible = ClipBox({disc.x, disc.y, disc.x + disc.mask->width, disc.y + disc.mask->height}, clip);
    if (IsEmptyRect(visible))
        return;
    const auto left = static_cast<int>(disc.x); // a disc that shows is near
    const auto top = static_cast<int>(disc.y);
    Wedge wedge(slice, {double{1} * left, double{1} * top}, *disc.mask);
    const int first = std::max(visible.top, top + wedge.FirstRow());
    const int end = std::min(visible.bottom, top + wedge.EndRow());
    RunInLanes([&](auto lanes) {
        for (int y = first; y < end; ++y) {
            const RowPainter<lanes> row(*disc.mask, y - top, PixelAt(buffer, 0, y) + left, visible.left - left,
                                        visible.right - left, color);
            for (const Part& part : wedge.Row(y - top))
                part.isWhole ? row.Fill(part) : row.Blend(part, wedge.Coverage());
        }
    });
}

} // namespace melkar
