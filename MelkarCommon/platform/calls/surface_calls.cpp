#include <MelkarCommon/platform/calls/failing.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/files/new_file.h>
#include <MelkarCommon/platform/files/profile_snapshot.h>
#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/host_surfaces.h>
#include <MelkarCommon/platform/images/encoders.h>
#include <MelkarCommon/platform/measures.h>
#include <MelkarCommon/platform/pixels/pixel_discs.h>
#include <MelkarCommon/platform/seam/pixel_grid.h>
#include <MelkarCommon/platform/surface.h>
#include <MelkarCommon/platform/surfaces/surface_state.h>
#include <MelkarCommon/platform/tracing.h>

#include <algorithm>
#include <cstddef>
#include <malloc.h>
#include <new>
#include <utility>

using namespace melkar;

namespace {

/// On `picture`, if there is one; else null.
HDC MakeSurface(std::unique_ptr<Bitmap> picture, const Device& device) {
    if (picture == nullptr)
        return nullptr;
    return new HDC__(device, std::in_place_type<PictureTarget>, std::move(picture));
}

HDC MakeMemorySurface(int width, int height, int dpi, double scale) {
    if (!IsPictureSize(width, height) || dpi < 1 || !IsScale(scale))
        return nullptr;
    return OrFailure([&] {
        const Device device{ScreenDevice{scale}, dpi, {width, height}};
        return MakeSurface(MakePixelBitmap(device.size, scale, kWhite, Owner::Surface), device);
    });
}

/// On memory of the host for so many units.
HDC Wrap(void* pixels, DeviceSize size, double scale, int strideBytes, int dpi) {
    if (!pixels || !IsPictureSize(size.width, size.height) || strideBytes % 4 != 0 || dpi < 1 || !IsScale(scale))
        return nullptr;
    const PixelGrid grid(scale);
    const PixelBuffer memory{static_cast<std::uint32_t*>(pixels), grid.Edge(size.width), grid.Edge(size.height),
                             strideBytes / 4, scale};
    if (!IsPictureSize(memory.width, memory.height) || memory.stride < memory.width)
        return nullptr;
    return OrFailure([&] {
        return MakeSurface(std::make_unique<Bitmap>(Owner::Surface, std::in_place_type<PixelPicture>, memory),
                           {ScreenDevice{scale}, dpi, size});
    });
}

bool IsPage(HDC surface) { return std::holds_alternative<PageTarget>(surface->target); }

bool IsPageSize(int width, int height, int dpi) {
    if (IsPictureSize(width, height) && dpi > 0)
        return true;
    KeepFailure("no page has such a size");
    return false;
}

/// Of a document that has no page yet, if there is one; else null.
HDC MakePage(std::unique_ptr<PageFile> page, DeviceSize size, int dpi) {
    if (!page || !page->BeginPage())
        return nullptr;
    page->BeginPart(PageRole::Figure, {0, 0, size.width, size.height}, ""); // all of it
    return new HDC__({PaperDevice(), dpi, size}, std::in_place_type<PageTarget>, PageTarget{std::move(page), size});
}

HDC MakeRecordSurface(const Device& device, StepNames steps) {
    if (!IsPictureSize(device.size.width, device.size.height) || device.dpi < 1)
        return nullptr;
    return OrFailure([&] { return MakeSurface(MakeRecordBitmap(device.size, kWhite, Owner::Surface, steps), device); });
}

/// The pixels that a surface draws on, if any.
PixelPicture* SeenPixels(HDC surface) {
    Picture* picture = IsSurface(surface) ? surface->Shown() : nullptr;
    return picture ? PixelsOf(*picture) : nullptr;
}

} // namespace

HDC CreateMemorySurface(int width, int height, int dpi) { return MakeMemorySurface(width, height, dpi, 1); }

HDC CreateScaledSurface(int width, int height, double scale) {
    return MakeMemorySurface(width, height, kScreenDpi, scale);
}

HDC WrapPixels(void* pixels, int width, int height, int strideBytes, int dpi) {
    return Wrap(pixels, {width, height}, 1, strideBytes, dpi);
}

HDC WrapScaledPixels(void* pixels, int width, int height, int strideBytes, double scale) {
    return Wrap(pixels, {width, height}, scale, strideBytes, kScreenDpi);
}

HDC CreateRecordingSurface(int width, int height, int dpi) {
    return MakeRecordSurface({RecordDevice(), dpi, {width, height}}, StepNames::Drop);
}

HDC CreateTracingSurface(int width, int height, int dpi) {
    return MakeRecordSurface({TraceDevice(), dpi, {width, height}}, StepNames::Keep);
}

HDC CreatePageSurface(const char* path, PageFormat format, int width, int height, int dpi) {
    if (!path || !IsPageSize(width, height, dpi))
        return nullptr;
    return OrWords([&] { return MakePage(MakePageFile(path, format, width, height, dpi), {width, height}, dpi); });
}

HDC melkar::CreateContextSurface(cairo_t* context, int width, int height, int dpi) {
    if (!IsPageSize(width, height, dpi))
        return nullptr;
    return OrWords([&] { return MakePage(MakeContextPage(context, width, height, dpi), {width, height}, dpi); });
}

HDC melkar::CreatePageFor(PieceTaker take, PageFormat format, int width, int height, int dpi) {
    if (!take || !IsPageSize(width, height, dpi))
        return nullptr;
    return OrWords([&]() -> HDC {
        std::unique_ptr<NewFile> file = NewFile::HandedTo(std::move(take));
        if (!file)
            return nullptr;
        return MakePage(MakePageFile(std::move(file), format, width, height, dpi), {width, height}, dpi);
    });
}

HDC melkar::CreatePageInMemory(std::string& bytes, PageFormat format, int width, int height, int dpi) {
    const auto append = [&bytes, isFirst = true](std::string_view piece) mutable {
        if (std::exchange(isFirst, false))
            bytes.clear();
        bytes.append(piece);
        return true;
    };
    return OrFailure([&] { return CreatePageFor(append, format, width, height, dpi); });
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
    ForgetProfile(ReadingFor::Graphs);
    ForgetProfile(ReadingFor::Dates);
    TrimTexts();
    TrimDiscs();
    TrimPixels();
    malloc_trim(0); // small pieces, among them most of a font's, stay with the allocator else
}

BOOL DeleteDC(HDC surface) {
    if (!IsSurface(surface))
        return FALSE;
    const auto finish = [&] {
        surface->FlushLines();
        return Finish(surface->target) ? TRUE : FALSE;
    };
    const BOOL isWritten = IsPage(surface) ? OrWords(finish) : OrFailure(finish);
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
    return OrWords(write, -1);
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
