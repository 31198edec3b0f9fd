#include <MelkarCommon/platform/pixels/pixel_chains.h>
#include <MelkarCommon/platform/pixels/pixel_lanes.h>
#include <MelkarCommon/platform/pixels/pixel_spans.h>

#include <array>
#include <cmath>

namespace melkar {

namespace {

/// Tells where a chain is at the left and at the right side of each column left..right-1, which it reaches.
/// @param first a leftmost corner
/// @param step 1, or -1 to follow the polygon backwards
/// @param put called with the column, and both y
template <class Put>
void WalkChain(std::span<const POINT> polygon, std::size_t first, int step, int left, int right, const Put& put) {
    const std::size_t last = polygon.size() - 1;
    const auto next = [&](std::size_t i) { return step > 0 ? (i == last ? 0 : i + 1) : (i == 0 ? last : i - 1); };
    POINT start = polygon[first];
    for (int x = left; x < right;) {
        first = next(first);
        const POINT end = polygon[first];
        if (end.x > x) {
            const double startX = start.x;
            const double startY = start.y;
            const double slope = (end.y - startY) / (end.x - startX);
            const auto yAt = [&](int at) { return startY + (at - startX) * slope; };
            for (const int stop = std::min(end.x, right); x < stop; ++x)
                put(x, yAt(x), yAt(x + 1));
        }
        start = end;
    }
}

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

/// Puts the upper one of two chains, each with its y at the left and at the right side of the column, into its place.
/// @return false if they cross
bool SortChains(ChainColumn& column) {
    auto& [upper, lower] = column;
    const bool isSorted = upper.high <= lower.high && upper.low <= lower.low;
    if (!isSorted && (upper.high < lower.high || upper.low < lower.low))
        return false;
    if (!isSorted)
        std::swap(upper, lower);
    upper = {std::min(upper.high, upper.low), std::max(upper.high, upper.low)};
    lower = {std::min(lower.high, lower.low), std::max(lower.high, lower.low)};
    return true;
}

using Doubles = double __attribute__((vector_size(32))); ///< of four columns
using Numbers4 = Lanes<4>::Numbers;

constexpr int kFour = 4;

/// How much of a column lies between its edge and the row `y` below it, in pixels. `Number` is a double, or some.
template <class Number> void SetAreaAbove(Number& area, const Number& y, const Number& high, const Number& low) {
    const Number height = low > high ? low - high : Number{} + 1;
    const Number part = (y - high) * (y - high) / (2 * height);
    area = y <= high ? Number{} : (y >= low ? y - (high + low) / 2 : part);
}

/// How much of the pixel in row `y` lies below the edge, 0 to 1.
template <class Number> void SetPartBelow(Number& part, const Number& y, const Number& high, const Number& low) {
    Number above{};
    SetAreaAbove<Number>(part, y + 1, high, low);
    SetAreaAbove<Number>(above, y, high, low);
    part -= above;
}

double PartBelow(int y, const ChainEdge& edge) {
    double part = 0;
    SetPartBelow<double>(part, y, edge.high, edge.low);
    return part;
}

std::uint32_t ToWeight(double part) { return static_cast<std::uint32_t>(static_cast<int>(part * 256 + 0.5)); }

/// Rows top..bottom-1.
struct Rows {
    int top;
    int bottom;
};

/// The edges of one chain in as many columns as there are lanes. Of each column, the rows that the edge covers in part:
/// between the first and the last one it covers evenly more from row to row.
template <int kLanes> struct PartRows {
    using Numbers = typename Lanes<kLanes>::Numbers;

    Numbers top;
    Numbers bottom;
    Numbers first; ///< weights of these rows; none of the last row if it is the first one
    Numbers last;
    Numbers second; ///< that of the second row
    Numbers step;   ///< what it grows by from row to row
};

/// The same of four edges, without asking of each what kind it is: for most of them these guesses would be wrong.
class FourEdges {
public:
    /// @param next from an edge to that of the column beside it
    FourEdges(const ChainEdge* edges, std::ptrdiff_t next, const RECT& clip) {
        for (int i = 0; i < kFour; ++i, edges += next) {
            m_high[i] = edges->high;
            m_low[i] = edges->low;
        }
        Doubles end = m_low;
        Clamp(end, clip);
        m_top = m_high;
        Clamp(m_top, clip);
        Cut(m_top);
        m_bottom = end;
        Cut(m_bottom);
        m_bottom = m_bottom < end ? m_bottom + 1 : m_bottom;
    }

