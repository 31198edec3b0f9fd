#include <MelkarCommon/platform/pages/ink.h>
#include <MelkarCommon/platform/seam/box.h>

#include <algorithm>
#include <iterator>

namespace melkar {

namespace {

Color OnPaper(Color pixel, DWORD operation) {
    const auto [least, most] = std::minmax({RedOf(pixel), GreenOf(pixel), BlueOf(pixel)});
    if (operation == SRCCOPY)
        return pixel | kOpaque;
    if (operation == SRCPAINT)
        return (pixel & ~kOpaque) | most << 24U;
    return (pixel | kOpaque) - least * 0x01010101U;
}

} // namespace

Stroke OnPaper(const Stroke& stroke, int dpi) {
    const double thinnest = dpi / (2.0 * kPointsPerInch);
    Stroke bounded = stroke;
    bounded.width = stroke.width > thinnest ? std::min(stroke.width, kWidestStroke) : thinnest;
    return bounded;
}

std::optional<Area> FrameOnPaper(const RECT& outer, int width, const RECT& clip) {
    if (!Covers(clip, outer) || IsEmptyRect(Grown(outer, -width)))
        return std::nullopt;
    const double middle = width / 2.0;
    return Area{outer.left + middle, outer.top + middle, outer.right - middle, outer.bottom - middle};
}

std::vector<Color> OnPaper(const PixelBuffer& pixels, const RECT& source, DWORD operation) {
    std::vector<Color> paper;
    for (int y = source.top; y < source.bottom; ++y)
        std::transform(PixelAt(pixels, source.left, y), PixelAt(pixels, source.right, y), std::back_inserter(paper),
                       [=](Color pixel) { return OnPaper(pixel, operation); });
    return paper;
}

} // namespace melkar
