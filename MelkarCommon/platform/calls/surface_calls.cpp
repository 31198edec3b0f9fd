#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/images/encoders.h>
#include <MelkarCommon/platform/measures.h>
#include <MelkarCommon/platform/pixels/pixel_discs.h>
#include <MelkarCommon/platform/surface.h>
#include <MelkarCommon/platform/surfaces/surface_state.h>

#include <algorithm>
#include <cstddef>
#include <malloc.h>
#include <new>

using namespace melkar;

namespace {

/// Exceptions (a lack of memory) end here: a surface or bitmap that can't be made is null.
template <class Make> auto NullOnFailure(Make make) -> decltype(make()) {
    try {
        return make();
    } catch (...) {
        return nullptr;
    }
}

/// On `picture`, if there is one; else null.
HDC MakeSurface(std::unique_ptr<Bitmap> picture, const Device& device) {
    if (picture == nullptr)
        return nullptr;
    return new HDC__(device, std::in_place_type<PictureTarget>, std::move(picture));
}

/// The pixels that a surface draws on, if any.
PixelPicture* SeenPixels(HDC surface) {
    Picture* picture = IsSurface(surface) ? surface->Shown() : nullptr;
    return picture ? PixelsOf(*picture) : nullptr;
}

} // namespace

HDC CreateMemorySurface(int width, int height, int dpi) {
    if (!IsPictureSize(width, height) || dpi < 1)
        return nullptr;
    return NullOnFailure([&] {
        const Device device{ScreenDevice(), dpi, {width, height}};
        return MakeSurface(MakePixelBitmap(device.size, kWhite, Owner::Surface), device);
    });
}

HDC WrapPixels(void* pixels, int width, int height, int strideBytes, int dpi) {
    if (!pixels || !IsPictureSize(width, height) || strideBytes % 4 != 0 || strideBytes / 4 < width || dpi < 1)
        return nullptr;
    return NullOnFailure([&] {
        const PixelBuffer memory{static_cast<std::uint32_t*>(pixels), width, height, strideBytes / 4};
        return MakeSurface(std::make_unique<Bitmap>(Owner::Surface, std::in_place_type<PixelPicture>, memory),
                           {ScreenDevice(), dpi, {width, height}});
    });
}

HDC CreateRecordingSurface(int width, int height, int dpi) {
    if (!IsPictureSize(width, height) || dpi < 1)
        return nullptr;
    return NullOnFailure([&] {
        const Device device{RecordDevice(), dpi, {width, height}};
        return MakeSurface(MakeRecordBitmap(device.size, kWhite, Owner::Surface), device);
    });
}

HDC CreatePageSurface(const char* path, PageFormat format, int width, int height, int dpi) {
    if (!path || !IsPictureSize(width, height) || dpi < 1)
        return nullptr;
    return NullOnFailure([&]() -> HDC {
        std::unique_ptr<PageFile> page = MakePageFile(path, format, width, height, dpi);
        if (!page || !page->BeginPage())
            return nullptr;
        const DeviceSize size{width, height};
        return new HDC__({PaperDevice(), dpi, size}, std::in_place_type<PageTarget>, PageTarget{std::move(page), size});
    });
}

HDC CreateCompatibleDC(HDC surface) {
    return NullOnFailure([&] { return new HDC__(DeviceOf(surface), std::in_place_type<PictureTarget>); });
}

HBITMAP CreateCompatibleBitmap(HDC surface, int width, int height) {
    if (!IsPictureSize(width, height))
        return nullptr;
    return NullOnFailure([&] {
        return HandleOf<HBITMAP>(MakeSuitingBitmap(DeviceOf(surface), {width, height}).release());
    });
}

std::size_t LiveObjectCount() { return CountOfAlive(); }

void TrimMemory() {
    TrimTexts();
    TrimDiscs();
    TrimPixels();
    malloc_trim(0); // small pieces, among them most of a font's, stay with the allocator else
}

BOOL DeleteDC(HDC surface) {
    if (!IsSurface(surface))
        return FALSE;
    surface->FlushLines();
    const bool isWritten = Finish(surface->target);
    delete surface;
    return isWritten ? TRUE : FALSE;
}

PixelView GetPixels(HDC surface) {
    PixelPicture* picture = SeenPixels(surface);
    if (!picture)
        return {nullptr, 0, 0, 0};
    const PixelBuffer& pixels = picture->Expose();
    return {pixels.pixels, pixels.width, pixels.height, pixels.stride};
}

int WritePng(HDC surface, const char* path) { return WritePicture(surface, path, "png"); }

int WritePicture(HDC surface, const char* path, const char* format) {
    PixelPicture* picture = SeenPixels(surface);
    return WritePictureFile(picture ? picture->Shown() : PixelBuffer{}, path, format);
}

std::vector<PictureFormat> PictureFormats() {
    std::vector<PictureFormat> formats;
    for (const Encoder& encoder : Encoders())
        formats.push_back(encoder.format);
    return formats;
}

std::string GetRecording(HDC surface) {
    Picture* picture = IsSurface(surface) ? surface->Shown() : nullptr;
    const RecordPicture* record = picture ? RecordOf(*picture) : nullptr;
    return record ? FormatRecording(record->Ops()) : std::string();
}
