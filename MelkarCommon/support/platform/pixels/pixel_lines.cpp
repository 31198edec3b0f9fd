#include <MelkarCommon/support/platform/pixels/pixel_lines.h>
#include <MelkarCommon/support/platform/pixels/pixel_spans.h>

#include <cmath>
#include <cstdlib>

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

/// A sloped line in terms of its longer ("major") and shorter ("minor") direction.
struct Walk {
    bool steep; ///< the major direction is down
    std::int64_t major;
    std::int64_t minor;
    std::int64_t length; ///< steps, never 0
    std::int64_t rise;   ///< minor distance, signed; not more than the length
    bool up;             ///< the major coordinate grows
};

Walk PlanWalk(POINT from, POINT to) {
    const std::int64_t dx = std::int64_t{to.x} - from.x;
    const std::int64_t dy = std::int64_t{to.y} - from.y;
    if (std::abs(dy) > std::abs(dx))
        return {true, from.y, from.x, std::abs(dy), dx, dy > 0};
    return {false, from.x, from.y, std::abs(dx), dy, dx > 0};
}

/// The steps that may touch the clip, a few too many in the minor direction.
Steps StepsInClip(const Walk& walk, const RECT& clip) {
    const int low = walk.steep ? clip.left : clip.top;
    const int high = walk.steep ? clip.right : clip.bottom;
    const Steps along = walk.steep ? VisibleSteps(walk.major, walk.length, walk.up, clip.top, clip.bottom)
                                   : VisibleSteps(walk.major, walk.length, walk.up, clip.left, clip.right);
    const double stepsPerRow = static_cast<double>(walk.length) / static_cast<double>(walk.rise);
    const double one = static_cast<double>(std::int64_t{low} - 2 - walk.minor) * stepsPerRow;
    const double other = static_cast<double>(std::int64_t{high} + 2 - walk.minor) * stepsPerRow;
    const double limit = static_cast<double>(walk.length);
    const auto first = static_cast<std::int64_t>(std::clamp(std::min(one, other), 0.0, limit));
    const auto stop = static_cast<std::int64_t>(std::clamp(std::max(one, other) + 1, 0.0, limit));
    return {std::max(along.begin, first), std::min(along.end, stop)};
}

/// Where the walk goes in memory, and the minor position in 32.32 fixed point, counted from the clip's edge.
class Walker {
public:
    /// `first` is a step in the clip's reach, so that positions relative to the clip are small from there on.
    Walker(const PixelBuffer& buffer, const RECT& clip, const Walk& walk, std::int64_t first)
        : m_buffer(buffer), m_first(first), m_major(walk.up ? walk.major + first : walk.major - first),
          m_direction(walk.up ? 1 : -1), m_steep(walk.steep), m_low(walk.steep ? clip.left : clip.top),
          m_rows((walk.steep ? clip.right : clip.bottom) - m_low) {
        // Divisions of 128 bits take longer than drawing a short line; on any picture 64 will do.
        constexpr std::int64_t kShort = 1 << 15;
        const bool isShort = walk.length < kShort && std::abs(walk.minor - m_low) < kShort;
        isShort ? Start<std::int64_t>(walk) : Start<Wide>(walk);
    }

    void Draw(const Steps& steps, Color color, Neighbour neighbour) const {
        constexpr std::uint32_t kWhole = 256;
        const std::ptrdiff_t alongMajor = m_steep ? m_buffer.stride : 1;
        const std::ptrdiff_t alongMinor = m_steep ? 1 : m_buffer.stride;
        const std::int64_t skipped = steps.begin - m_first;
        std::int64_t position = m_start + skipped * m_slope;
        std::ptrdiff_t offset = (m_major + m_direction * skipped) * alongMajor + m_low * alongMinor;
        for (std::int64_t i = steps.begin; i < steps.end; ++i) {
            const std::int64_t row = position >> 32;
            const auto weight = static_cast<std::uint32_t>(position >> 24) & 0xFFU;
            Touch(row, offset + row * alongMinor, color, neighbour == Neighbour::Before ? kWhole : kWhole - weight);
            if (weight != 0)
                Touch(row + 1, offset + (row + 1) * alongMinor, color,
                      neighbour == Neighbour::Behind ? kWhole : weight);
            position += m_slope;
            offset += m_direction * alongMajor;
        }
    }

private:
    /// Sets slope and first position, computed in `Number`.
    template <class Number> void Start(const Walk& walk) {
        constexpr Number kOne = Number{1} << 32;
        m_slope = static_cast<std::int64_t>(kOne * walk.rise / walk.length);
        const Number risen = kOne * m_first * walk.rise / walk.length;
        m_start = static_cast<std::int64_t>(kOne * (walk.minor - m_low) + risen) + kHalfWeight;
    }

    /// Added once, so that cutting a position to 256ths rounds it: a third of a pixel, three times, is a whole one.
    static constexpr std::int64_t kHalfWeight = std::int64_t{1} << 23;

    void Touch(std::int64_t row, std::ptrdiff_t offset, Color color, std::uint32_t weight) const {
        if (row < 0 || row >= m_rows)
            return;
        std::uint32_t& pixel = m_buffer.pixels[offset];
        pixel = MixColor256(pixel, color, weight);
    }

    PixelBuffer m_buffer;
    std::int64_t m_first;
    std::int64_t m_major; ///< major coordinate at the first step
    std::int64_t m_direction;
    bool m_steep;
    std::int64_t m_low; ///< the clip's edge in the minor direction
    std::int64_t m_rows;
    std::int64_t m_slope = 0;
    std::int64_t m_start = 0;
};

} // namespace

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

Neighbour NeighbourOf(POINT formerFrom, POINT formerTo, POINT from, POINT to) {
    const std::int64_t dx = std::int64_t{from.x} - formerFrom.x;
    const std::int64_t dy = std::int64_t{from.y} - formerFrom.y;
    const bool isShifted = std::int64_t{to.x} - formerTo.x == dx && std::int64_t{to.y} - formerTo.y == dy;
    const bool isSteep = PlanWalk(from, to).steep;
    const std::int64_t along = isSteep ? dy : dx;
    const std::int64_t across = isSteep ? dx : dy;
    if (!isShifted || along != 0 || (across != 1 && across != -1))
        return Neighbour::None;
    return across == 1 ? Neighbour::Before : Neighbour::Behind;
}

void StrokeThinLine(const PixelBuffer& buffer, const RECT& clip, POINT from, POINT to, const Stroke& stroke,
                    Neighbour neighbour) {
    const Walk walk = PlanWalk(from, to);
    if (walk.rise == 0)
        return;
    const Steps steps = StepsInClip(walk, clip);
    if (steps.begin >= steps.end)
        return;
    const auto length = static_cast<double>(walk.length);
    const double unit = std::hypot(length, static_cast<double>(walk.rise)) / length;
    const Walker walker(buffer, clip, walk, steps.begin);
    ForEachRun(stroke, unit, steps, [&](const Steps& run, Color color) { walker.Draw(run, color, neighbour); });
}

} // namespace melkar
