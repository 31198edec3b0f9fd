#include <MelkarCommon/platform/pixels/pixel_lanes.h>
#include <MelkarCommon/platform/pixels/pixel_spans.h>

namespace melkar {

namespace {

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

template <int kLanes>
void FillWide(std::uint32_t* row, int stride, std::size_t width, std::size_t height, Color color) {
    const typename Lanes<kLanes>::Pixels lanes = typename Lanes<kLanes>::Pixels{} + color;
    if (width > 2 * kLanes) {
        for (std::size_t y = 0; y < height; ++y, row += stride)
            FillRow<kLanes>(row, width, lanes);
        return;
    }
    for (std::size_t y = 0; y < height; ++y, row += stride) { // bars: their two ends are all of them
        std::memcpy(row, &lanes, sizeof lanes);
        std::memcpy(row + width - kLanes, &lanes, sizeof lanes);
    }
}

void FillNarrow(std::uint32_t* row, int stride, std::size_t width, std::size_t height, Color color) {
    for (std::size_t y = 0; y < height; ++y, row += stride)
        for (std::size_t x = 0; x < width; ++x)
            row[x] = color;
}

} // namespace

void FillRows(const PixelBuffer& buffer, const RECT& rect, Color color) {
    constexpr std::size_t kWorthLanes = 8;
    if (IsEmptyRect(rect))
        return;
    std::uint32_t* const first = PixelAt(buffer, rect.left, rect.top);
    const std::size_t width = static_cast<std::size_t>(rect.right) - static_cast<std::size_t>(rect.left);
    const std::size_t height = static_cast<std::size_t>(rect.bottom) - static_cast<std::size_t>(rect.top);
    if (width < kWorthLanes)
        return FillNarrow(first, buffer.stride, width, height, color);
    RunInLanes([&](auto lanes) { FillWide<lanes>(first, buffer.stride, width, height, color); });
}

} // namespace melkar
