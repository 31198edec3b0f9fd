#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/images/image_file.h>
#include <MelkarCommon/platform/measures.h>
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
    auto surface = std::make_unique<HDC__>(device);
    surface->ownBitmap = std::move(picture);
    surface->Take(*surface->ownBitmap);
    return surface.release();
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
        auto surface = std::make_unique<HDC__>(Device{PaperDevice(), dpi, {width, height}});
        surface->bounds = {0, 0, width, height};
        surface->page = page.get();
        surface->backend = std::move(page);
        return surface.release();
    });
}

HDC CreateCompatibleDC(HDC surface) {
    return NullOnFailure([&] {
        auto made = std::make_unique<HDC__>(DeviceOf(surface));
        made->Take(StockBitmap());
        return made.release();
    });
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
    TrimPixels();
    malloc_trim(0); // small pieces, among them most of a font's, stay with the allocator else
}

BOOL DeleteDC(HDC surface) {
    if (!IsSurface(surface))
        return FALSE;
    surface->FlushLines();
    const bool written = !surface->page || surface->page->Finish();
    delete surface;
    return written ? TRUE : FALSE;
}

PixelView GetPixels(HDC surface) {
    PixelPicture* picture = IsSurface(surface) ? surface->Pixels() : nullptr;
    if (!picture)
        return {nullptr, 0, 0, 0};
    const PixelBuffer& pixels = picture->Expose();
    return {pixels.pixels, pixels.width, pixels.height, pixels.stride};
}

int WritePng(HDC surface, const char* path) {
    PixelPicture* picture = IsSurface(surface) ? surface->Pixels() : nullptr;
    return WritePngFile(picture ? picture->Shown() : PixelBuffer{}, path);
}

std::string GetRecording(HDC surface) {
    if (!IsSurface(surface) || !surface->bitmap)
        return {};
    surface->FlushLines();
    const RecordPicture* record = RecordOf(surface->bitmap->picture);
    return record ? FormatRecording(record->Ops()) : std::string();
}
