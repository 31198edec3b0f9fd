#pragma once

#include <MelkarCommon/support/platform/pixels/pixel_spans.h>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

/// @file
/// Internal. Two pixels mixed at once. Steep lines and edges, which take most of the time of a picture with a curve in
/// it, go through pixels that lie a row apart: no compiler puts these together by itself.

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
    /// Each of four weights twice, without its fraction: two pixels have eight channels.
    static __m128i Twice(__m128i weights) {
        const __m128i whole = _mm_srli_epi32(weights, kWeightBits);
        return _mm_or_si128(whole, _mm_slli_epi32(whole, 16));
    }
    void Mix(std::uint32_t& one, std::uint32_t& other, __m128i weights) const {
        const __m128i under = Widen(
            _mm_unpacklo_epi32(_mm_cvtsi32_si128(static_cast<int>(one)), _mm_cvtsi32_si128(static_cast<int>(other))));
        const __m128i change = _mm_mullo_epi16(_mm_sub_epi16(m_channels, under), weights);
        const __m128i rounded = _mm_add_epi16(_mm_slli_epi16(under, 8), _mm_set1_epi16(0x80));
        const __m128i mixed = _mm_srli_epi16(_mm_add_epi16(rounded, change), 8);
        const __m128i bytes =
            _mm_or_si128(_mm_packus_epi16(mixed, mixed), _mm_set1_epi32(static_cast<int>(0xFF000000U)));
        one = static_cast<std::uint32_t>(_mm_cvtsi128_si32(bytes));
        other = static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_srli_epi64(bytes, 32)));
    }

    __m128i m_channels;
#endif
};

#ifdef __SSE2__

inline void PairMixer::MixEvenly(std::uint32_t* pixel, std::ptrdiff_t stride, int count, std::int32_t weight,
                                 std::int32_t step) const {
    __m128i weights = _mm_set_epi32(weight + step, weight + step, weight, weight);
    const __m128i steps = _mm_set1_epi32(2 * step);
    for (; count > 1; count -= 2, pixel += 2 * stride, weights = _mm_add_epi32(weights, steps))
        Mix(pixel[0], pixel[stride], Twice(weights));
    if (count == 1)
        *pixel = MixColor256(*pixel, m_color, Whole(_mm_cvtsi128_si32(weights)));
}

inline void PairMixer::MixPairs(std::uint32_t* pixel, std::ptrdiff_t across, std::ptrdiff_t stride, int count,
                                std::int32_t first, std::int32_t second, std::int32_t step) const {
    __m128i weights = _mm_set_epi32(second, second, first, first);
    const __m128i steps = _mm_set1_epi32(step);
    const __m128i flips = _mm_set_epi32(0, 0, -1, -1); // 256 - w is ~w + 257
    const __m128i more = _mm_set_epi32(0, 0, 257 * 0x10001, 257 * 0x10001);
    for (; count > 0; --count, pixel += stride, weights = _mm_add_epi32(weights, steps))
        Mix(pixel[0], pixel[across], _mm_add_epi16(_mm_xor_si128(Twice(weights), flips), more));
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
