#include <MelkarCommon/platform/calls/failing.h>
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
    return OrFailure([&] {
        const Device device{ScreenDevice(), dpi, {width, height}};
        return MakeSurface(MakePixelBitmap(device.size, kWhite, Owner::Surface), device);
    });
}

HDC WrapPixels(void* pixels, int width, int height, int strideBytes, int dpi) {
    if (!pixels || !IsPictureSize(width, height) || strideBytes % 4 != 0 || strideBytes / 4 < width || dpi < 1)
        return nullptr;
    return OrFailure([&] {
        const PixelBuffer memory{static_cast<std::uint32_t*>(pixels), width, height, strideBytes / 4};
        return MakeSurface(std::make_unique<Bitmap>(Owner::Surface, std::in_place_type<PixelPicture>, memory),
                           {ScreenDevice(), dpi, {width, height}});
    });
}

HDC CreateRecordingSurface(int width, int height, int dpi) {
    if (!IsPictureSize(width, height) || dpi < 1)
        return nullptr;
    return OrFailure([&] {
        const Device device{RecordDevice(), dpi, {width, height}};
        return MakeSurface(MakeRecordBitmap(device.size, kWhite, Owner::Surface), device);
    });
}

HDC CreatePageSurface(const char* path, PageFormat format, int width, int height, int dpi) {
    if (!path || !IsPictureSize(width, height) || dpi < 1)
        return nullptr;
    return OrFailure([&]() -> HDC {
        std::unique_ptr<PageFile> page = MakePageFile(path, format, width, height, dpi);
        if (!page || !page->BeginPage())
            return nullptr;
        const DeviceSize size{width, height};
        return new HDC__({PaperDevice(), dpi, size}, std::in_place_type<PageTarget>, PageTarget{std::move(page), size});
    });
}

HDC CreateCompatibleDC(HDC surface) {
    return OrFailure([&] { return new HDC__(DeviceOf(surface), std::in_place_type<PictureTarget>); });
}

HBITMAP CreateCompatibleBitmap(HDC surface, int width, int height) {
    if (!IsPictureSize(width, height))
        return nullptr;
    return OrFailure([&] {
        return HandleOf<HBITMAP>(MakeSuitingBitmap(DeviceOf(surface), {width, height}).release());
    });
}

std::size_t LiveObjectCount() { return CountOfAlive(); }

std::size_t MissingFontCount() { return CountOfMissingFonts(); }

void TrimMemory() {
    TrimTexts();
    TrimDiscs();
    TrimPixels();
    malloc_trim(0); // small pieces, among them most of a font's, stay with the allocator else
}

BOOL DeleteDC(HDC surface) {
    if (!IsSurface(surface))
        return FALSE;
    const BOOL isWritten = OrFailure([&] {
        surface->FlushLines();
        return Finish(surface->target) ? TRUE : FALSE;
    });
    delete surface;
    return isWritten;
}

PixelView GetPixels(HDC surface) {
    return OrFailure([&]() -> PixelView {
        PixelPicture* picture = SeenPixels(surface);
        if (!picture)
            return {};
        const PixelBuffer& pixels = picture->Expose();
        return {pixels.pixels, pixels.width, pixels.height, pixels.stride};
    });
}

int WritePng(HDC surface, const char* path) { return WritePicture(surface, path, "png"); }

int WritePicture(HDC surface, const char* path, const char* format) {
    const auto write = [&] {
        PixelPicture* picture = SeenPixels(surface);
        return WritePictureFile(picture ? picture->Shown() : PixelBuffer{}, path, format);
    };
    return OrFailure(write, -1);
}

std::vector<PictureFormat> PictureFormats() {
    return OrFailure([] {
        std::vector<PictureFormat> formats;
        for (const Encoder& encoder : Encoders())
            formats.push_back(encoder.format);
        return formats;
    });
}

std::string GetRecording(HDC surface) {
    return OrFailure([&] {
        Picture* picture = IsSurface(surface) ? surface->Shown() : nullptr;
        const RecordPicture* record = picture ? RecordOf(*picture) : nullptr;
        return record ? FormatRecording(record->Ops()) : std::string();
    });
}
