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
        : m_polygon(polygon), m_index(first), m_isBackwards(step < 0), m_end(polygon[first]) {}

    /// Goes on to column `x`, which is not behind the last one and left of the polygon's right end.
    void GoTo(int x) {
        if (x < m_end.x)
            return;
        POINT start = m_end;
        for (; m_end.x <= x; m_end = m_polygon[m_index]) {
            start = m_end;
            GoOn();
        }
        m_x = start.x;
        m_y = start.y;
        m_slope = (m_end.y - m_y) / (m_end.x - m_x);
    }
    double At(int x) const { return m_y + (x - m_x) * m_slope; }

private:
    void GoOn() {
        if (m_isBackwards)
            m_index = (m_index == 0 ? m_polygon.size() : m_index) - 1;
        else
            m_index = m_index + 1 == m_polygon.size() ? 0 : m_index + 1;
    }

    std::span<const POINT> m_polygon;
    std::size_t m_index;
    bool m_isBackwards;
    POINT m_end;
    double m_x = 0; ///< where the side begins that ends there
    double m_y = 0;
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

bool IsSame(const ChainEdge& one, const ChainEdge& other) { return one.high == other.high && one.low == other.low; }

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
    std::uint32_t first; ///< weights of these; none of the last row if it is the first one
    std::uint32_t last;
    Weight between; ///< from the second row on
};

/// The weight of a row's part that lies below the edge (`side` 1) or above it (-1).
std::uint32_t WeightOf(int y, const ChainEdge& edge, int side) {
    const double part = side > 0 ? PartBelow(y, edge) : 1 - PartBelow(y, edge);
    return ToWeight(part) << kWeightBits;
}

PartRows PartRowsOf(const ChainEdge& edge, const RECT& clip, int side) {
    PartRows part{RowsOf(edge, clip), 0, 0, {0, 0}};
    const auto [top, bottom] = part.rows;
    if (top < bottom)
        part.first = WeightOf(top, edge, side);
    if (top < bottom - 1)
        part.last = WeightOf(bottom - 1, edge, side);
    if (top < bottom - 2) {
        const double step = side * double{kWholeWeight} / (edge.low - edge.high);
        constexpr double kHalf = 1 << (kWeightBits - 1);
        const double second = (top + 1.5 - edge.high) * step + (side > 0 ? 0 : kWholeWeight) + kHalf;
        part.between = {static_cast<std::int32_t>(second), static_cast<std::int32_t>(step)};
    }
    return part;
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
        Edges upper;
        Edges lower;
        Rows reach{m_clip.bottom, m_clip.top};
        Rows common{m_clip.top, m_clip.bottom};
        for (int i = 0; i < kLanes; ++i) {
            const auto lane = static_cast<std::size_t>(i);
            upper[lane] = PartRowsOf(columns[i].upper, m_clip, 1);
            const bool goesOn = i > 0 && IsSame(columns[i].lower, columns[i - 1].lower); // mostly it is a baseline
            lower[lane] = goesOn ? lower[lane - 1] : PartRowsOf(columns[i].lower, m_clip, -1);
            reach = {std::min(reach.top, upper[lane].rows.top), std::max(reach.bottom, lower[lane].rows.bottom)};
            common = {std::max(common.top, upper[lane].rows.bottom), std::min(common.bottom, lower[lane].rows.top)};
        }
        if (common.top > common.bottom) {
            for (int i = 0; i < kLanes; ++i)
                FillColumn(x + i, columns[i]);
            return;
        }
        MixBand<1>(x, {reach.top, common.top}, upper);
        for (int y = common.top; y < common.bottom; ++y)
            std::fill_n(PixelAt(m_buffer, x, y), kLanes, m_color);
        MixBand<-1>(x, {common.bottom, reach.bottom}, lower);
    }

    /// Rows with edges of one chain alone: the columns' parts, and what lies below them (`kSide` 1) or above them (-1).
    template <int kSide> void MixBand(int x, const Rows& band, const Edges& edges) const {
        Numbers row{}; // counted from the first one of the edge
        Numbers last{};
        Pixels first{};
        Pixels end{};
        Pixels weight{}; // without a sign: beyond an edge, where nobody looks, they wrap
        Pixels step{};
        for (int lane = 0; lane < kLanes; ++lane) {
            const PartRows& part = edges[static_cast<std::size_t>(lane)];
            row[lane] = band.top - part.rows.top;
            last[lane] = part.rows.bottom - part.rows.top - 1;
            first[lane] = part.first;
            end[lane] = part.last;
            weight[lane] = static_cast<std::uint32_t>(part.between.start);
            step[lane] = static_cast<std::uint32_t>(part.between.step);
        }
        weight += step * Pixels(row - 1);
        for (int y = band.top; y < band.bottom; ++y, row += 1, weight += step) {
            const Numbers isBetween = (row > 0) & (row < last);
            const Numbers isWhole = kSide > 0 ? row > last : row < 0;
            m_mixer.MixRow(PixelAt(m_buffer, x, y), (weight & Pixels(isBetween)) | (kWholeWeight & Pixels(isWhole)) |
                                                        (first & Pixels(row == 0)) | (end & Pixels(row == last)));
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
        BlendPart(x, upper);
        for (int y = upper.rows.bottom; y < lower.rows.top; ++y)
            *PixelAt(m_buffer, x, y) = m_color;
        BlendPart(x, lower);
    }

    void BlendPart(int x, const PartRows& part) const {
        const auto [top, bottom] = part.rows;
        if (top < bottom)
            Blend(x, top, part.first >> kWeightBits);
        for (int y = top + 1, i = 0; y < bottom - 1; ++y, ++i)
            Blend(x, y, static_cast<std::uint32_t>(part.between.At(i)) >> kWeightBits);
        if (top < bottom - 1)
            Blend(x, bottom - 1, part.last >> kWeightBits);
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
