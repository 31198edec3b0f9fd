#include <MelkarCommon/support/platform/pixels/pixel_chains.h>
#include <MelkarCommon/support/platform/pixels/pixel_pairs.h>
#include <MelkarCommon/support/platform/pixels/pixel_spans.h>

#include <array>
#include <cmath>

namespace melkar {

namespace {

/// Walks one chain from left to right and tells where it is at the sides of each column.
class ChainWalk {
public:
    /// From corner `first` on; `step` is 1, or -1 to follow the polygon backwards.
    ChainWalk(std::span<const POINT> polygon, std::size_t first, int step)
        : m_polygon(polygon), m_index(first), m_step(step), m_start(polygon[first]), m_end(m_start) {}

    /// Goes on to column `x`, which is not behind the last one and left of the polygon's right end.
    void GoTo(int x) {
        if (x < m_end.x)
            return;
        while (m_end.x <= x) {
            m_start = m_end;
            m_index = (m_index + m_polygon.size() + static_cast<std::size_t>(m_step)) % m_polygon.size();
            m_end = m_polygon[m_index];
        }
        m_slope = (double{1} * m_end.y - m_start.y) / (double{1} * m_end.x - m_start.x);
    }
    double At(int x) const { return m_start.y + (double{1} * x - m_start.x) * m_slope; }

private:
    std::span<const POINT> m_polygon;
    std::size_t m_index;
    int m_step;
    POINT m_start;
    POINT m_end;
    double m_slope = 0;
};

/// Where a polygon begins and how wide it is.
struct Extent {
    std::size_t first; ///< a leftmost corner
    int left;
    int right;
};

/// Nothing if the polygon doesn't go to the right once and back once.
std::optional<Extent> ExtentOf(std::span<const POINT> polygon) {
    const auto isLeftOf = [](const POINT& a, const POINT& b) { return a.x < b.x; };
    const auto leftmost = std::min_element(polygon.begin(), polygon.end(), isLeftOf);
    Extent extent{static_cast<std::size_t>(leftmost - polygon.begin()), leftmost->x, leftmost->x};
    bool goesBack = false;
    for (std::size_t i = extent.first + 1, end = extent.first + polygon.size(); i < end; ++i) {
        const int x = polygon[i < polygon.size() ? i : i - polygon.size()].x;
        const int before = polygon[i - 1 < polygon.size() ? i - 1 : i - 1 - polygon.size()].x;
        if (x > before && goesBack)
            return std::nullopt;
        goesBack = goesBack || x < before;
        extent.right = std::max(extent.right, x);
    }
    return extent;
}

ChainEdge EdgeBetween(double one, double other) { return {std::min(one, other), std::max(one, other)}; }

/// How much of the column lies between the edge and the row `y` below it, in pixels.
double AreaAbove(double y, const ChainEdge& edge) {
    if (y <= edge.high)
        return 0;
    if (y >= edge.low)
        return y - (edge.high + edge.low) / 2;
    return (y - edge.high) * (y - edge.high) / (2 * (edge.low - edge.high));
}

/// How much of the pixel in row `y` lies below the edge, 0 to 1.
double PartBelow(int y, const ChainEdge& edge) { return AreaAbove(y + 1.0, edge) - AreaAbove(y, edge); }

/// How much of it lies below the edge (`side` 1) or above it (-1).
double PartOf(int y, const ChainEdge& edge, int side) { return side > 0 ? PartBelow(y, edge) : 1 - PartBelow(y, edge); }

std::uint32_t ToWeight(double part) { return static_cast<std::uint32_t>(static_cast<int>(part * 256 + 0.5)); }

/// Rows top..bottom-1.
struct Rows {
    int top;
    int bottom;
};

/// The rows that an edge covers in part, cut to those of `clip`.
Rows RowsOf(const ChainEdge& edge, const RECT& clip) {
    const double low = std::clamp<double>(edge.high, clip.top, clip.bottom);
    const double high = std::clamp<double>(edge.low, clip.top, clip.bottom);
    const int top = static_cast<int>(low);
    const int bottom = static_cast<int>(high);
    return {top, bottom < high ? bottom + 1 : bottom};
}

/// Paints one column after the other; rows that stay solid across a block of columns are written as spans.
class ChainFiller {
public:
    ChainFiller(const PixelBuffer& buffer, const RECT& clip, Color color)
        : m_buffer(buffer), m_clip(clip), m_color(color), m_mixer(color) {}

    void Fill(const ChainColumns& chains) {
        const int count = static_cast<int>(chains.columns.size());
        for (int i = 0; i < count; i += kBlock)
            FillBlock(chains.left + i, &chains.columns[static_cast<std::size_t>(i)], std::min(kBlock, count - i));
    }

private:
    static constexpr int kBlock = 8; ///< columns; wider blocks have fewer rows in common

