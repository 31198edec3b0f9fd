#pragma once

#include <MelkarCommon/support/platform/pixels/pixel_spans.h>

#include <type_traits>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

/// @file
/// Internal. Four pixels mixed at once, two by two. Steep lines and edges, which take most of the time of a picture
/// with a curve in it, go through pixels that lie a row apart: no compiler puts these together by itself.

namespace melkar {

/// Weights in 65536ths of a 256th: 0 to 2^24.
constexpr int kWeightBits = 16;

/// A colour that is mixed with many pixels, each as `MixColor256` does it.
class PairMixer {
public:
    explicit PairMixer(Color color)
        : m_color(color)
#ifdef __SSE2__
          ,
          m_channels(Widen(_mm_set1_epi32(static_cast<int>(color))))
#endif
    {
    }

    /// `count` pixels, each `stride` behind the last; `weight` grows by `step` from one to the next and stays within
    /// 0 and 2^24 - 1.
    void MixEvenly(std::uint32_t* pixel, std::ptrdiff_t stride, int count, std::int32_t weight,
                   std::int32_t step) const;

    /// `count` pairs of pixels `across` apart, each pair `stride` behind the last. `first` is what the colour leaves of
    /// the first pixel, `second` what it takes of the second one; both grow by `step` from pair to pair and stay within
    /// 0 and 2^24 - 1.
    void MixPairs(std::uint32_t* pixel, std::ptrdiff_t across, std::ptrdiff_t stride, int count, std::int32_t first,
                  std::int32_t second, std::int32_t step) const;

private:
    static std::uint32_t Whole(std::int32_t weight) { return static_cast<std::uint32_t>(weight) >> kWeightBits; }

    Color m_color;
#ifdef __SSE2__
    static __m128i Widen(__m128i bytes) { return _mm_unpacklo_epi8(bytes, _mm_setzero_si128()); }
    /// Two pixels `apart`, in the lower half.
    template <class Apart> static __m128i LoadPair(const std::uint32_t* pixel, Apart apart) {
        if (apart == 1)
            return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(pixel));
        return _mm_unpacklo_epi32(_mm_cvtsi32_si128(static_cast<int>(pixel[0])),
                                  _mm_cvtsi32_si128(static_cast<int>(pixel[apart])));
    }
    template <class Apart> static void StorePair(std::uint32_t* pixel, Apart apart, __m128i pair) {
        if (apart == 1)
            return _mm_storel_epi64(reinterpret_cast<__m128i*>(pixel), pair);
        pixel[0] = static_cast<std::uint32_t>(_mm_cvtsi128_si32(pair));
        pixel[apart] = static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_srli_epi64(pair, 32)));
    }
    /// The eight channels of two pixels, mixed; `weights` has one for each, below zero: so the colour can be taken off
    /// in place. A byte above 0x80 is 256 of it and a half.
    __m128i MixedChannels(__m128i pair, __m128i weights) const {
        const __m128i change = _mm_mullo_epi16(_mm_sub_epi16(Widen(pair), m_channels), weights);
        const __m128i rounded = _mm_unpacklo_epi8(_mm_set1_epi8(static_cast<char>(0x80)), pair);
        return _mm_srli_epi16(_mm_add_epi16(rounded, change), 8);
    }
    /// Mixes two pairs, the second one `stride` behind the first; `weights` are below zero and have their fractions.
    template <class Apart>
    void MixTwoPairs(std::uint32_t* pixel, Apart apart, std::ptrdiff_t stride, __m128i weights) const {
        const __m128i fine = _mm_srai_epi32(weights, kWeightBits);
        const __m128i whole = _mm_packs_epi32(fine, fine);
        const __m128i twice = _mm_unpacklo_epi16(whole, whole);
        const __m128i one = MixedChannels(LoadPair(pixel, apart), _mm_unpacklo_epi32(twice, twice));
        const __m128i other = MixedChannels(LoadPair(pixel + stride, apart), _mm_unpackhi_epi32(twice, twice));
        const __m128i bytes = _mm_or_si128(_mm_packus_epi16(one, other), _mm_set1_epi32(static_cast<int>(0xFF000000U)));
        StorePair(pixel, apart, bytes);
        StorePair(pixel + stride, apart, _mm_unpackhi_epi64(bytes, bytes));
    }
    /// `MixPairs`; `apart` may be a constant.
    template <class Apart> void MixTwoByTwo(std::uint32_t* pixel, Apart apart, std::ptrdiff_t stride, int count,
                                            std::int32_t first, std::int32_t second, std::int32_t step) const {
        __m128i weights = _mm_set_epi32(Below(second + step), first + step - kAll, Below(second), first - kAll);
        const __m128i steps = _mm_set_epi32(-2 * step, 2 * step, -2 * step, 2 * step);
        for (int pairs = count / 2; pairs > 0; --pairs, pixel += 2 * stride, weights = _mm_add_epi32(weights, steps))
            MixTwoPairs(pixel, apart, stride, weights);
        if (count % 2 != 0) {
            pixel[0] = MixColor256(pixel[0], m_color, 256U - Whole(first + (count - 1) * step));
            pixel[apart] = MixColor256(pixel[apart], m_color, Whole(second + (count - 1) * step));
        }
    }

    static constexpr std::int32_t kAll = 256 << kWeightBits;
    /// Below zero what `weight` is above it, once the fraction is cut off.
    static std::int32_t Below(std::int32_t weight) { return (1 << kWeightBits) - 1 - weight; }

    __m128i m_channels;
#endif
};

#ifdef __SSE2__

inline void PairMixer::MixEvenly(std::uint32_t* pixel, std::ptrdiff_t stride, int count, std::int32_t weight,
                                 std::int32_t step) const {
    __m128i weights =
        _mm_set_epi32(Below(weight + 3 * step), Below(weight + 2 * step), Below(weight + step), Below(weight));
    const __m128i steps = _mm_set1_epi32(-4 * step);
    for (; count > 3; count -= 4, weight += 4 * step, pixel += 4 * stride, weights = _mm_add_epi32(weights, steps))
        MixTwoPairs(pixel, stride, 2 * stride, weights);
    for (; count > 0; --count, weight += step, pixel += stride)
        *pixel = MixColor256(*pixel, m_color, Whole(weight));
}

inline void PairMixer::MixPairs(std::uint32_t* pixel, std::ptrdiff_t across, std::ptrdiff_t stride, int count,
                                std::int32_t first, std::int32_t second, std::int32_t step) const {
    if (across == 1) // steep lines
        MixTwoByTwo(pixel, std::integral_constant<std::ptrdiff_t, 1>(), stride, count, first, second, step);
    else
        MixTwoByTwo(pixel, across, stride, count, first, second, step);
}

#else

inline void PairMixer::MixEvenly(std::uint32_t* pixel, std::ptrdiff_t stride, int count, std::int32_t weight,
                                 std::int32_t step) const {
    for (; count > 0; --count, pixel += stride, weight += step)
        *pixel = MixColor256(*pixel, m_color, Whole(weight));
}

inline void PairMixer::MixPairs(std::uint32_t* pixel, std::ptrdiff_t across, std::ptrdiff_t stride, int count,
                                std::int32_t first, std::int32_t second, std::int32_t step) const {
    for (; count > 0; --count, pixel += stride, first += step, second += step) {
        pixel[0] = MixColor256(pixel[0], m_color, 256U - Whole(first));
        pixel[across] = MixColor256(pixel[across], m_color, Whole(second));
    }
}

#endif

} // namespace melkar
