#include <MelkarCommon/platform/pixels/pixel_lanes.h>
#include <MelkarCommon/platform/pixels/pixel_spans.h>

namespace melkar {

namespace {

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