    void FillBlock(int x, const ChainColumn* columns, int count) {
        std::array<Rows, kBlock> solid{};
        Rows common{m_clip.top, m_clip.bottom};
        for (int i = 0; i < count; ++i) {
            solid[i] = FillEdges(x + i, columns[i]);
            common = {std::max(common.top, solid[i].top), std::min(common.bottom, solid[i].bottom)};
        }
        if (common.top >= common.bottom)
            common = {m_clip.bottom, m_clip.bottom};
        for (int y = common.top; y < common.bottom; ++y)
            std::fill_n(PixelAt(m_buffer, x, y), count, m_color);
        for (int i = 0; i < count; ++i) {
            FillColumn(x + i, {solid[i].top, std::min(solid[i].bottom, common.top)});
            FillColumn(x + i, {std::max(solid[i].top, common.bottom), solid[i].bottom});
        }
    }

    /// Paints what the edges of a column cover in part. @return the rows between them.
    Rows FillEdges(int x, const ChainColumn& column) {
        const Rows upper = RowsOf(column.upper, m_clip);
        const Rows lower = RowsOf(column.lower, m_clip);
        if (upper.bottom > lower.top) {
            for (int y = upper.top; y < std::max(upper.bottom, lower.bottom); ++y)
                Blend(x, y, PartBelow(y, column.upper) - PartBelow(y, column.lower));
            return {m_clip.bottom, m_clip.bottom};
        }
        FillEdge(x, upper, column.upper, 1);
        FillEdge(x, lower, column.lower, -1);
        return {upper.bottom, lower.top};
    }

    /// What lies below an edge (`side` 1) or above it (-1). Between its ends an edge covers evenly more from row to
    /// row.
    void FillEdge(int x, const Rows& rows, const ChainEdge& edge, int side) {
        if (rows.top >= rows.bottom)
            return;
        constexpr double kOne = 256 << kWeightBits;
        constexpr double kHalf = 1 << (kWeightBits - 1);
        const double step = rows.bottom - rows.top > 2 ? side * kOne / (edge.low - edge.high) : 0;
        const double first = (rows.top + 1.5 - edge.high) * step + (side > 0 ? 0 : kOne) + kHalf;
        Blend(x, rows.top, PartOf(rows.top, edge, side));
        if (rows.bottom - rows.top > 1)
            Blend(x, rows.bottom - 1, PartOf(rows.bottom - 1, edge, side));
        m_mixer.MixEvenly(PixelAt(m_buffer, x, rows.top + 1), m_buffer.stride, rows.bottom - rows.top - 2,
                          static_cast<std::int32_t>(first), static_cast<std::int32_t>(step));
    }

    void Blend(int x, int y, double part) {
        std::uint32_t* const pixel = PixelAt(m_buffer, x, y);
        *pixel = MixColor256(*pixel, m_color, ToWeight(part));
    }

    void FillColumn(int x, const Rows& rows) {
        std::uint32_t* pixel = PixelAt(m_buffer, x, rows.top);
        for (int y = rows.top; y < rows.bottom; ++y, pixel += m_buffer.stride)
            *pixel = m_color;
    }

    PixelBuffer m_buffer;
    RECT m_clip;
    Color m_color;
    PairMixer m_mixer;
};

} // namespace

std::optional<ChainColumns> FindChains(std::span<const POINT> polygon, const RECT& clip) {
    const std::optional<Extent> extent = ExtentOf(polygon);
    if (!extent)
        return std::nullopt;
    ChainColumns chains{std::max(extent->left, clip.left), {}};
    const int right = std::min(extent->right, clip.right);
    ChainWalk one(polygon, extent->first, 1);
    ChainWalk other(polygon, extent->first, -1);
    chains.columns.reserve(static_cast<std::size_t>(std::max(right - chains.left, 0)));
    for (int x = chains.left; x < right; ++x) {
        one.GoTo(x);
        other.GoTo(x);
        const double ones[] = {one.At(x), one.At(x + 1)};
        const double others[] = {other.At(x), other.At(x + 1)};
        const bool oneIsUpper = ones[0] <= others[0] && ones[1] <= others[1];
        if (!oneIsUpper && (ones[0] < others[0] || ones[1] < others[1]))
            return std::nullopt;
        const ChainEdge first = EdgeBetween(ones[0], ones[1]);
        const ChainEdge second = EdgeBetween(others[0], others[1]);
        chains.columns.push_back(oneIsUpper ? ChainColumn{first, second} : ChainColumn{second, first});
    }
    return chains;
}

void FillChains(const PixelBuffer& buffer, const RECT& clip, const ChainColumns& chains, Color color) {
    ChainFiller(buffer, clip, color).Fill(chains);
}

} // namespace melkar
