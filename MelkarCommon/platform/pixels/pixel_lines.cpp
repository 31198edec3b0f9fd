#include <MelkarCommon/platform/pixels/pixel_lines.h>
#include <MelkarCommon/platform/pixels/pixel_runs.h>
#include <MelkarCommon/platform/pixels/pixel_spans.h>

#include <cmath>
#include <cstdlib>
#include <utility>

namespace melkar {

namespace {

using Wide = __int128; // products of coordinate differences, shifted into fixed point

/// Steps begin..end-1 of a line, counted from its first pixel.
struct Steps {
    std::int64_t begin;
    std::int64_t end;
};

/// The steps of a line of `count` pixels whose coordinate lies in low..high-1; it starts at `from` and goes up, or
/// down.
Steps VisibleSteps(std::int64_t from, std::int64_t count, bool up, std::int64_t low, std::int64_t high) {
    const Steps inside = up ? Steps{low - from, high - from} : Steps{from - high + 1, from - low + 1};
    return {std::max<std::int64_t>(inside.begin, 0), std::min(inside.end, count)};
}

/// Smallest integer not below `value`; `value` is far within the 64 bits.
std::int64_t CeilToStep(double value) {
    const auto whole = static_cast<std::int64_t>(value);
    return whole + (static_cast<double>(whole) < value ? 1 : 0);
}

/// Calls paint(Steps, Color) for each run of the pattern; `unit` is the length of a step.
template <class Paint> void ForEachRun(const Stroke& stroke, double unit, const Steps& steps, const Paint& paint) {
    if (!HasPattern(stroke)) {
        paint(steps, stroke.color);
        return;
    }
    const double period = stroke.on + stroke.off;
    const double phase = PhaseInPeriod(stroke, stroke.phase);
    const double stepsPerLength = 1 / unit;
    const double last = static_cast<double>(steps.end);
    std::int64_t at = steps.begin;
    const auto runUntil = [&](double length, bool visible, Color color) {
        const std::int64_t stop = CeilToStep(std::min((length - phase) * stepsPerLength, last));
        if (stop <= at)
            return;
        if (visible)
            paint(Steps{at, stop}, color);
        at = stop;
    };
    const double first = phase + static_cast<double>(at) * unit;
    for (double start = std::floor(first / period) * period; at < steps.end; start += period) {
        runUntil(start + stroke.on, true, stroke.color);
        runUntil(start + period, stroke.gaps, stroke.gapColor);
    }
}

/// The steps that may touch the clip, a few too many in the minor direction.
Steps StepsInClip(const Walk& walk, const Breadth& breadth, const RECT& clip) {
    const int low = walk.steep ? clip.left : clip.top;
    const int high = walk.steep ? clip.right : clip.bottom;
    const Steps along = walk.steep ? VisibleSteps(walk.major, walk.length, walk.up, clip.top, clip.bottom)
                                   : VisibleSteps(walk.major, walk.length, walk.up, clip.left, clip.right);
    const double stepsPerRow = static_cast<double>(walk.length) / static_cast<double>(walk.rise);
    const double margin = 2 + static_cast<double>(breadth.width) / (2 * static_cast<double>(kFixedOne));
    const double one = (static_cast<double>(low - walk.minor) - margin) * stepsPerRow;
    const double other = (static_cast<double>(high - walk.minor) + margin) * stepsPerRow;
    const double limit = static_cast<double>(walk.length);
    const auto first = static_cast<std::int64_t>(std::clamp(std::min(one, other), 0.0, limit));
    const auto stop = static_cast<std::int64_t>(std::clamp(std::max(one, other) + 1, 0.0, limit));
    return {std::max(along.begin, first), std::min(along.end, stop)};
}

/// Where the walk goes in memory, and both sides of the line across it in 32.32 fixed point, counted from the clip's
/// edge.
class Walker {
public:
    /// `first` is a step in the clip's reach, so that positions relative to the clip are small from there on.
    Walker(const PixelBuffer& buffer, const RECT& clip, const Walk& walk, const Breadth& breadth, std::int64_t first)
        : m_buffer(buffer), m_first(first), m_major(walk.up ? walk.major + first : walk.major - first),
          m_direction(walk.up ? 1 : -1), m_steep(walk.steep), m_low(walk.steep ? clip.left : clip.top),
          m_rows((walk.steep ? clip.right : clip.bottom) - m_low), m_width(breadth.width) {
        // Divisions of 128 bits take longer than drawing a short line; on any picture 64 will do.
        constexpr std::int64_t kShort = 1 << 15;
        const bool isShort = walk.length < kShort && std::abs(walk.minor - m_low) < kShort;
        isShort ? Start<std::int64_t>(walk) : Start<Wide>(walk);
        m_start += breadth.start;
    }

