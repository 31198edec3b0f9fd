#pragma once

#include <MelkarCommon/platform/pixels/pixel_lanes.h>
#include <MelkarCommon/platform/pixels/pixel_walk.h>
#include <MelkarCommon/platform/seam/pixel_buffer.h>
#include <MelkarCommon/platform/seam/stroke.h>

/// @file
/// Internal. The lines that curves are made of, all within the clip: along an axis; in a column or to the next, at
/// once; or so close to an axis that several steps touch the same rows (of a steep line: columns), run by run.

namespace melkar {

/// A solid line within the clip step by step: no pixel looks where it is, and what the steps need can't be among the
/// pixels that they write.
inline void DrawSteps(const PixelBuffer& buffer, const Walk& walk, const Breadth& breadth, Color color,
                      Neighbour neighbour = Neighbour::None) {
    constexpr std::uint32_t kWhole = 256;
    const auto weightOf = [](std::int64_t position) { return static_cast<std::uint32_t>(position >> 24) & 0xFFU; };
    const std::int64_t slope = FixedRatio(walk.rise, walk.length);
    const std::ptrdiff_t minor = walk.steep ? 1 : buffer.stride;
    const std::ptrdiff_t major = walk.steep ? buffer.stride : 1;
    const std::ptrdiff_t next = walk.up ? major : -major;
    std::uint32_t* pixel = buffer.pixels + walk.major * major + walk.minor * minor;
    std::int64_t position = kHalfWeight + breadth.start;
    for (std::int64_t left = walk.length; left > 0; --left, position += slope, pixel += next) {
        const std::int64_t end = position + breadth.width;
        std::uint32_t* row = pixel + (position >> 32) * minor;
        *row = MixColor256(*row, color, neighbour == Neighbour::Before ? kWhole : kWhole - weightOf(position));
        for (std::int64_t more = (end >> 32) - (position >> 32); more > 1; --more)
            *(row += minor) = color;
        if (const std::uint32_t rest = weightOf(end); rest != 0)
            row[minor] = MixColor256(row[minor], color, neighbour == Neighbour::Behind ? kWhole : rest);
    }
}

template <int kLanes> class RunPainter {
public:
    /// Solid lines of up to 4 pixels' width. `clip` lies within the buffer.
    RunPainter(const PixelBuffer& buffer, const RECT& clip, const Stroke& stroke)
        : m_buffer(buffer), m_clip(clip), m_width(WholeWidth(stroke.width)), m_middle(MiddleOfSlope(stroke)),
          m_color(stroke.color), m_mixer(stroke.color) {}

    /// @return false, with nothing drawn, for any other line.
    bool Draw(POINT from, POINT to, Neighbour neighbour) const {
        if (m_width == 1 && neighbour == Neighbour::None && DrawToNextColumn(from, to))
            return true;
        const Walk walk = PlanWalk(from, to);
        if (walk.rise == 0)
            return DrawAlongAxis(walk);
        const Breadth breadth = BreadthOf(walk, m_width, m_middle);
        if (!IsInside(walk, breadth, m_clip))
            return false;
        if (4 * std::abs(walk.rise) < walk.length && neighbour != Neighbour::Behind)
            DrawRuns(walk, breadth, neighbour);
        else
            DrawSteps(m_buffer, walk, breadth, m_color, neighbour);
        return true;
    }

private:
    /// A line of some steps within a column or to the next, in two pixels a step and as many steps at once as there are
    /// lanes for. A curve through each column's value is made of these, and to guess wrong which way each of them goes,
    /// and where it ends, takes longer than to draw it.
    bool DrawToNextColumn(POINT from, POINT to) const {
        const std::int64_t width = std::int64_t{to.x} - from.x;
        const std::int64_t count = std::max(std::abs(std::int64_t{to.y} - from.y), width);
        const bool comes = IsWithin(from); // no branches: they, too, would be guessed
        const bool goes = IsWithin(to);
        const bool isNear = (width == 0) | (width == 1);
        if (!(isNear & (count <= kLongestRun) & comes & goes))
            return false;
        const std::ptrdiff_t next = to.y > from.y ? m_buffer.stride : -std::ptrdiff_t{m_buffer.stride};
        const Weight weight{
            FineWeight(kHalfWeight),
            static_cast<std::int32_t>(FixedRatio(width, std::max<std::int64_t>(count, 1)) >> kFineBits)};
        m_mixer.MixFew(PixelAt(m_buffer, from.x, from.y), next, static_cast<int>(count), {RestOf(weight), weight});
        return true;
    }

    /// Steps that touch the same rows: the first and the last of these in part, those between them whole.
    struct Run {
        std::uint32_t* pixel; ///< of the first step, in the first row
        int direction;        ///< in which the major coordinate goes
        int count;
        int rows; ///< from the first one to the last
        Weight first;
        Weight last;
    };

    void DrawRuns(const Walk& walk, const Breadth& breadth, Neighbour neighbour) const {
        const std::int64_t slope = FixedRatio(walk.rise, walk.length);
        const std::ptrdiff_t minorStride = walk.steep ? 1 : m_buffer.stride;
        const std::ptrdiff_t majorStride = walk.steep ? m_buffer.stride : 1;
        const int direction = walk.up ? 1 : -1;
        const auto step = static_cast<std::int32_t>(slope >> kFineBits);
        std::uint32_t* pixel = m_buffer.pixels + walk.major * majorStride;
        std::int64_t position = kFixedOne * walk.minor + kHalfWeight + breadth.start;
        for (std::int64_t left = walk.length; left > 0;) {
            const std::int64_t end = position + breadth.width;
            const int count = StepsInRows(position, end, slope, static_cast<int>(std::min(left, kLongestRun)));
            const Run run{pixel + (position >> 32) * minorStride,
                          direction,
                          count,
                          static_cast<int>((end >> 32) - (position >> 32)),
                          neighbour == Neighbour::Before ? kAll : RestOf({FineWeight(position), step}),
                          {FineWeight(end), step}};
            walk.steep ? DrawSteep(run) : DrawLevel(run);
            left -= count;
            position += count * slope;
            pixel += majorStride * count * direction;
        }
    }

    static constexpr Weight kAll{kWholeWeight, 0};
    static constexpr int kFineBits = 24 - kWeightBits;
    /// Beyond that many steps a weight of 16 more bits might no longer be that of the position.
    static constexpr std::int64_t kLongestRun = 64;

    /// What a position leaves of its pixel.
    static std::int32_t FineWeight(std::int64_t position) {
        return static_cast<std::int32_t>((position >> kFineBits) & 0xFFFFFF);
    }

    /// How many steps it takes, one at least and `most`, until one of two positions comes to another row. Slopes are
    /// small here, so parts of a pixel are divided in 32 bits.
    static int StepsInRows(std::int64_t one, std::int64_t other, std::int64_t slope, int most) {
        const std::int64_t way = (most - 1) * slope;
        if ((one + way) >> 32 == one >> 32 && (other + way) >> 32 == other >> 32)
            return most;
        const auto part = static_cast<std::uint32_t>(one);
        const auto otherPart = static_cast<std::uint32_t>(other);
        const std::uint32_t room = slope > 0 ? ~std::max(part, otherPart) : std::min(part, otherPart);
        return static_cast<int>(room / static_cast<std::uint32_t>(std::abs(slope))) + 1;
    }

    /// The rows of the walk are columns here, and the pixels of a step stand side by side. Four of them reach across a
    /// line of width 2; a wider one takes four from both its sides.
    void DrawSteep(const Run& run) const {
        constexpr Weight kNone{0, 0};
        if (run.rows == 1)
            return MixColumns(run, 0, std::array{run.first, run.last});
        if (run.rows == 2)
            return MixColumns(run, 0, std::array{run.first, kAll, run.last, kNone});
        if (run.rows == 3)
            return MixColumns(run, 0, std::array{run.first, kAll, kAll, run.last});
        MixColumns(run, 0, std::array{run.first, kAll, kAll, kAll});
        MixColumns(run, run.rows - 3, std::array{kAll, kAll, kAll, run.last});
    }

    template <std::size_t kColumns>
    void MixColumns(const Run& run, int column, const std::array<Weight, kColumns>& weights) const {
        m_mixer.MixSteps(run.pixel + column, std::ptrdiff_t{run.direction} * m_buffer.stride, run.count, weights);
    }

    void DrawLevel(const Run& run) const {
        const int back = run.direction > 0 ? 0 : run.count - 1; // to the leftmost step
        const auto fromLeft = [&](const Weight& weight) -> Weight {
            return run.direction > 0 ? weight : Weight{weight.At(back), -weight.step};
        };
        std::uint32_t* row = run.pixel - back;
        const auto count = static_cast<std::size_t>(run.count);
        if (run.first.start == kAll.start && run.first.step == 0)
            FillSpan<kLanes>(row, count, m_color);
        else
            m_mixer.MixSpan(row, run.count, fromLeft(run.first));
        for (int i = 1; i < run.rows; ++i)
            FillSpan<kLanes>(row += m_buffer.stride, count, m_color);
        m_mixer.MixSpan(row + m_buffer.stride, run.count, fromLeft(run.last));
    }

    /// With room for a pixel at either side.
    bool IsWithin(POINT p) const {
        return (p.x > m_clip.left) & (p.x < m_clip.right - 1) & (p.y >= m_clip.top) & (p.y < m_clip.bottom);
    }

    /// @return false, with nothing drawn, if it lies not all within the clip.
    bool DrawAlongAxis(const Walk& walk) const {
        const std::int64_t start = walk.up ? walk.major : walk.major - walk.length + 1;
        const std::int64_t side = walk.minor - m_width / 2;
        const Box box = walk.steep ? Box{side, start, side + m_width, start + walk.length}
                                   : Box{start, side, start + walk.length, side + m_width};
        if (box.left < m_clip.left || box.right > m_clip.right || box.top < m_clip.top || box.bottom > m_clip.bottom)
            return false;
        for (std::int64_t y = box.top; y < box.bottom; ++y)
            std::fill_n(m_buffer.pixels + y * m_buffer.stride + box.left, box.right - box.left, m_color);
        return true;
    }

    PixelBuffer m_buffer;
    RECT m_clip;
    int m_width;
    double m_middle;
    Color m_color;
    LaneMixer<kLanes> m_mixer;
};

} // namespace melkar