    /// @param side 1 for the part of a row that lies below the edge, -1 for what is above
    void Put(PartRows<kFour>& rows, int side) const {
        constexpr double kHalf = 1 << (kWeightBits - 1);
        const Doubles count = m_bottom - m_top;
        SetNumbers(rows.top, m_top);
        SetNumbers(rows.bottom, m_bottom);
        PutWeight(rows.first, m_top, count, 1, side);
        PutWeight(rows.last, m_bottom - 1, count, 2, side);
        const Doubles height = count >= 3 ? m_low - m_high : Doubles{} + 1;
        const Doubles step = count >= 3 ? side * double{kWholeWeight} / height : Doubles{};
        SetNumbers(rows.step, step);
        SetNumbers(rows.second, (m_top + 1.5 - m_high) * step + (side > 0 ? 0.0 : kWholeWeight) + kHalf);
    }

private:
    static void SetNumbers(Numbers4& numbers, const Doubles& values) {
        numbers = __builtin_convertvector(values, Numbers4);
    }
    static void Cut(Doubles& values) {
        Numbers4 whole;
        SetNumbers(whole, values);
        values = __builtin_convertvector(whole, Doubles);
    }
    static void Clamp(Doubles& y, const RECT& clip) {
        const Doubles top = Doubles{} + clip.top;
        const Doubles bottom = Doubles{} + clip.bottom;
        y = y < top ? top : y;
        y = y > bottom ? bottom : y;
    }

    /// Of the rows `y`, where the edge covers `least` of them or more.
    void PutWeight(Numbers4& weight, const Doubles& y, const Doubles& count, double least, int side) const {
        Doubles part{};
        SetPartBelow(part, y, m_high, m_low);
        part = (side > 0 ? part : 1 - part) * 256 + 0.5;
        SetNumbers(weight, count >= least ? part : Doubles{});
        weight <<= kWeightBits;
    }

    Doubles m_high{};
    Doubles m_low{};
    Doubles m_top;
    Doubles m_bottom;
};

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
        Edges lower{};
        const ChainEdge* all = nullptr; // what each edge of these is: mostly they are a baseline
        int i = 0;
        for (; i + kLanes <= count; i += kLanes) {
            if (all == nullptr || !HasLower(columns + i, *all)) {
                SetEdges(lower, &columns[i].lower, -1);
                all = HasLower(columns + i, columns[i].lower) ? &columns[i].lower : nullptr;
            }
            FillBlock(chains.left + i, columns + i, lower);
        }
        for (; i < count; ++i)
            FillColumn(chains.left + i, columns[i]);
    }

private:
    using Numbers = typename Lanes<kLanes>::Numbers;
    using Pixels = typename Lanes<kLanes>::Pixels;
    using Edges = PartRows<kLanes>;

    static bool HasLower(const ChainColumn* columns, const ChainEdge& edge) {
        return std::all_of(columns, columns + kLanes, [&](const ChainColumn& column) {
            return column.lower.high == edge.high && column.lower.low == edge.low;
        });
    }

    /// Those of one chain in columns side by side.
    void SetEdges(Edges& edges, const ChainEdge* first, int side) const {
        constexpr std::ptrdiff_t kNext = sizeof(ChainColumn) / sizeof(ChainEdge);
        if constexpr (kLanes == kFour) {
            FourEdges(first, kNext, m_clip).Put(edges, side);
        } else {
            PartRows<kFour> one;
            PartRows<kFour> other;
            FourEdges(first, kNext, m_clip).Put(one, side);
            FourEdges(first + kFour * kNext, kNext, m_clip).Put(other, side);
            Lanes<kLanes>::Join(edges.top, one.top, other.top);
            Lanes<kLanes>::Join(edges.bottom, one.bottom, other.bottom);
            Lanes<kLanes>::Join(edges.first, one.first, other.first);
            Lanes<kLanes>::Join(edges.last, one.last, other.last);
            Lanes<kLanes>::Join(edges.second, one.second, other.second);
            Lanes<kLanes>::Join(edges.step, one.step, other.step);
        }
    }

