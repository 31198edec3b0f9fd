#include <MelkarCommon/platform/calls/failing.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/images/image_file.h>
#include <MelkarCommon/platform/surfaces/picture.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

using namespace melkar;

namespace {

template <class Handle, class Object, class... Arguments> Handle Make(Arguments&&... arguments) {
    return HandleOf<Handle>(new (std::nothrow) Object(std::forward<Arguments>(arguments)...));
}

/// False if there is no such object, if it isn't the caller's, or if it is selected somewhere.
template <class Object> bool DeleteUnused(Object* object) {
    if (!object || object->owner != Owner::Caller || object->selections > 0)
        return false;
    delete object;
    return true;
}

/// Null for null pixels.
HANDLE MakePicture(OwnPixels pixels, OwnPixels file) {
    if (!pixels.AreThere())
        return nullptr;
    return Make<HANDLE, Bitmap>(Owner::Caller, std::in_place_type<PixelPicture>, std::move(pixels), std::move(file));
}

/// Scaled, unless both sides are 0. Null if it can't be read.
HANDLE LoadPicture(const char* path, int width, int height) {
    OwnPixels file = LoadImageFile(path);
    const PixelBuffer& size = file.Buffer();
    const int newWidth = width != 0 ? width : size.width;
    const int newHeight = height != 0 ? height : size.height;
    if (newWidth == size.width && newHeight == size.height)
        return MakePicture(std::move(file), OwnPixels());
    OwnPixels scaled = file.AreThere() ? Resized(size, newWidth, newHeight, SRCCOPY) : OwnPixels();
    return MakePicture(std::move(scaled), std::move(file));
}

BITMAP Describe(const Picture& picture) {
    const auto withoutMemory = [](DeviceSize size) { return BITMAP{0, size.width, size.height, 0, 1, 32, nullptr}; };
    return std::visit(Overloaded{
                          [&](const NoPicture&) {
                              return withoutMemory({0, 0});
                          },
                          [&](const PixelPicture& pixels) { return pixels.Description(); },
                          [&](const RecordPicture& record) { return withoutMemory(record.Size()); },
                      },
                      picture);
}

} // namespace

HPEN CreatePen(int style, int width, COLORREF color) { return Make<HPEN, Pen>(style, width, color); }

HPEN ExtCreatePen(DWORD style, DWORD width, const LOGBRUSH* brush, DWORD, const DWORD*) {
    if (!brush)
        return nullptr;
    return CreatePen(static_cast<int>(style & PS_STYLE_MASK), static_cast<int>(std::min<DWORD>(width, 0x7FFF)),
                     brush->lbColor);
}

HBRUSH CreateSolidBrush(COLORREF color) { return Make<HBRUSH, Brush>(color, false); }

HBRUSH CreateBrushIndirect(const LOGBRUSH* brush) {
    return brush ? Make<HBRUSH, Brush>(brush->lbColor, brush->lbStyle == BS_NULL) : nullptr;
}

HFONT CreateFontIndirectA(const LOGFONTA* description) {
    if (!description)
        return nullptr;
    LOGFONTA font = *description;
    // The face is compared by its bytes later: what follows the name must not differ.
    const std::size_t length = strnlen(font.lfFaceName, LF_FACESIZE - 1);
    std::fill(font.lfFaceName + length, font.lfFaceName + LF_FACESIZE, '\0');
    return Make<HFONT, FontObject>(font);
}

HFONT CreateFontA(int height, int width, int escapement, int orientation, int weight, DWORD italic, DWORD underline,
                  DWORD strikeOut, DWORD charSet, DWORD outPrecision, DWORD clipPrecision, DWORD quality,
                  DWORD pitchAndFamily, const char* face) {
    LOGFONTA font{height,
                  width,
                  escapement,
                  orientation,
                  weight,
                  static_cast<BYTE>(italic != 0),
                  static_cast<BYTE>(underline != 0),
                  static_cast<BYTE>(strikeOut != 0),
                  static_cast<BYTE>(charSet),
                  static_cast<BYTE>(outPrecision),
                  static_cast<BYTE>(clipPrecision),
                  static_cast<BYTE>(quality),
                  static_cast<BYTE>(pitchAndFamily),
                  {}};
    if (face)
        std::memcpy(font.lfFaceName, face, strnlen(face, LF_FACESIZE - 1));
    return CreateFontIndirectA(&font);
}

HRGN CreatePolygonRgn(const POINT* points, int count, int mode) {
    if (!points || count < 3)
        return nullptr;
    return OrFailure([&] { return Make<HRGN, Region>(PolygonShape{{points, points + count}, mode == WINDING}); });
}

HANDLE LoadImageA(HINSTANCE, const char* name, UINT type, int width, int height, UINT flags) {
    if (!name || type != IMAGE_BITMAP || !(flags & LR_LOADFROMFILE) || width < 0 || height < 0)
        return nullptr;
    return OrFailure([&] { return LoadPicture(name, width, height); });
}

HGDIOBJ GetStockObject(int index) {
    switch (index) {
    case WHITE_PEN:
    case BLACK_PEN:
    case NULL_PEN:
        return HandleOf<HGDIOBJ>(&StockPen(index));
    case SYSTEM_FONT:
        return HandleOf<HGDIOBJ>(&StockFont());
    default:
        return index >= WHITE_BRUSH && index <= NULL_BRUSH ? HandleOf<HGDIOBJ>(&StockBrush(index)) : nullptr;
    }
}

BOOL DeleteObject(HGDIOBJ handle) {
    return DeleteUnused(PenFrom(handle)) || DeleteUnused(BrushFrom(handle)) || DeleteUnused(FontFrom(handle)) ||
                   DeleteUnused(BitmapFrom(handle)) || DeleteUnused(RegionFrom(handle))
               ? TRUE
               : FALSE;
}

int GetObjectA(HGDIOBJ handle, int size, void* out) {
    if (!out)
        return 0;
    if (const FontObject* font = FontFrom(handle); font && size >= static_cast<int>(sizeof(LOGFONTA))) {
        std::memcpy(out, &font->description, sizeof(LOGFONTA));
        return sizeof(LOGFONTA);
    }
    if (const Bitmap* bitmap = BitmapFrom(handle); bitmap && size >= static_cast<int>(sizeof(BITMAP))) {
        const BITMAP description = Describe(bitmap->picture);
        std::memcpy(out, &description, sizeof description);
        return sizeof(BITMAP);
    }
    return 0;
}
