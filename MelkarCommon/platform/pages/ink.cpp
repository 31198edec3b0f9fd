#include <MelkarCommon/platform/pages/ink.h>

#include <algorithm>
#include <iterator>

namespace melkar {

namespace {

Color OnPaper(Color pixel, DWORD operation) {
    const Color red = (pixel >> 16U) & 0xFFU;
    const Color green = (pixel >> 8U) & 0xFFU;
    const Color blue = pixel & 0xFFU;
    if (operation == SRCCOPY)
        return pixel | 0xFF000000U;
    if (operation == SRCPAINT)
        return (pixel & 0xFFFFFFU) | std::max({red, green, blue}) << 24U;
    const Color least = std::min({red, green, blue});
    return (0xFF000000U | (pixel & 0xFFFFFFU)) - least * 0x01010101U;
}

} // namespace

Stroke OnPaper(const Stroke& stroke, int dpi) {
    constexpr double kWidest = 32768;
    const double thinnest = dpi / (2.0 * kPointsPerInch);
    Stroke bounded = stroke;
    bounded.width = stroke.width > thinnest ? std::min(stroke.width, kWidest) : thinnest;
    return bounded;
}

std::vector<Color> OnPaper(const PixelBuffer& pixels, const RECT& source, DWORD operation) {
    std::vector<Color> paper;
    for (int y = source.top; y < source.bottom; ++y)
        std::transform(PixelAt(pixels, source.left, y), PixelAt(pixels, source.right, y), std::back_inserter(paper),
                       [=](Color pixel) { return OnPaper(pixel, operation); });
    return paper;
}

} // namespace melkar