    void FillBlock(int x, const ChainColumn* columns, const Edges& lower) const {
        Edges upper;
        SetEdges(upper, &columns->upper, 1);
        Rows reach{m_clip.bottom, m_clip.top};
        Rows common{m_clip.top, m_clip.bottom};
        for (int lane = 0; lane < kLanes; ++lane) {
            reach = {std::min(reach.top, upper.top[lane]), std::max(reach.bottom, lower.bottom[lane])};
            common = {std::max(common.top, upper.bottom[lane]), std::min(common.bottom, lower.top[lane])};
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
        Numbers row = band.top - edges.top; // counted from the first one of the edge
        const Numbers last = edges.bottom - edges.top - 1;
        const Pixels step = Pixels(edges.step); // without a sign: beyond an edge, where nobody looks, they wrap
        Pixels weight = Pixels(edges.second) + step * Pixels(row - 1);
        for (int y = band.top; y < band.bottom; ++y, row += 1, weight += step) {
            const Numbers isBetween = (row > 0) & (row < last);
            const Numbers isWhole = kSide > 0 ? row > last : row < 0;
            m_mixer.MixRow(PixelAt(m_buffer, x, y),
                           (weight & Pixels(isBetween)) | (kWholeWeight & Pixels(isWhole)) |
                               Pixels((edges.first & (row == 0)) | (edges.last & (row == last))));
        }
    }

    void FillColumn(int x, const ChainColumn& column) const {
        PartRows<kFour> upper; // four times the same
        PartRows<kFour> lower;
        FourEdges(&column.upper, 0, m_clip).Put(upper, 1);
        FourEdges(&column.lower, 0, m_clip).Put(lower, -1);
        if (upper.bottom[0] > lower.top[0]) {
            for (int y = upper.top[0]; y < std::max(upper.bottom[0], lower.bottom[0]); ++y)
                Blend(x, y, ToWeight(PartBelow(y, column.upper) - PartBelow(y, column.lower)));
            return;
        }
        BlendPart(x, upper);
        for (int y = upper.bottom[0]; y < lower.top[0]; ++y)
            *PixelAt(m_buffer, x, y) = m_color;
        BlendPart(x, lower);
    }

    void BlendPart(int x, const PartRows<kFour>& part) const {
        const int top = part.top[0];
        const int bottom = part.bottom[0];
        const Weight between{part.second[0], part.step[0]};
        if (top < bottom)
            Blend(x, top, static_cast<std::uint32_t>(part.first[0]) >> kWeightBits);
        for (int y = top + 1, i = 0; y < bottom - 1; ++y, ++i)
            Blend(x, y, static_cast<std::uint32_t>(between.At(i)) >> kWeightBits);
        if (top < bottom - 1)
            Blend(x, bottom - 1, static_cast<std::uint32_t>(part.last[0]) >> kWeightBits);
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
    if (chains.left >= right)
        return chains;
    chains.columns.resize(static_cast<std::size_t>(right - chains.left));
    ChainColumn* const columns = chains.columns.data();
    WalkChain(polygon, extent->first, 1, chains.left, right, [&](int x, double one, double other) {
        columns[x - chains.left].upper = {one, other};
    });
    WalkChain(polygon, extent->first, -1, chains.left, right, [&](int x, double one, double other) {
        columns[x - chains.left].lower = {one, other};
    });
    for (ChainColumn& column : chains.columns)
        if (!SortChains(column))
            return std::nullopt;
    return chains;
}

void FillChains(const PixelBuffer& buffer, const RECT& clip, const ChainColumns& chains, Color color) {
    RunInLanes([&](auto lanes) { ChainFiller<lanes>(buffer, clip, color).Fill(chains); });
}

} // namespace melkar
