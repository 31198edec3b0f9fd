#pragma once

#include <MelkarCommon/platform/pixels/pixel_spans.h>

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

/// @file
/// Internal. Pixels mixed several at once, side by side in the lanes of a register. Steep lines, which take most of the
/// time of a picture with a curve in it, go through pixels that lie a row apart: no compiler puts these together by
/// itself.

namespace melkar {

/// Weights in 65536ths of a 256th: 0 to 2^24.
constexpr int kWeightBits = 16;
constexpr std::int32_t kWholeWeight = 256 << kWeightBits;

/// How much of a colour a pixel takes: `start`, and `step` more at each step of a line.
struct Weight {
    std::int32_t start;
    std::int32_t step;

    constexpr std::int32_t At(int i) const { return start + i * step; }
    constexpr Weight From(int i) const { return {At(i), step}; }
};

/// What a weight leaves; the fractions of both are cut off.
constexpr Weight RestOf(const Weight& weight) {
    return {kWholeWeight + (1 << kWeightBits) - 1 - weight.start, -weight.step};
}

// A pixel is a number, whatever the machine; but lanes are cut into halves, and put together from pairs, by their order
// in memory.
static_assert(std::endian::native == std::endian::little);

/// Vectors of some lanes. Compilers take no computed sizes and shuffles.
template <int kLanes> struct Lanes;

template <> struct Lanes<4> {
    using Pixels = std::uint32_t __attribute__((vector_size(16)));
    using Numbers = std::int32_t __attribute__((vector_size(16)));
    using Pairs = std::uint64_t __attribute__((vector_size(16)));
    using Channels = std::uint16_t __attribute__((vector_size(16)));

    using Bytes = std::uint8_t __attribute__((vector_size(16)));

    /// The upper half of each pixel in both halves.
    static void DoubleUpper(Channels& halves) {
        halves = __builtin_shufflevector(halves, halves, 1, 1, 3, 3, 5, 5, 7, 7);
    }
    /// Each byte in the lane of its place, four times.
    static void Spread(Pixels& lanes, std::uint32_t bytes) {
        const Bytes all = Bytes(Pixels{bytes});
        const Channels twice =
            Channels(__builtin_shufflevector(all, all, 0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 5, 5, 6, 6, 7, 7));
        lanes = Pixels(__builtin_shufflevector(twice, twice, 0, 0, 1, 1, 2, 2, 3, 3));
    }
};

template <> struct Lanes<8> {
    using Pixels = std::uint32_t __attribute__((vector_size(32)));
    using Numbers = std::int32_t __attribute__((vector_size(32)));
    using Pairs = std::uint64_t __attribute__((vector_size(32)));
    using Channels = std::uint16_t __attribute__((vector_size(32)));
    using Bytes = std::uint8_t __attribute__((vector_size(32)));

    static void DoubleUpper(Channels& halves) {
        halves = __builtin_shufflevector(halves, halves, 1, 1, 3, 3, 5, 5, 7, 7, 9, 9, 11, 11, 13, 13, 15, 15);
    }
    static void Spread(Pixels& lanes, std::uint64_t bytes) {
        const Bytes all = Bytes(Pairs{} + bytes); // so that none has to cross from half to half
        lanes = Pixels(__builtin_shufflevector(all, all, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3, 20, 20, 20, 20,
                                               21, 21, 21, 21, 22, 22, 22, 22, 23, 23, 23, 23));
    }
    template <class Whole, class Half> static void Join(Whole& whole, const Half& one, const Half& other) {
        whole = __builtin_shufflevector(one, other, 0, 1, 2, 3, 4, 5, 6, 7);
    }
};

/// A colour that is mixed with many pixels, each as `MixColor256` does it. Vectors travel by reference: by value, those
/// of eight lanes would need a machine that has them.
template <int kLanes> class LaneMixer {
public:
    explicit LaneMixer(Color color)
        : m_color(color), m_redBlue(Channels(Pixels{} + (color & kRedBlue))),
          m_green(Channels(Pixels{} + ((color & kGreen) >> 8U))) {}

    /// A pixel for each lane, side by side, and the weights of these.
    void MixRow(std::uint32_t* pixel, const typename Lanes<kLanes>::Pixels& weights) const {
        Pixels pixels{};
        std::memcpy(&pixels, pixel, sizeof pixels);
        Mix(pixels, weights);
        std::memcpy(pixel, &pixels, sizeof pixels);
    }

    /// Steps of two pixels, each `stride` behind the last, without a branch for what is left at the end: the
    /// last one is taken in place of those that would follow.
    void MixFew(std::uint32_t* pixel, std::ptrdiff_t stride, int count, const std::array<Weight, 2>& weights) const {
        constexpr int kSteps = kLanes / 2;
        Pixels taken{};
        Pixels growth{};
        SpreadWeights(taken, growth, weights);
        for (; count > 0; count -= kSteps, pixel += kSteps * stride, taken += growth) {
            std::array<std::uint32_t*, kSteps> places{pixel};
            for (int i = 1; i < kSteps; ++i)
                places[static_cast<std::size_t>(i)] =
                    places[static_cast<std::size_t>(i) - 1] + (i < count ? stride : 0);
            MixPairs(places, taken);
        }
    }

    /// `count` steps, each `stride` behind the last; at each `kWidth` pixels side by side with a weight of their own,
    /// which stays within 0 and 2^24.
    template <std::size_t kWidth> void MixSteps(std::uint32_t* pixel, std::ptrdiff_t stride, int count,
                                                const std::array<Weight, kWidth>& weights) const {
        constexpr int kSteps = kLanes / static_cast<int>(kWidth);
        Pixels taken{};
        Pixels growth{};
        SpreadWeights(taken, growth, weights);
        int i = 0;
        for (; i + kSteps <= count; i += kSteps, pixel += kSteps * stride, taken += growth) {
            MixOnce<kWidth>(pixel, stride, taken);
        }
        MixRest(pixel, stride, i, count - i, weights);
    }

    /// `count` pixels side by side, each of them a step.
    void MixSpan(std::uint32_t* pixel, int count, const Weight& weight) const {
        std::array<Weight, kLanes> weights{};
        for (int lane = 0; lane < kLanes; ++lane)
            weights[static_cast<std::size_t>(lane)] = {weight.At(lane), weight.step * kLanes};
        MixSteps(pixel, kLanes, count / kLanes, weights);
        for (int i = count / kLanes * kLanes; i < count; ++i)
            MixStep<1>(pixel + i, i, {weight});
    }

private:
    using Pixels = typename Lanes<kLanes>::Pixels;
    using Pairs = typename Lanes<kLanes>::Pairs;
    using Channels = typename Lanes<kLanes>::Channels;
    static constexpr std::uint32_t kRedBlue = 0xFF00FFU;
    static constexpr std::uint32_t kGreen = 0xFF00U;

    /// As many steps as there are lanes for.
    template <std::size_t kWidth> void MixOnce(std::uint32_t* pixel, std::ptrdiff_t stride, const Pixels& taken) const {
        Pixels pixels{};
        Gather<kWidth>(pixels, pixel, stride);
        Mix(pixels, taken);
        Scatter<kWidth>(pixels, pixel, stride);
    }

    /// Of places that are the same, the first one's weights count.
    void MixPairs(const std::array<std::uint32_t*, kLanes / 2>& places, const Pixels& taken) const {
        Pairs pairs{};
        for (int i = 0; i < kLanes / 2; ++i) {
            std::uint64_t pair = 0;
            std::memcpy(&pair, places[static_cast<std::size_t>(i)], sizeof pair);
            pairs[i] = pair;
        }
        Pixels pixels = Pixels(pairs);
        Mix(pixels, taken);
        for (std::size_t i = kLanes / 2; i-- > 0;)
            std::memcpy(places[i], reinterpret_cast<const char*>(&pixels) + i * sizeof(std::uint64_t),
                        sizeof(std::uint64_t));
    }

    /// The steps from `first` on, fewer than there are lanes for. No loop: compilers make more of it than it is.
    template <std::size_t kWidth> void MixRest(std::uint32_t* pixel, std::ptrdiff_t stride, int first, int count,
                                               const std::array<Weight, kWidth>& weights) const {
        if constexpr (kLanes == 8 && kWidth == 2)
            if ((count & 2) != 0) {
                const std::array half{weights[0].From(first), weights[1].From(first)};
                LaneMixer<4>(m_color).MixSteps(pixel, stride, 2, half);
                pixel += 2 * stride;
                first += 2;
            }
        if constexpr (kLanes > kWidth)
            if ((count & 1) != 0)
                MixStep(pixel, first, weights);
    }

    /// The weights of as many steps as there are lanes for, and what they grow by from there to the next ones.
    template <std::size_t kWidth>
    static void SpreadWeights(Pixels& taken, Pixels& growth, const std::array<Weight, kWidth>& weights) {
        Pairs starts{};
        Pairs steps{};
        Pixels passed{};
        for (int lane = 0; lane < kLanes; ++lane)
            passed[lane] = static_cast<std::uint32_t>(lane) / kWidth;
        for (int pair = 0; pair < kLanes / 2; ++pair) {
            const Weight& one = weights[static_cast<std::size_t>(2 * pair) % kWidth];
            const Weight& other = weights[static_cast<std::size_t>(2 * pair + 1) % kWidth];
            starts[pair] = PairOf(one.start, other.start);
            steps[pair] = PairOf(one.step, other.step);
        }
        taken = Pixels(starts) + Pixels(steps) * passed;
        growth = Pixels(steps) * (kLanes / kWidth);
    }

    static std::uint64_t PairOf(std::int32_t one, std::int32_t other) {
        return static_cast<std::uint32_t>(one) | std::uint64_t{static_cast<std::uint32_t>(other)} << 32U;
    }

    /// Puts the parts together in registers: what goes there by way of memory is waited for.
    template <std::size_t kWidth> static void Gather(Pixels& lanes, const std::uint32_t* pixel, std::ptrdiff_t stride) {
        if constexpr (kWidth == kLanes) {
            std::memcpy(&lanes, pixel, sizeof lanes);
        } else if constexpr (kWidth == 4) {
            typename Lanes<4>::Pixels parts[2];
            std::memcpy(&parts[0], pixel, sizeof parts[0]);
            std::memcpy(&parts[1], pixel + stride, sizeof parts[1]);
            Lanes<kLanes>::Join(lanes, parts[0], parts[1]);
        } else {
            static_assert(kWidth == 2);
            Pairs pairs{};
            for (int i = 0; i < kLanes / 2; ++i) {
                std::uint64_t pair = 0;
                std::memcpy(&pair, pixel + i * stride, sizeof pair);
                pairs[i] = pair;
            }
            lanes = Pixels(pairs);
        }
    }

    template <std::size_t kWidth>
    static void Scatter(const Pixels& lanes, std::uint32_t* pixel, std::ptrdiff_t stride) {
        constexpr std::size_t kBytes = kWidth * sizeof *pixel;
        for (std::size_t i = 0; i < kLanes / kWidth; ++i, pixel += stride)
            std::memcpy(pixel, reinterpret_cast<const char*>(&lanes) + i * kBytes, kBytes);
    }

    /// Red and blue travel together, 16 bits each, and green beside the unused byte, which becomes 0xFF.
    void Mix(Pixels& pixels, const Pixels& weights) const {
        Channels weight = Channels(weights);
        Lanes<kLanes>::DoubleUpper(weight);
        const Channels redBlue = Channels(pixels & kRedBlue);
        const Channels green = Channels(pixels & kGreen);
        const Channels one = (redBlue << 8) + (m_redBlue - redBlue) * weight + 0x80;
        const Channels other = green + (m_green - (green >> 8)) * weight + Channels(Pixels{} + 0xFF800080U);
        pixels = Pixels(one >> 8 | (other & 0xFF00));
    }

    template <std::size_t kWidth>
    void MixStep(std::uint32_t* pixel, int i, const std::array<Weight, kWidth>& weights) const {
        for (std::size_t k = 0; k < kWidth; ++k)
            pixel[k] = MixColor256(pixel[k], m_color, static_cast<std::uint32_t>(weights[k].At(i)) >> kWeightBits);
    }

    Color m_color;
    Channels m_redBlue;
    Channels m_green;
};

/// `width` pixels, no fewer than there are lanes. Both ends are written twice rather than looked at, and between them
/// no store crosses from one line of the cache into the next, which takes twice the time.
template <int kLanes> void FillRow(std::uint32_t* row, std::size_t width, const typename Lanes<kLanes>::Pixels& color) {
    constexpr std::size_t kBytes = sizeof color;
    std::uint32_t* const last = row + width - kLanes;
    std::memcpy(row, &color, kBytes);
    row += (kBytes - reinterpret_cast<std::uintptr_t>(row) % kBytes) / sizeof(std::uint32_t);
    for (; row < last; row += kLanes)
        std::memcpy(row, &color, kBytes);
    std::memcpy(last, &color, kBytes);
}

/// However few pixels.
template <int kLanes> void FillSpan(std::uint32_t* row, std::size_t width, Color color) {
    if (width >= kLanes)
        return FillRow<kLanes>(row, width, typename Lanes<kLanes>::Pixels{} + color);
    if constexpr (kLanes > 4)
        return FillSpan<4>(row, width, color);
    for (std::size_t i = 0; i < width; ++i)
        row[i] = color;
}

template <int kLanes> using LaneCount = std::integral_constant<int, kLanes>;

template <class Work> [[gnu::flatten]] void RunInFours(const Work& work) { work(LaneCount<4>()); }

#ifdef __x86_64__
inline const bool kHasEightLanes = __builtin_cpu_supports("avx2") != 0;

template <class Work> [[gnu::flatten, gnu::target("avx2")]] void RunInEights(const Work& work) { work(LaneCount<8>()); }
#endif

/// Calls work(LaneCount) with as many lanes as registers of this machine have. All that is called by it becomes part of
/// one function for each of them, compiled for such a machine: let it be short, and hot.
template <class Work> void RunInLanes(const Work& work) {
#ifdef __x86_64__
    if (kHasEightLanes)
        return RunInEights(work);
#endif
    RunInFours(work);
}

} // namespace melkar
