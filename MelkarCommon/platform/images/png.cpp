#include <MelkarCommon/platform/cairo/handles.h>
#include <MelkarCommon/platform/cairo/streams.h>
#include <MelkarCommon/platform/images/encoders.h>

namespace melkar {

namespace {

CairoSurface SurfaceOf(const PixelBuffer& pixels, cairo_format_t format) {
    return CairoSurface(cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(pixels.pixels), format,
                                                            pixels.width, pixels.height,
                                                            pixels.stride * static_cast<int>(sizeof(std::uint32_t))));
}

} // namespace

int WriteAsPng(const PixelBuffer& pixels, NewFile& file) {
    const CairoSurface surface = SurfaceOf(pixels, CAIRO_FORMAT_RGB24);
    return cairo_surface_write_to_png_stream(surface.get(), WriteToFile, &file) == CAIRO_STATUS_SUCCESS ? 0 : ENOMEM;
}

std::string EncodePng(const PixelBuffer& pixels, bool hasAlpha) {
    std::string bytes;
    const CairoSurface surface = SurfaceOf(pixels, hasAlpha ? CAIRO_FORMAT_ARGB32 : CAIRO_FORMAT_RGB24);
    if (cairo_surface_write_to_png_stream(surface.get(), WriteToText, &bytes) != CAIRO_STATUS_SUCCESS)
        bytes.clear();
    return bytes;
}

} // namespace melkar
