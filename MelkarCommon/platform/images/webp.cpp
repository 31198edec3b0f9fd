#include <MelkarCommon/platform/files/late_library.h>
#include <MelkarCommon/platform/files/new_file.h>
#include <MelkarCommon/platform/images/encoders.h>
#include <MelkarCommon/platform/seam/color.h>

#include <algorithm>
#include <cerrno>
#include <webp/encode.h>

namespace melkar {

namespace {

constexpr int kEffort = 6; ///< of 9: beyond it each per cent of size costs a multiple of the time

/// Only pictures of this format need it.
struct Codec : LateLibrary {
    Codec() : LateLibrary("libwebp.so.7") {}

    MELKAR_LATE(WebPConfigInitInternal);
    MELKAR_LATE(WebPConfigLosslessPreset);
    MELKAR_LATE(WebPPictureInitInternal);
    MELKAR_LATE(WebPPictureAlloc);
    MELKAR_LATE(WebPPictureFree);
    MELKAR_LATE(WebPEncode);
};

int WriteBytes(const std::uint8_t* bytes, std::size_t count, const WebPPicture* picture) noexcept {
    return static_cast<NewFile*>(picture->custom_ptr)->Write(bytes, count) ? 1 : 0;
}

/// The codec gets a copy, since it works on what it gets.
void CopyOpaque(const PixelBuffer& pixels, const WebPPicture& picture) {
    for (int y = 0; y < pixels.height; ++y) {
        const std::uint32_t* row = PixelAt(pixels, 0, y);
        std::transform(row, row + pixels.width, picture.argb + std::ptrdiff_t{y} * picture.argb_stride,
                       [](std::uint32_t pixel) { return pixel | kOpaque; });
    }
}

int Encode(const Codec& codec, const WebPConfig& config, const PixelBuffer& pixels, WebPPicture& picture) {
    if (codec.WebPPictureAlloc(&picture) == 0)
        return ENOMEM;
    CopyOpaque(pixels, picture);
    return codec.WebPEncode(&config, &picture) != 0 ? 0 : ENOMEM;
}

} // namespace

int WriteAsWebp(const PixelBuffer& pixels, NewFile& file) {
    if (pixels.width > WEBP_MAX_DIMENSION || pixels.height > WEBP_MAX_DIMENSION)
        return EFBIG;
    static const Codec codec;
    WebPConfig config;
    WebPPicture picture;
    if (!codec.IsWhole() ||
        codec.WebPConfigInitInternal(&config, WEBP_PRESET_DEFAULT, 0, WEBP_ENCODER_ABI_VERSION) == 0 ||
        codec.WebPConfigLosslessPreset(&config, kEffort) == 0 ||
        codec.WebPPictureInitInternal(&picture, WEBP_ENCODER_ABI_VERSION) == 0)
        return ELIBACC;
    picture.use_argb = 1;
    picture.width = pixels.width;
    picture.height = pixels.height;
    picture.writer = WriteBytes;
    picture.custom_ptr = &file;
    const int error = Encode(codec, config, pixels, picture);
    codec.WebPPictureFree(&picture);
    return error;
}

} // namespace melkar
