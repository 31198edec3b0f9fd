#include <MelkarCommon/platform/files/late_library.h>
#include <MelkarCommon/platform/files/log_sink.h>
#include <MelkarCommon/platform/files/paths.h>
#include <MelkarCommon/platform/images/bitmap_head.h>
#include <MelkarCommon/platform/images/image_file.h>
#include <MelkarCommon/platform/measures.h>
#include <MelkarCommon/platform/pixels/pixel_blit.h>
#include <MelkarCommon/platform/pixels/pixel_memory.h>
#include <MelkarCommon/platform/pixels/pixel_spans.h>

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <memory>
#include <string_view>
#include <sys/stat.h>

namespace melkar {

namespace {

/// Only who reads a picture file needs it.
struct Decoder : LateLibrary {
    Decoder() : LateLibrary("libgdk_pixbuf-2.0.so.0") {}

    MELKAR_LATE(gdk_pixbuf_get_file_info);
    MELKAR_LATE(gdk_pixbuf_get_has_alpha);
    MELKAR_LATE(gdk_pixbuf_get_height);
    MELKAR_LATE(gdk_pixbuf_get_n_channels);
    MELKAR_LATE(gdk_pixbuf_get_rowstride);
    MELKAR_LATE(gdk_pixbuf_get_width);
    MELKAR_LATE(gdk_pixbuf_new_from_file);
    MELKAR_LATE(gdk_pixbuf_read_pixels);
};

const Decoder& TheDecoder() {
    static const Decoder decoder;
    return decoder;
}

struct PixbufRelease {
    void operator()(GdkPixbuf* pixbuf) const { g_object_unref(pixbuf); }
};
using PixbufPointer = std::unique_ptr<GdkPixbuf, PixbufRelease>;

/// Of a picture in a file: loaders take up to a dozen bytes a pixel.
constexpr std::int64_t kMostPixelsOfFile = std::int64_t{1} << 26;
constexpr off_t kMostBytesOfFile = off_t{1} << 28; ///< some loaders hold all of it

bool IsFileToLook(const char* path) {
    struct stat status {};
    return stat(path, &status) == 0 && S_ISREG(status.st_mode) && status.st_size <= kMostBytesOfFile;
}

/// Whether the loader of the file's format goes no further than its head where we don't want the picture. Those of
/// others ask for the memory of a picture as large as its head claims before they tell the size.
bool IsFormatWithHead(const char* path) {
    using namespace std::string_view_literals;
    constexpr std::string_view kStarts[] = {"BM"sv,    "\x89PNG"sv, "\xFF\xD8\xFF"sv, "GIF8"sv,
                                            "II*\0"sv, "MM\0*"sv,   "<"sv /* SVG */,  "\xEF\xBB\xBF<"sv};
    std::array<char, 12> bytes{};
    std::ifstream(path, std::ios::binary).read(bytes.data(), bytes.size());
    const std::string_view start(bytes.data(), bytes.size());
    return std::any_of(std::begin(kStarts), std::end(kStarts),
                       [start](std::string_view known) { return start.starts_with(known); }) ||
           (start.starts_with("RIFF") && start.ends_with("WEBP"));
}

/// The file's picture if its head promises a size that we'd take; a few bytes can claim gigabytes.
PixbufPointer OpenPicture(const char* path) {
    int width = 0;
    int height = 0;
    if (!IsFileToLook(path) || !IsFormatWithHead(path) || IsCutBitmap(path))
        return nullptr;
    const Decoder& decoder = TheDecoder();
    if (!decoder.IsWhole()) {
        Report(("picture file [" + std::string(path) + "] not read: " + decoder.Fault()).c_str());
        return nullptr;
    }
    if (decoder.gdk_pixbuf_get_file_info(path, &width, &height) == nullptr || !IsPictureSize(width, height) ||
        std::int64_t{width} * height > kMostPixelsOfFile)
        return nullptr;
    return PixbufPointer(decoder.gdk_pixbuf_new_from_file(path, nullptr));
}

/// One row of a pixbuf: three or four bytes a pixel, transparent parts laid on white.
void ConvertRow(std::uint32_t* out, const guint8* bytes, int width, int channels, bool hasAlpha) {
    for (int x = 0; x < width; ++x, bytes += channels) {
        const Color color = ToColor(RGB(bytes[0], bytes[1], bytes[2]));
        out[x] = hasAlpha ? MixColor255(kWhitePixel, color, bytes[3]) : color;
    }
}

OwnPixels ToPixels(const GdkPixbuf* pixbuf) {
    const Decoder& decoder = TheDecoder();
    const int width = decoder.gdk_pixbuf_get_width(pixbuf);
    const int height = decoder.gdk_pixbuf_get_height(pixbuf);
    OwnPixels picture(width, height);
    if (!picture.AreThere())
        return picture;
    const guint8* bytes = decoder.gdk_pixbuf_read_pixels(pixbuf);
    const auto rowBytes = static_cast<std::ptrdiff_t>(decoder.gdk_pixbuf_get_rowstride(pixbuf));
    for (int y = 0; y < height; ++y)
        ConvertRow(PixelAt(picture.Buffer(), 0, y), bytes + y * rowBytes, width,
                   decoder.gdk_pixbuf_get_n_channels(pixbuf), decoder.gdk_pixbuf_get_has_alpha(pixbuf) != 0);
    return picture;
}

} // namespace

OwnPixels LoadImageFile(const char* path) {
    const PixbufPointer pixbuf = path != nullptr ? OpenPicture(ResolvePath(path).c_str()) : nullptr;
    return pixbuf != nullptr ? ToPixels(pixbuf.get()) : OwnPixels();
}

OwnPixels Resized(const PixelBuffer& picture, int width, int height, DWORD operation) {
    OwnPixels scaled(width, height);
    if (!scaled.AreThere())
        return scaled;
    const RECT whole{0, 0, width, height};
    FillRows(scaled.Buffer(), whole, ToColor(RGB(0, 0, 0))); // "or" takes the picture as it is
    BlitPixels(scaled.Buffer(), whole, whole, picture, {0, 0, picture.width, picture.height},
               operation == SRCCOPY ? SRCCOPY : SRCPAINT);
    return scaled;
}

} // namespace melkar
