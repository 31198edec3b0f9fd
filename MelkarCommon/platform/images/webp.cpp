#include <MelkarCommon/platform/files/new_file.h>
#include <MelkarCommon/platform/images/encoders.h>
#include <MelkarCommon/platform/seam/color.h>

#include <algorithm>
#include <cerrno>
#include <dlfcn.h>
#include <webp/encode.h>

namespace melkar {

namespace {

constexpr int kEffort = 6; ///< of 9: beyond it each per cent of size costs a multiple of the time

/// The codec's functions, of a library that most processes never need: it is loaded with the first such picture, and
/// where there is none, only these pictures fail.
class Codec {
public:
    /// Null if there is no library, or one that isn't what its header promised.
    static const Codec* Get() {
        static const Codec codec;
        return codec.m_isWhole ? &codec : nullptr;
    }

    decltype(WebPConfigInitInternal)* initConfig = nullptr;
    decltype(WebPConfigLosslessPreset)* setLossless = nullptr;
    decltype(WebPPictureInitInternal)* initPicture = nullptr;
    decltype(WebPPictureAlloc)* allocate = nullptr;
    decltype(WebPPictureFree)* release = nullptr;
    decltype(WebPEncode)* encode = nullptr;

private:
    Codec() {
        m_library = dlopen("libwebp.so.7", RTLD_NOW | RTLD_LOCAL);
        m_isWhole = m_library != nullptr && Find(initConfig, "WebPConfigInitInternal") &&
                    Find(setLossless, "WebPConfigLosslessPreset") && Find(initPicture, "WebPPictureInitInternal") &&
                    Find(allocate, "WebPPictureAlloc") && Find(release, "WebPPictureFree") &&
                    Find(encode, "WebPEncode");
    }

    template <class Function> bool Find(Function*& function, const char* name) {
        function = reinterpret_cast<Function*>(dlsym(m_library, name));
        return function != nullptr;
    }

    void* m_library = nullptr;
    bool m_isWhole = false;
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
    if (codec.allocate(&picture) == 0)
        return ENOMEM;
    CopyOpaque(pixels, picture);
    return codec.encode(&config, &picture) != 0 ? 0 : ENOMEM;
}

} // namespace

int WriteAsWebp(const PixelBuffer& pixels, NewFile& file) {
    if (pixels.width > WEBP_MAX_DIMENSION || pixels.height > WEBP_MAX_DIMENSION)
        return EFBIG;
    const Codec* codec = Codec::Get();
    WebPConfig config;
    WebPPicture picture;
    if (codec == nullptr || codec->initConfig(&config, WEBP_PRESET_DEFAULT, 0, WEBP_ENCODER_ABI_VERSION) == 0 ||
        codec->setLossless(&config, kEffort) == 0 || codec->initPicture(&picture, WEBP_ENCODER_ABI_VERSION) == 0)
        return ELIBACC;
    picture.use_argb = 1;
    picture.width = pixels.width;
    picture.height = pixels.height;
    picture.writer = WriteBytes;
    picture.custom_ptr = &file;
    const int error = Encode(*codec, config, pixels, picture);
    codec->release(&picture);
    return error;
}

} // namespace melkar