    void Draw(const Steps& steps, Color color, Neighbour neighbour) const {
        std::int64_t position = m_start + (steps.begin - m_first) * m_slope;
        for (std::int64_t i = steps.begin; i < steps.end; ++i, position += m_slope)
            DrawStep(OffsetOf(i), position, color, neighbour);
    }

private:
    /// Sets slope and first position, in whole numbers of type `Number`.
    template <class Number> void Start(const Walk& walk) {
        m_slope = Ratio(Number{walk.rise}, walk.length);
        const Number risen = m_first == 0 ? Number{0} : Number{kFixedOne} * m_first * walk.rise / walk.length;
        m_start = static_cast<std::int64_t>(Number{kFixedOne} * (walk.minor - m_low) + risen) + kHalfWeight;
    }

    static std::int64_t Ratio(std::int64_t part, std::int64_t whole) { return FixedRatio(part, whole); }
    static std::int64_t Ratio(Wide part, std::int64_t whole) {
        return static_cast<std::int64_t>(kFixedOne * part / whole);
    }

    std::ptrdiff_t AlongMajor() const { return m_steep ? m_buffer.stride : 1; }
    std::ptrdiff_t AlongMinor() const { return m_steep ? 1 : m_buffer.stride; }
    /// Of the pixel at the clip's edge beside step `i`.
    std::ptrdiff_t OffsetOf(std::int64_t i) const {
        return (m_major + m_direction * (i - m_first)) * AlongMajor() + m_low * AlongMinor();
    }

    /// One step: a part of the pixels at both sides, all of those between them.
    void DrawStep(std::ptrdiff_t offset, std::int64_t position, Color color, Neighbour neighbour) const {
        constexpr std::uint32_t kWhole = 256;
        const std::int64_t end = position + m_width;
        const std::uint32_t start = WeightOf(position);
        const std::uint32_t rest = WeightOf(end);
        Touch(offset, position >> 32, color, neighbour == Neighbour::Before ? kWhole : kWhole - start);
        const std::int64_t last = std::min(end >> 32, m_rows);
        for (std::int64_t row = std::max<std::int64_t>((position >> 32) + 1, 0); row < last; ++row)
            Touch(offset, row, color, kWhole);
        if (rest != 0)
            Touch(offset, end >> 32, color, neighbour == Neighbour::Behind ? kWhole : rest);
    }

    /// What a position leaves of its pixel, in 256ths.
    static std::uint32_t WeightOf(std::int64_t position) { return static_cast<std::uint32_t>(position >> 24) & 0xFFU; }

    void Touch(std::ptrdiff_t offset, std::int64_t row, Color color, std::uint32_t weight) const {
        if (row < 0 || row >= m_rows)
            return;
        std::uint32_t& pixel = m_buffer.pixels[offset + row * AlongMinor()];
        pixel = MixColor256(pixel, color, weight);
    }

