#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/images/image_file.h>
#include <MelkarCommon/platform/measures.h>
#include <MelkarCommon/platform/pixels/pixel_backend.h>
#include <MelkarCommon/platform/pixels/pixel_memory.h>
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

/// A picture of one colour, which waits to be written.
std::unique_ptr<Bitmap> MakePicture(const PixelBuffer& memory, COLORREF color, Owner owner) {
    auto picture = std::make_unique<Bitmap>(memory, true, owner);
    picture->pending = {ToColor(color), {0, 0, memory.width, memory.height}};
    picture->isExposed = false;
    return picture;
}

HDC MakeSurface(std::unique_ptr<Bitmap> picture, TextMedium medium, int dpi) {
    const DeviceSize size{picture->pixels.width, picture->pixels.height};
    auto surface = std::make_unique<HDC__>(medium, dpi, size);
    surface->ownBitmap = std::move(picture);
    surface->Take(*surface->ownBitmap);
    return surface.release();
}

} // namespace

HDC CreateMemorySurface(int width, int height, int dpi) {
    if (!IsPictureSize(width, height) || dpi < 1)
        return nullptr;
    return NullOnFailure([&]() -> HDC {
        PixelBuffer picture{TakePixels(width, height), width, height, width};
        if (!picture.pixels)
            return nullptr;
        return MakeSurface(MakePicture(picture, RGB(255, 255, 255), Owner::Surface), TextMedium::Pixels, dpi);
    });
}

HDC WrapPixels(void* pixels, int width, int height, int strideBytes, int dpi) {
    if (!pixels || !IsPictureSize(width, height) || strideBytes % 4 != 0 || strideBytes / 4 < width || dpi < 1)
        return nullptr;
    return NullOnFailure([&] {
        const PixelBuffer picture{static_cast<std::uint32_t*>(pixels), width, height, strideBytes / 4};
        return MakeSurface(std::make_unique<Bitmap>(picture, false, Owner::Surface), TextMedium::Pixels, dpi);
    });
}

HDC CreateRecordingSurface(int width, int height, int dpi) {
    if (!IsPictureSize(width, height) || dpi < 1)
        return nullptr;
    return NullOnFailure([&] {
        return MakeSurface(std::make_unique<Bitmap>(width, height, TextMedium::Fixed, Owner::Surface),
                           TextMedium::Fixed, dpi);
    });
}

HDC CreatePageSurface(const char* path, PageFormat format, int width, int height, int dpi) {
    if (!path || !IsPictureSize(width, height) || dpi < 1)
        return nullptr;
    return NullOnFailure([&]() -> HDC {
        std::unique_ptr<PageFile> page = MakePageFile(path, format, width, height, dpi);
        if (!page || !page->BeginPage())
            return nullptr;
        auto surface = std::make_unique<HDC__>(TextMedium::Page, dpi, DeviceSize{width, height});
        surface->bounds = {0, 0, width, height};
        surface->page = page.get();
        surface->backend = std::move(page);
        return surface.release();
    });
}

HDC CreateCompatibleDC(HDC surface) {
    return NullOnFailure([&] {
        const DeviceSize size = IsSurface(surface) ? surface->device : DeviceSize{0, 0};
        auto made = std::make_unique<HDC__>(IsSurface(surface) ? surface->medium : TextMedium::Pixels,
                                            GetDeviceCaps(surface, LOGPIXELSY), size);
        made->Take(StockBitmap());
        return made.release();
    });
}

HBITMAP CreateCompatibleBitmap(HDC surface, int width, int height) {
    if (!IsPictureSize(width, height))
        return nullptr;
    return NullOnFailure([&]() -> HBITMAP {
        const TextMedium medium = IsSurface(surface) ? surface->medium : TextMedium::Pixels;
        if (medium != TextMedium::Pixels)
            return HandleOf<HBITMAP>(new Bitmap(width, height, medium, Owner::Caller));
        const PixelBuffer picture{TakePixels(width, height), width, height, width};
        if (!picture.pixels)
            return nullptr;
        return HandleOf<HBITMAP>(MakePicture(picture, RGB(0, 0, 0), Owner::Caller).release());
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
    const PixelBuffer* picture = IsSurface(surface) ? surface->ShownPixels() : nullptr;
    if (!picture)
        return {nullptr, 0, 0, 0};
    if (!surface->bitmap->isExposed) {
        surface->bitmap->isExposed = true;
        surface->backend = MakePixelBackend(*picture);
    }
    return {picture->pixels, picture->width, picture->height, picture->stride};
}

int WritePng(HDC surface, const char* path) {
    const PixelBuffer* picture = IsSurface(surface) ? surface->ShownPixels() : nullptr;
    return WritePngFile(picture ? *picture : PixelBuffer{}, path);
}

std::string GetRecording(HDC surface) {
    if (!IsSurface(surface) || !surface->bitmap || !surface->bitmap->IsRecord())
        return {};
    surface->FlushLines();
    return FormatRecording(surface->bitmap->ops);
}
