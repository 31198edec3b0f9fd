#include <MelkarCommon/platform/calls/gdi_objects.h>
#include <MelkarCommon/platform/calls/surface_state.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/images/image_file.h>
#include <MelkarCommon/platform/pixels/pixel_memory.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <new>
#include <utility>

namespace melkar {

namespace {

std::atomic<std::size_t> g_alive{0};

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

} // namespace

void CountAlive(int difference) { g_alive += static_cast<std::size_t>(difference); }

GdiObject::GdiObject(ObjectKind objectKind, Owner objectOwner) : HandleHead(objectKind), owner(objectOwner) {
    if (owner == Owner::Caller)
        CountAlive(1);
}

GdiObject::~GdiObject() {
    if (owner == Owner::Caller)
        CountAlive(-1);
}

Pen::Pen(int penStyle, int penWidth, COLORREF penColor, Owner who)
    : GdiObject(ObjectKind::Pen, who), style(penStyle), width(penWidth), color(penColor) {}

Brush::Brush(COLORREF brushColor, bool isHollow, Owner who)
    : GdiObject(ObjectKind::Brush, who), color(brushColor), hollow(isHollow) {}

FontObject::FontObject(const LOGFONTA& font, Owner who) : GdiObject(ObjectKind::Font, who), description(font) {}

Bitmap::Bitmap(const PixelBuffer& buffer, bool ownsBuffer, Owner who)
    : GdiObject(ObjectKind::Bitmap, who), pixels(buffer), ownsPixels(ownsBuffer) {}

Bitmap::Bitmap(int recordWidth, int recordHeight, TextMedium recordMedium, Owner who)
    : GdiObject(ObjectKind::Bitmap, who), pixels{nullptr, recordWidth, recordHeight, 0}, medium(recordMedium) {}

Bitmap::~Bitmap() {
    ForgetFile();
    if (ownsPixels && pixels.pixels)
        GivePixelsBack(pixels.pixels, pixels.width, pixels.height);
}

const PixelBuffer& Bitmap::PixelsFor(DWORD operation) {
    if (operation == SRCCOPY || file.pixels == nullptr)
        return pixels;
    if (file.width != pixels.width || file.height != pixels.height) {
        const PixelBuffer nearest = Resized(file, pixels.width, pixels.height, operation);
        ForgetFile();
        file = nearest;
    }
    return file.pixels != nullptr ? file : pixels;
}

void Bitmap::ForgetFile() {
    if (file.pixels == nullptr)
        return;
    GivePixelsBack(file.pixels, file.width, file.height);
    file = {};
}

Region::Region(Shape regionShape) : GdiObject(ObjectKind::Region, Owner::Caller), shape(std::move(regionShape)) {}

Pen& StockPen(int index) {
    static Pen white(PS_SOLID, 1, RGB(255, 255, 255), Owner::Stock);
    static Pen black(PS_SOLID, 1, RGB(0, 0, 0), Owner::Stock);
    static Pen none(PS_NULL, 1, RGB(0, 0, 0), Owner::Stock);
    return index == WHITE_PEN ? white : index == NULL_PEN ? none : black;
}

Brush& StockBrush(int index) {
    // White, light grey, grey, dark grey, black: the brushes 0 to 4.
    static Brush greys[] = {{RGB(255, 255, 255), false, Owner::Stock},
                            {RGB(192, 192, 192), false, Owner::Stock},
                            {RGB(128, 128, 128), false, Owner::Stock},
                            {RGB(64, 64, 64), false, Owner::Stock},
                            {RGB(0, 0, 0), false, Owner::Stock}};
    static Brush none(RGB(0, 0, 0), true, Owner::Stock);
    if (index == NULL_BRUSH)
        return none;
    return greys[index >= WHITE_BRUSH && index <= BLACK_BRUSH ? index : WHITE_BRUSH];
}

FontObject& StockFont() {
    static FontObject font(LOGFONTA{}, Owner::Stock);
    return font;
}

Bitmap& StockBitmap() {
    static Bitmap none(PixelBuffer{}, false, Owner::Stock);
    return none;
}

} // namespace melkar

using namespace melkar;

std::size_t LiveObjectCount() { return g_alive; }

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
    return Make<HRGN, Region>(PolygonShape{{points, points + count}, mode == WINDING});
}

HANDLE LoadImageA(HINSTANCE, const char* name, UINT type, int width, int height, UINT flags) {
    if (!name || type != IMAGE_BITMAP || !(flags & LR_LOADFROMFILE) || width < 0 || height < 0)
        return nullptr;
    const PixelBuffer file = LoadImageFile(name);
    const int newWidth = width != 0 ? width : file.width;
    const int newHeight = height != 0 ? height : file.height;
    if (newWidth == file.width && newHeight == file.height)
        return file.pixels ? Make<HANDLE, Bitmap>(file, true, Owner::Caller) : nullptr;
    const PixelBuffer picture = file.pixels ? Resized(file, newWidth, newHeight, SRCCOPY) : PixelBuffer{};
    HANDLE bitmap = picture.pixels ? Make<HANDLE, Bitmap>(picture, true, Owner::Caller) : nullptr;
    if (bitmap)
        BitmapFrom(bitmap)->file = file;
    else
        GivePixelsBack(file.pixels, file.width, file.height);
    return bitmap;
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
        const PixelBuffer& picture = bitmap->pixels;
        void* const memory = bitmap->isExposed ? picture.pixels : nullptr; // what waits to be written isn't there yet
        const BITMAP description{0, picture.width, picture.height, picture.stride * 4, 1, 32, memory};
        std::memcpy(out, &description, sizeof description);
        return sizeof(BITMAP);
    }
    return 0;
}
