#include <MelkarCommon/platform/pixels/pixel_blend.h>
#include <MelkarCommon/platform/pixels/pixel_blit.h>
#include <MelkarCommon/platform/pixels/pixel_memory.h>
#include <MelkarCommon/platform/pixels/pixel_scale.h>
#include <MelkarCommon/platform/pixels/pixel_spans.h>

#include <cstring>
#include <functional>

namespace melkar {

namespace {

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
    const std::uint8_t* const coverage =
        mask.coverage.data() + (visible.top - y) * static_cast<std::int64_t>(mask.stride) + (visible.left - x);
    const auto width = static_cast<std::size_t>(visible.right - visible.left);
    RunInLanes([&](auto lanes) {
        for (int row = 0; row < visible.bottom - visible.top; ++row)
            BlendRow<lanes>(PixelAt(to, visible.left, visible.top + row),
                            coverage + row * static_cast<std::int64_t>(mask.stride), width, color | kOpaque);
    });
}

} // namespace melkar
