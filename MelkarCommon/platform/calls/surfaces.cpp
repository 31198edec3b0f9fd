#include <MelkarCommon/platform/calls/surface_state.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/images/image_file.h>
#include <MelkarCommon/platform/measures.h>
#include <MelkarCommon/platform/pixels/pixel_backend.h>
#include <MelkarCommon/platform/pixels/pixel_memory.h>
#include <MelkarCommon/platform/surface.h>

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

HDC__::HDC__(TextMedium surfaceMedium, int surfaceDpi, DeviceSize deviceSize)
    : HandleHead(ObjectKind::Surface), medium(surfaceMedium), dpi(surfaceDpi), device(deviceSize),
      pen(&StockPen(BLACK_PEN)), brush(&StockBrush(WHITE_BRUSH)), font(&StockFont()) {
    CountAlive(1);
}

HDC__::~HDC__() {
    for (GdiObject* object : {static_cast<GdiObject*>(pen), static_cast<GdiObject*>(brush),
                              static_cast<GdiObject*>(font), static_cast<GdiObject*>(bitmap)})
        if (object && object->owner == Owner::Caller)
            --object->selections;
    CountAlive(-1);
}

Bitmap* HDC__::Take(Bitmap& picture) {
    if (picture.owner == Owner::Surface && &picture != ownBitmap.get())
        return nullptr;
    if (picture.owner == Owner::Caller && picture.selections > 0 && &picture != bitmap)
        return nullptr;
    FlushLines();
    std::unique_ptr<Backend> drawing;
    if (picture.IsRecord())
        drawing = MakeRecordingBackend(picture.ops, picture.pixels.width, picture.pixels.height);
    else if (picture.pixels.pixels)
        drawing = MakePixelBackend(picture.pixels, picture.isExposed ? nullptr : &picture.pending);
    Bitmap* former = bitmap;
    if (former && former->owner == Owner::Caller)
        --former->selections;
    if (picture.owner == Owner::Caller)
        ++picture.selections;
    bitmap = &picture;
    backend = std::move(drawing);
    bounds = {0, 0, picture.pixels.width, picture.pixels.height};
    return former;
}

const PixelBuffer* HDC__::ShownPixels() {
    if (!bitmap || !bitmap->pixels.pixels)
        return nullptr;
    FlushLines();
    backend->Flush();
    return &bitmap->pixels;
}

Backend* HDC__::Drawing() {
    FlushLines();
    if (bitmap)
        bitmap->ForgetFile();
    return backend.get();
}

void HDC__::FlushLines() {
    if (backend && lines.points.size() > lines.stroke.drawn + 1)
        backend->StrokePolyline(lines.points, lines.stroke);
    lines.points.clear();
}

/// Memory that was handed out may be looked at after any call, so nothing waits there: each line is drawn as it comes,
/// and those before it count for the corner.
void HDC__::AddLine(POINT from, POINT to) {
    constexpr std::size_t kMostPoints = 4096;
    if (bitmap)
        bitmap->ForgetFile();
    const LineLook look{pen->style, pen->width, pen->color, bkMode, bkColor};
    if (!lines.GoOnAt(from, look)) {
        FlushLines();
        lines.points.push_back(from);
        lines.look = look;
        lines.stroke = StrokeOf(*this, *pen);
        lines.stroke.phase = patternPhase;
    } else if (lines.points.size() == kMostPoints) {
        const POINT before = lines.points[kMostPoints - 2];
        FlushLines();
        lines.points.assign({before, from});
        lines.stroke.phase = patternPhase - (lines.stroke.IsSolid() ? 0 : Distance(before, from));
        lines.stroke.drawn = 1;
    }
    if (!lines.stroke.IsSolid())
        patternPhase += Distance(from, to);
    lines.points.push_back(to);
    if (!bitmap || !bitmap->isExposed || !bitmap->pixels.pixels)
        return;
    backend->StrokePolyline(lines.points, lines.stroke);
    lines.stroke.drawn = lines.points.size() - 1;
}

bool WaitingLines::GoOnAt(POINT from, const LineLook& next) const {
    return !points.empty() && points.back().x == from.x && points.back().y == from.y && look == next;
}

std::shared_ptr<TextFace> HDC__::Face() const {
    if (font->description.lfHeight != 0)
        return FindFace(font->description, medium);
    LOGFONTA scaled = font->description;
    scaled.lfHeight = -std::max(1, MulDiv(kDefaultEm, dpi, kScreenDpi));
    return FindFace(scaled, medium);
}

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
