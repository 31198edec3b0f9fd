#include <MelkarCommon/support/platform/pixels/pixel_blit.h>
#include <MelkarCommon/support/platform/pixels/pixel_memory.h>
#include <MelkarCommon/support/platform/pixels/pixel_scale.h>
#include <MelkarCommon/support/platform/pixels/pixel_spans.h>

#include <cstring>
#include <functional>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace melkar {

namespace {

constexpr Color kOpaque = 0xFF000000U;

void OrRow(std::uint32_t* to, const std::uint32_t* from, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        to[i] |= from[i] | kOpaque;
}

void AndRow(std::uint32_t* to, const std::uint32_t* from, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        to[i] = (to[i] & from[i]) | kOpaque;
}

void CombineRow(std::uint32_t* to, const std::uint32_t* from, std::size_t count, DWORD operation) {
    if (operation == SRCPAINT)
        OrRow(to, from, count);
    else
        AndRow(to, from, count);
}

/// True if the memory of the two pictures overlaps.
bool ShareMemory(const PixelBuffer& a, const PixelBuffer& b) {
    const std::less<> before;
    return before(a.pixels, PixelAt(b, b.width, b.height - 1)) && before(b.pixels, PixelAt(a, a.width, a.height - 1));
}

/// A tightly packed copy of a part of a picture.
class PixelCopy {
public:
    PixelCopy(const PixelBuffer& from, const RECT& part) {
        const int width = part.right - part.left;
        const int height = part.bottom - part.top;
        m_buffer = {TakePixels(width, height), width, height, width};
        if (m_buffer.pixels == nullptr)
            return;
        for (int y = 0; y < height; ++y)
            std::memcpy(PixelAt(m_buffer, 0, y), PixelAt(from, part.left, part.top + y),
                        static_cast<std::size_t>(width) * sizeof(std::uint32_t));
    }
    ~PixelCopy() { GivePixelsBack(m_buffer.pixels, m_buffer.width, m_buffer.height); }
    PixelCopy(const PixelCopy&) = delete;
    PixelCopy& operator=(const PixelCopy&) = delete;

