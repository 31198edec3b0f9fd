#pragma once

#include <MelkarCommon/platform/pixels/pending_fill.h>
#include <MelkarCommon/platform/record/record.h>
#include <MelkarCommon/platform/seam/pixel_buffer.h>
#include <MelkarCommon/platform/seam/shape.h>
#include <MelkarCommon/platform/surfaces/handles.h>
#include <MelkarCommon/platform/text/text_engine.h>
#include <MelkarCommon/platform/types.h>

#include <cstdint>
#include <vector>

/// @file
/// Internal. What stands behind the object handles.

namespace melkar {

/// Who frees an object: the caller by `DeleteObject`, the surface it came with, or nobody.
enum class Owner : std::uint8_t { Caller, Surface, Stock };

struct GdiObject : HandleHead {
    GdiObject(ObjectKind objectKind, Owner objectOwner);
    GdiObject(const GdiObject&) = delete;
    GdiObject& operator=(const GdiObject&) = delete;

    const Owner owner;
    int selections = 0; ///< surfaces that have it selected; not kept for stock objects, which threads share

protected:
    ~GdiObject();
};

struct Pen : GdiObject, InHandleMemory<ObjectKind::Pen> {
    Pen(int penStyle, int penWidth, COLORREF penColor, Owner who = Owner::Caller);
    const int style;
    const int width;
    const COLORREF color;
};

struct Brush : GdiObject, InHandleMemory<ObjectKind::Brush> {
    Brush(COLORREF brushColor, bool isHollow, Owner who = Owner::Caller);
    const COLORREF color;
    const bool hollow;
};

struct FontObject : GdiObject, InHandleMemory<ObjectKind::Font> {
    explicit FontObject(const LOGFONTA& font, Owner who = Owner::Caller);
    const LOGFONTA description;
};

/// A picture: pixels of its own or of the host, or, to suit a page or a recording, the operations drawn on it.
struct Bitmap : GdiObject, InHandleMemory<ObjectKind::Bitmap> {
    Bitmap(const PixelBuffer& buffer, bool ownsBuffer, Owner who);
    Bitmap(int recordWidth, int recordHeight, TextMedium recordMedium, Owner who);
    ~Bitmap();

    bool IsRecord() const { return medium != TextMedium::Pixels; }
    /// The pixels for a copy by `operation`. A mask that was loaded at another size keeps its edge: "and" and "or" take
    /// the nearest pixels of the file.
    const PixelBuffer& PixelsFor(DWORD operation);
    /// Something is drawn on the picture: it no longer shows its file.
    void ForgetFile();

    PixelBuffer pixels; ///< of a record: the size alone
    PixelBuffer file;   ///< of a picture loaded at another size: the file's pixels, once asked for at this size
    const bool ownsPixels = false;
    const TextMedium medium = TextMedium::Pixels;
    std::vector<RecordedOp> ops;
    PendingFill pending;   ///< what its memory does not show yet; a picture made to suit a surface waits to be black
    bool isExposed = true; ///< its memory was handed out: every fill is written at once
};

struct Region : GdiObject, InHandleMemory<ObjectKind::Region> {
    explicit Region(Shape regionShape);
    const Shape shape;
};

/// The object behind a handle if it is of the kind asked for, else null.
template <class Object> Object* ObjectFrom(HGDIOBJ handle, ObjectKind kind) {
    auto* head = static_cast<HandleHead*>(handle);
    return head && head->kind == kind ? static_cast<Object*>(head) : nullptr;
}
inline Pen* PenFrom(HGDIOBJ h) { return ObjectFrom<Pen>(h, ObjectKind::Pen); }
inline Brush* BrushFrom(HGDIOBJ h) { return ObjectFrom<Brush>(h, ObjectKind::Brush); }
inline FontObject* FontFrom(HGDIOBJ h) { return ObjectFrom<FontObject>(h, ObjectKind::Font); }
inline Bitmap* BitmapFrom(HGDIOBJ h) { return ObjectFrom<Bitmap>(h, ObjectKind::Bitmap); }
inline Region* RegionFrom(HGDIOBJ h) { return ObjectFrom<Region>(h, ObjectKind::Region); }

/// The handle of an object; null for null.
template <class Handle> Handle HandleOf(HandleHead* object) { return static_cast<Handle>(static_cast<void*>(object)); }

Pen& StockPen(int index);     ///< BLACK_PEN for an unknown index
Brush& StockBrush(int index); ///< WHITE_BRUSH for an unknown index
FontObject& StockFont();
Bitmap& StockBitmap(); ///< has no room: what a compatible surface holds until a bitmap is selected

/// Counts surfaces and the objects that callers own.
void CountAlive(int difference);
std::size_t CountOfAlive();

} // namespace melkar
