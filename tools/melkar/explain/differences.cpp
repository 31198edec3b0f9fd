#include "differences.h"

#include <MelkarCommon/platform/host_surfaces.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace melkar::tool {
namespace {

constexpr std::uint32_t kChanged = 0xFFD01030U;

/// Calls look(x, y, one, other) for each pixel of both.
template <class Look> void ForEachPixel(HDC one, HDC other, const Look& look) {
    const PixelView a = GetPixels(one);
    const PixelView b = GetPixels(other);
    for (int y = 0; y < std::min(a.height, b.height); ++y)
        for (int x = 0; x < std::min(a.width, b.width); ++x)
            look(x, y, a.pixels[std::ptrdiff_t{1} * y * a.stride + x], b.pixels[std::ptrdiff_t{1} * y * b.stride + x]);
}

/// Its brightness, on a quarter of the way from white to it.
std::uint32_t Pale(std::uint32_t pixel) {
    const std::uint32_t grey =
        ((pixel >> 16U & 0xFFU) * 299 + (pixel >> 8U & 0xFFU) * 587 + (pixel & 0xFFU) * 114) / 1000;
    return 0xFF000000U | (255 - (255 - grey) / 4) * 0x10101U;
}

} // namespace

PictureDifference DifferenceOf(HDC one, HDC other) {
    PictureDifference difference;
    ForEachPixel(one, other, [&](int x, int y, std::uint32_t a, std::uint32_t b) {
        ++difference.all;
        if (a == b)
            return;
        const CRect here(x, y, x + 1, y + 1);
        CRect& area = difference.area;
        area = difference.pixels++ == 0 ? here
                                        : CRect(std::min(area.left, x), std::min(area.top, y),
                                                std::max(area.right, x + 1), std::max(area.bottom, y + 1));
    });
    return difference;
}

bool WriteSideBySide(HDC one, HDC other, const std::string& path, const std::string& format) {
    const auto [pixels, width, height, stride] = GetPixels(one);
    const std::size_t row = std::size_t{3} * static_cast<std::size_t>(width);
    std::vector<std::uint32_t> memory(row * static_cast<std::size_t>(height));
    ForEachPixel(one, other, [&, width = width](int x, int y, std::uint32_t a, std::uint32_t b) {
        std::uint32_t* at = memory.data() + row * static_cast<std::size_t>(y) + x;
        at[0] = a;
        at[width] = b;
        at[std::ptrdiff_t{2} * width] = a == b ? Pale(a) : kChanged;
    });
    errno = EFBIG;
    const ScopedSurface all(WrapPixels(memory.data(), 3 * width, height, 4 * 3 * width));
    return all != nullptr && WritePicture(all, path.c_str(), format.c_str()) == 0;
}

} // namespace melkar::tool