    const PixelBuffer& Buffer() const { return m_buffer; }

private:
    PixelBuffer m_buffer;
};

/// Same size, straight copy. Going against the shift keeps a picture whole that is copied onto itself.
void CopyRows(const PixelBuffer& to, const RECT& visible, const PixelBuffer& from, int sourceX, int sourceY) {
    const std::size_t bytes = static_cast<std::size_t>(visible.right - visible.left) * sizeof(std::uint32_t);
    const int height = visible.bottom - visible.top;
    const bool upwards = std::less<>()(PixelAt(from, sourceX, sourceY), PixelAt(to, visible.left, visible.top));
    for (int i = 0; i < height; ++i) {
        const int y = upwards ? height - 1 - i : i;
        std::memmove(PixelAt(to, visible.left, visible.top + y), PixelAt(from, sourceX, sourceY + y), bytes);
    }
}

void CombineRows(const PixelBuffer& to, const RECT& visible, const PixelBuffer& from, int sourceX, int sourceY,
                 DWORD operation) {
    const auto width = static_cast<std::size_t>(visible.right - visible.left);
    for (int y = visible.top; y < visible.bottom; ++y)
        CombineRow(PixelAt(to, visible.left, y), PixelAt(from, sourceX, sourceY + y - visible.top), width, operation);
}

void CombineNearest(const PixelBuffer& to, const RECT& visible, const Box& target, const PixelBuffer& from,
                    const RECT& source, DWORD operation) {
    const int width = visible.right - visible.left;
    std::vector<int> columns(static_cast<std::size_t>(width));
    for (int i = 0; i < width; ++i)
        columns[static_cast<std::size_t>(i)] =
            NearestPixel(visible.left + i - target.left, target.right - target.left, source.right - source.left);
    std::vector<std::uint32_t> row(columns.size());
    for (int y = visible.top; y < visible.bottom; ++y) {
        const int sourceY = NearestPixel(y - target.top, target.bottom - target.top, source.bottom - source.top);
        const std::uint32_t* pixels = PixelAt(from, source.left, source.top + sourceY);
        for (std::size_t i = 0; i < row.size(); ++i)
            row[i] = pixels[columns[i]];
        CombineRow(PixelAt(to, visible.left, y), row.data(), row.size(), operation);
    }
}

void BlitSameSize(const PixelBuffer& to, const RECT& visible, const RECT& target, const PixelBuffer& from,
                  const RECT& source, DWORD operation) {
    const int sourceX = static_cast<int>(std::int64_t{source.left} + visible.left - target.left);
    const int sourceY = static_cast<int>(std::int64_t{source.top} + visible.top - target.top);
    if (operation == SRCCOPY)
        CopyRows(to, visible, from, sourceX, sourceY);
    else
        CombineRows(to, visible, from, sourceX, sourceY, operation);
}

/// Four coverages in one read: most of a text's mask is blank, most of a disc's is whole.
std::uint32_t Four(const std::uint8_t* coverage) {
    std::uint32_t four = 0;
    std::memcpy(&four, coverage, sizeof four);
    return four;
}

void BlendPixel(std::uint32_t& pixel, Color color, std::uint32_t coverage) {
    if (coverage == 255)
        pixel = color;
    else if (coverage != 0)
        pixel = MixColor255(pixel, color, coverage);
}

#ifdef __SSE2__
/// Four pixels at once, each as `MixColor255` does it.
void BlendFour(std::uint32_t* pixels, std::uint32_t four, Color color) {
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
void BlendFour(std::uint32_t* pixels, std::uint32_t four, Color color) {
    std::uint8_t coverage[sizeof four];
    std::memcpy(coverage, &four, sizeof four);
    for (const std::uint8_t one : coverage)
        BlendPixel(*pixels++, color, one);
}
#endif

void BlendRow(std::uint32_t* pixels, const std::uint8_t* coverage, std::size_t count, Color color) {
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4) {
        const std::uint32_t four = Four(coverage + i);
        if (four == 0xFFFFFFFFU)
            std::fill_n(pixels + i, 4, color);
        else if (four != 0)
            BlendFour(pixels + i, four, color);
    }
    for (; i < count; ++i)
        BlendPixel(pixels[i], color, coverage[i]);
}

} // namespace

void BlitPixels(const PixelBuffer& to, const RECT& clip, const RECT& target, const PixelBuffer& from,
                const RECT& source, DWORD operation) {
    const Box box = ToBox(target);
    const RECT visible = ClipBox(box, clip);
    if (!CanBlit(from, source, operation) || IsEmptyRect(visible))
        return;
    const bool sameSize =
        box.right - box.left == source.right - source.left && box.bottom - box.top == source.bottom - source.top;
    const bool movesRows = sameSize && operation == SRCCOPY;
    if (!movesRows && ShareMemory(to, from)) {
        const PixelCopy copy(from, source);
        BlitPixels(to, clip, target, copy.Buffer(), {0, 0, copy.Buffer().width, copy.Buffer().height}, operation);
        return;
    }
    if (sameSize)
        BlitSameSize(to, visible, target, from, source, operation);
    else if (operation == SRCCOPY)
        ScaleSmooth(to, visible, box, from, source);
    else
        CombineNearest(to, visible, box, from, source, operation);
}

void BlendMask(const PixelBuffer& to, const RECT& clip, const CoverageMask& mask, std::int64_t x, std::int64_t y,
               Color color) {
    const RECT visible = ClipBox({x, y, x + mask.width, y + mask.height}, clip);
    if (IsEmptyRect(visible))
        return;
    const std::uint8_t* coverage =
        mask.coverage.data() + (visible.top - y) * static_cast<std::int64_t>(mask.stride) + (visible.left - x);
    std::uint32_t* pixels = PixelAt(to, visible.left, visible.top);
    const auto width = static_cast<std::size_t>(visible.right - visible.left);
    for (int row = visible.top; row < visible.bottom; ++row, coverage += mask.stride, pixels += to.stride)
        BlendRow(pixels, coverage, width, color | kOpaque);
}

} // namespace melkar
