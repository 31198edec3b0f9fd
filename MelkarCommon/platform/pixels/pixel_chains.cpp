#include <MelkarCommon/platform/pixels/pixel_chains.h>
#include <MelkarCommon/platform/pixels/pixel_lanes.h>
#include <MelkarCommon/platform/pixels/pixel_spans.h>

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

/// An edge within one column: the rows that it covers in part. Between the first and the last one it covers evenly more
/// from row to row.
struct PartRows {
    Rows rows;
    Weight between; ///< from the second row on
};

/// Of what lies below an edge (`side` 1) or above it (-1).
PartRows PartRowsOf(const ChainEdge& edge, const RECT& clip, int side) {
    const Rows rows = RowsOf(edge, clip);
    if (rows.bottom - rows.top <= 2)
        return {rows, {0, 0}};
    const double step = side * double{kWholeWeight} / (edge.low - edge.high);
    constexpr double kHalf = 1 << (kWeightBits - 1);
    const double second = (rows.top + 1.5 - edge.high) * step + (side > 0 ? 0 : kWholeWeight) + kHalf;
    return {rows, {static_cast<std::int32_t>(second), static_cast<std::int32_t>(step)}};
}

/// Paints block after block of neighbouring columns, row by row, so that each line of the cache is written once.
///
///      ._  _      upper band: of each column nothing, a part or all
///     _| \/ |
///     ########    common rows: solid across the block
///     \__/\  |    lower band
///          \_|
template <int kLanes> class ChainFiller {
public:
    ChainFiller(const PixelBuffer& buffer, const RECT& clip, Color color)
        : m_buffer(buffer), m_clip(clip), m_color(color), m_mixer(color) {}

    void Fill(const ChainColumns& chains) const {
        const int count = static_cast<int>(chains.columns.size());
        const ChainColumn* const columns = chains.columns.data();
        int i = 0;
        for (; i + kLanes <= count; i += kLanes)
            FillBlock(chains.left + i, columns + i);
        for (; i < count; ++i)
            FillColumn(chains.left + i, columns[i]);
    }

private:
    using Numbers = typename Lanes<kLanes>::Numbers;
    using Pixels = typename Lanes<kLanes>::Pixels;
    using Edges = std::array<PartRows, kLanes>;

    void FillBlock(int x, const ChainColumn* columns) const {
        Edges upper{};
        Edges lower{};
        Rows reach{m_clip.bottom, m_clip.top};
        Rows common{m_clip.top, m_clip.bottom};
        for (int i = 0; i < kLanes; ++i) {
            const auto lane = static_cast<std::size_t>(i);
            upper[lane] = PartRowsOf(columns[i].upper, m_clip, 1);
            lower[lane] = PartRowsOf(columns[i].lower, m_clip, -1);
            reach = {std::min(reach.top, upper[lane].rows.top), std::max(reach.bottom, lower[lane].rows.bottom)};
            common = {std::max(common.top, upper[lane].rows.bottom), std::min(common.bottom, lower[lane].rows.top)};
        }
        if (common.top > common.bottom) {
            for (int i = 0; i < kLanes; ++i)
                FillColumn(x + i, columns[i]);
            return;
        }
        for (int i = 0; i < kLanes; ++i) {
            const auto lane = static_cast<std::size_t>(i);
            BlendEnds(x + i, upper[lane].rows, columns[i].upper, 1);
            BlendEnds(x + i, lower[lane].rows, columns[i].lower, -1);
        }
        MixBand<1>(x, {reach.top, common.top}, upper);
        for (int y = common.top; y < common.bottom; ++y)
            std::fill_n(PixelAt(m_buffer, x, y), kLanes, m_color);
        MixBand<-1>(x, {common.bottom, reach.bottom}, lower);
    }

    /// Rows with edges of one chain alone, but for the ends of these: the columns' parts, and what lies below them
    /// (`kSide` 1) or above them (-1).
    template <int kSide> void MixBand(int x, const Rows& band, const Edges& edges) const {
        Numbers row{}; // counted from the first one between the ends
        Numbers last{};
        Pixels weight{}; // without a sign: beyond an edge, where nobody looks, they wrap
        Pixels step{};
        for (int lane = 0; lane < kLanes; ++lane) {
            const auto& [rows, between] = edges[static_cast<std::size_t>(lane)];
            row[lane] = band.top - rows.top - 1;
            last[lane] = rows.bottom - rows.top - 2;
            weight[lane] = static_cast<std::uint32_t>(between.start);
            step[lane] = static_cast<std::uint32_t>(between.step);
        }
        weight += step * Pixels(row);
        for (int y = band.top; y < band.bottom; ++y, row += 1, weight += step) {
            const Numbers isBetween = (row >= 0) & (row < last);
            const Numbers isWhole = kSide > 0 ? row > last : row < -1;
            m_mixer.MixRow(PixelAt(m_buffer, x, y), (weight & Pixels(isBetween)) | (kWholeWeight & Pixels(isWhole)));
        }
    }

    void FillColumn(int x, const ChainColumn& column) const {
        const PartRows upper = PartRowsOf(column.upper, m_clip, 1);
        const PartRows lower = PartRowsOf(column.lower, m_clip, -1);
        if (upper.rows.bottom > lower.rows.top) {
            for (int y = upper.rows.top; y < std::max(upper.rows.bottom, lower.rows.bottom); ++y)
                Blend(x, y, ToWeight(PartBelow(y, column.upper) - PartBelow(y, column.lower)));
            return;
        }
        BlendEnds(x, upper.rows, column.upper, 1);
        BlendBetween(x, upper);
        for (int y = upper.rows.bottom; y < lower.rows.top; ++y)
            *PixelAt(m_buffer, x, y) = m_color;
        BlendEnds(x, lower.rows, column.lower, -1);
        BlendBetween(x, lower);
    }

    void BlendEnds(int x, const Rows& rows, const ChainEdge& edge, int side) const {
        if (rows.top < rows.bottom)
            Blend(x, rows.top, ToWeight(PartOf(rows.top, edge, side)));
        if (rows.top < rows.bottom - 1)
            Blend(x, rows.bottom - 1, ToWeight(PartOf(rows.bottom - 1, edge, side)));
    }

    void BlendBetween(int x, const PartRows& edge) const {
        for (int y = edge.rows.top + 1, i = 0; y < edge.rows.bottom - 1; ++y, ++i)
            Blend(x, y, static_cast<std::uint32_t>(edge.between.At(i)) >> kWeightBits);
    }

    void Blend(int x, int y, std::uint32_t weight) const {
        std::uint32_t* const pixel = PixelAt(m_buffer, x, y);
        *pixel = MixColor256(*pixel, m_color, weight);
    }

    PixelBuffer m_buffer;
    RECT m_clip;
    Color m_color;
    LaneMixer<kLanes> m_mixer;
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
    RunInLanes([&](auto lanes) { ChainFiller<lanes>(buffer, clip, color).Fill(chains); });
}

} // namespace melkar