    PixelBuffer m_buffer;
    std::int64_t m_first;
    std::int64_t m_major; ///< major coordinate at the first step
    std::int64_t m_direction;
    bool m_steep;
    std::int64_t m_low; ///< the clip's edge in the minor direction
    std::int64_t m_rows;
    std::int64_t m_width;
    std::int64_t m_slope = 0;
    std::int64_t m_start = 0;
};

void StrokeAxisLine(const PixelBuffer& buffer, const RECT& clip, POINT from, POINT to, const Stroke& stroke) {
    const bool level = from.y == to.y;
    const std::int64_t start = level ? from.x : from.y;
    const std::int64_t end = level ? to.x : to.y;
    const bool up = end > start;
    const int width = WholeWidth(stroke.width);
    const std::int64_t side = std::int64_t{level ? from.y : from.x} - width / 2;
    const Steps steps = level ? VisibleSteps(start, std::abs(end - start), up, clip.left, clip.right)
                              : VisibleSteps(start, std::abs(end - start), up, clip.top, clip.bottom);
    if (steps.begin >= steps.end)
        return;
    ForEachRun(stroke, 1, steps, [&](const Steps& run, Color color) {
        const std::int64_t low = up ? start + run.begin : start - run.end + 1;
        const std::int64_t high = low + (run.end - run.begin);
        const Box box = level ? Box{low, side, high, side + width} : Box{side, low, side + width, high};
        FillRows(buffer, ClipBox(box, clip), color);
    });
}

void StrokeSlopedLine(const PixelBuffer& buffer, const RECT& clip, POINT from, POINT to, const Stroke& stroke,
                      Neighbour neighbour) {
    const Walk walk = PlanWalk(from, to);
    const Breadth breadth = BreadthOf(walk, WholeWidth(stroke.width), MiddleOfSlope(stroke));
    const bool isInside = IsInside(walk, breadth, clip);
    if (isInside && !HasPattern(stroke))
        return DrawSteps(buffer, walk, breadth, stroke.color, neighbour);
    const Steps steps = isInside ? Steps{0, walk.length} : StepsInClip(walk, breadth, clip);
    if (steps.begin >= steps.end)
        return;
    const Walker walker(buffer, clip, walk, breadth, steps.begin);
    const auto draw = [&](const Steps& run, Color color) { walker.Draw(run, color, neighbour); };
    if (!HasPattern(stroke))
        return draw(steps, stroke.color);
    const auto length = static_cast<double>(walk.length);
    ForEachRun(stroke, std::hypot(length, static_cast<double>(walk.rise)) / length, steps, draw);
}

/// Never made part of what runs in lanes: it would be compiled once more there.
[[gnu::noinline]] void StrokeLine(const PixelBuffer& buffer, const RECT& clip, POINT from, POINT to,
                                  const Stroke& stroke, Neighbour neighbour) {
    if (from.x == to.x || from.y == to.y)
        StrokeAxisLine(buffer, clip, from, to, stroke);
    else
        StrokeSlopedLine(buffer, clip, from, to, stroke, neighbour);
}

} // namespace

Neighbour NeighbourOf(POINT formerFrom, POINT formerTo, POINT from, POINT to) {
    const std::int64_t dx = std::int64_t{from.x} - formerFrom.x;
    const std::int64_t dy = std::int64_t{from.y} - formerFrom.y;
    if (std::int64_t{to.x} - formerTo.x != dx || std::int64_t{to.y} - formerTo.y != dy)
        return Neighbour::None;
    const bool isSteep = PlanWalk(from, to).steep;
    const std::int64_t along = isSteep ? dy : dx;
    const std::int64_t across = isSteep ? dx : dy;
    if (along != 0 || (across != 1 && across != -1))
        return Neighbour::None;
    return across == 1 ? Neighbour::Before : Neighbour::Behind;
}

Corner CornerBetween(POINT before, POINT at, POINT next) {
    const Walk in = PlanWalk(before, at);
    const Walk out = PlanWalk(at, next);
    const bool goesOn = in.steep == out.steep && in.up == out.up;
    if (in.length == 0 || out.length == 0 || goesOn)
        return Corner::None;
    return in.rise == 0 && out.rise == 0 ? Corner::Square : Corner::Round;
}

void StrokeLines(const PixelBuffer& buffer, const RECT& clip, std::span<const POINT> points, const Stroke& stroke,
                 Neighbour neighbour) {
    const auto strokeLine = [&](POINT from, POINT to, const Stroke& own) {
        StrokeLine(buffer, clip, from, to, own, std::exchange(neighbour, Neighbour::None));
    };
    if (HasPattern(stroke))
        return ForEachSegment(points, stroke, strokeLine);
    RunInLanes([&](auto lanes) {
        const RunPainter<lanes> runs(buffer, clip, stroke);
        for (std::size_t i = stroke.drawn + 1; i < points.size(); ++i)
            if (!runs.Draw(points[i - 1], points[i], neighbour))
                strokeLine(points[i - 1], points[i], stroke);
            else
                neighbour = Neighbour::None;
    });
}

} // namespace melkar
