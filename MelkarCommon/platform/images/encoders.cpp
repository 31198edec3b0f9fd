#include <MelkarCommon/platform/files/log_sink.h>
#include <MelkarCommon/platform/files/new_file.h>
#include <MelkarCommon/platform/files/paths.h>
#include <MelkarCommon/platform/images/encoders.h>
#include <MelkarCommon/platform/values/ascii.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

namespace melkar {

// Each stands in a file of its own, as `WriteAsPng` in png.cpp.
int WriteAsPng(const PixelBuffer& pixels, NewFile& file);
int WriteAsWebp(const PixelBuffer& pixels, NewFile& file);

std::span<const Encoder> Encoders() {
    static constexpr Encoder kEncoders[] = {
        {{"png", "PNG", "pixels, for every program"}, WriteAsPng},
        {{"webp", "WebP", "the same pixels in fewer bytes; up to 16383 a side"}, WriteAsWebp},
    };
    return kEncoders;
}

namespace {

const Encoder* FindEncoder(std::string_view suffix) {
    for (const Encoder& encoder : Encoders())
        if (EqualNoCase(suffix, encoder.format.suffix))
            return &encoder;
    return nullptr;
}

const Encoder* FindEncoder(const char* path, const char* format) {
    if (format != nullptr)
        return FindEncoder(format);
    const std::string suffix = path != nullptr ? std::filesystem::path(path).extension().string() : "";
    return !suffix.empty() ? FindEncoder(std::string_view(suffix).substr(1)) : nullptr;
}

/// @return 0 or the number of the error.
int WriteWith(const Encoder& encoder, const PixelBuffer& pixels, const std::string& path) {
    const std::unique_ptr<NewFile> file = NewFile::Create(path);
    if (file == nullptr)
        return errno;
    if (const int error = encoder.write(pixels, *file); error != 0)
        file->Abandon(error);
    return file->Commit();
}

} // namespace

int WritePictureFile(const PixelBuffer& pixels, const char* path, const char* format) {
    const Encoder* encoder = FindEncoder(path, format);
    const bool sensible = path != nullptr && pixels.pixels != nullptr && pixels.width > 0 && pixels.height > 0;
    const int error = !sensible            ? EINVAL
                      : encoder == nullptr ? ENOTSUP
                                           : WriteWith(*encoder, pixels, ResolvePath(path));
    if (error == 0)
        return 0;
    const std::string kind = encoder != nullptr ? encoder->format.name : "picture";
    ReportFailure(
        (kind + " file [" + (path != nullptr ? path : "") + "] not written: " + std::strerror(error)).c_str());
    errno = error;
    return -1;
}

} // namespace melkar
