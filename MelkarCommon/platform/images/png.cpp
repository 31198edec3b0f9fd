#include <MelkarCommon/platform/cairo/handles.h>
#include <MelkarCommon/platform/files/new_file.h>
#include <MelkarCommon/platform/images/encoders.h>

namespace melkar {

namespace {

cairo_status_t WriteBytes(void* file, const unsigned char* bytes, unsigned int count) noexcept {
    return static_cast<NewFile*>(file)->Write(bytes, count) ? CAIRO_STATUS_SUCCESS : CAIRO_STATUS_WRITE_ERROR;
}

cairo_status_t AppendBytes(void* text, const unsigned char* bytes, unsigned int count) noexcept try {
    static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(bytes), count);
    return CAIRO_STATUS_SUCCESS;
} catch (...) {
    return CAIRO_STATUS_NO_MEMORY;
}

CairoSurface SurfaceOf(const PixelBuffer& pixels, cairo_format_t format) {
    return CairoSurface(cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(pixels.pixels), format,
                                                            pixels.width, pixels.height,
                                                            pixels.stride * static_cast<int>(sizeof(std::uint32_t))));
}

} // namespace

int WriteAsPng(const PixelBuffer& pixels, NewFile& file) {
    const CairoSurface surface = SurfaceOf(pixels, CAIRO_FORMAT_RGB24);
    return cairo_surface_write_to_png_stream(surface.get(), WriteBytes, &file) == CAIRO_STATUS_SUCCESS ? 0 : ENOMEM;
}

std::string EncodePng(const PixelBuffer& pixels, bool hasAlpha) {
    std::string bytes;
    const CairoSurface surface = SurfaceOf(pixels, hasAlpha ? CAIRO_FORMAT_ARGB32 : CAIRO_FORMAT_RGB24);
    if (cairo_surface_write_to_png_stream(surface.get(), AppendBytes, &bytes) != CAIRO_STATUS_SUCCESS)
        bytes.clear();
    return bytes;
}

} // namespace melkar
