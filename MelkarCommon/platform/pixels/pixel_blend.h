#pragma once

#include <MelkarCommon/platform/pixels/pixel_spans.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

/// @file
/// Internal. An opaque colour through the coverage of texts and discs, four pixels at once.

namespace melkar {

/// Four coverages in one read: most of a text's mask is blank, most of a disc's is whole.
inline std::uint32_t Four(const std::uint8_t* coverage) {
    std::uint32_t four = 0;
    std::memcpy(&four, coverage, sizeof four);
    return four;
}
constexpr std::uint32_t kFourWhole = 0xFFFFFFFFU;

inline void BlendPixel(std::uint32_t& pixel, Color color, std::uint32_t coverage) {
    if (coverage == 255)
        pixel = color;
    else if (coverage != 0)
        pixel = MixColor255(pixel, color, coverage);
}

#ifdef __SSE2__
/// Four pixels at once, each as `MixColor255` does it.
inline void BlendFour(std::uint32_t* pixels, std::uint32_t four, Color color) {
    const __m128i zero = _mm_setzero_si128();
    const __m128i bytes = _mm_cvtsi32_si128(static_cast<int>(four));
    const __m128i twice = _mm_unpacklo_epi8(bytes, bytes);
    const __m128i coverage = _mm_unpacklo_epi16(twice, twice);
    const __m128i channels = _mm_unpacklo_epi8(_mm_set1_epi32(static_cast<int>(color)), zero);
    const __m128i under = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pixels));
    const auto mixed = [channels](__m128i below, __m128i weights) {
        const __m128i rest = _mm_sub_epi16(_mm_set1_epi16(255), weights);
        const __m128i sum = _mm_add_epi16(_mm_mullo_epi16(channels, weights), _mm_mullo_epi16(below, rest));
        const __m128i rounded = _mm_add_epi16(sum, _mm_set1_epi16(0x80));
        return _mm_srli_epi16(_mm_add_epi16(rounded, _mm_srli_epi16(rounded, 8)), 8);
    };
    const __m128i packed = _mm_packus_epi16(mixed(_mm_unpacklo_epi8(under, zero), _mm_unpacklo_epi8(coverage, zero)),
                                            mixed(_mm_unpackhi_epi8(under, zero), _mm_unpackhi_epi8(coverage, zero)));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(pixels),
                     _mm_or_si128(packed, _mm_set1_epi32(static_cast<int>(kOpaque))));
}
#else
inline void BlendFour(std::uint32_t* pixels, std::uint32_t four, Color color) {
    std::uint8_t coverage[sizeof four];
    std::memcpy(coverage, &four, sizeof four);
    for (const std::uint8_t one : coverage)
        BlendPixel(*pixels++, color, one);
}
#endif

inline void BlendRow(std::uint32_t* pixels, const std::uint8_t* coverage, std::size_t count, Color color) {
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4) {
        const std::uint32_t four = Four(coverage + i);
        if (four == kFourWhole)
            std::fill_n(pixels + i, 4, color);
        else if (four != 0)
            BlendFour(pixels + i, four, color);
    }
    for (; i < count; ++i)
        BlendPixel(pixels[i], color, coverage[i]);
}

} // namespace melkar
