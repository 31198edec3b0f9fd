#pragma once

#include <MelkarCommon/platform/seam/shape.h>
#include <MelkarCommon/platform/surfaces/handles.h>
#include <MelkarCommon/platform/types.h>

#include <cstddef>
#include <cstdint>

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
inline Region* RegionFrom(HGDIOBJ h) { return ObjectFrom<Region>(h, ObjectKind::Region); }

/// The handle of an object; null for null.
template <class Handle> Handle HandleOf(HandleHead* object) { return static_cast<Handle>(static_cast<void*>(object)); }

Pen& StockPen(int index);     ///< BLACK_PEN for an unknown index
Brush& StockBrush(int index); ///< WHITE_BRUSH for an unknown index
FontObject& StockFont();

/// An object that is selected: while this has it, its owner can't delete it.
template <class Object> class Selected {
public:
    explicit Selected(Object& object) : m_object(&object) { Count(1); }
    ~Selected() { Count(-1); }
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;

    Object* operator->() const { return m_object; }
    Object& operator*() const { return *m_object; }
    /// @return the former one
    Object* Change(Object& next) {
        Object* former = m_object;
        Count(-1);
        m_object = &next;
        Count(1);
        return former;
    }

private:
    void Count(int difference) {
        if (m_object->owner == Owner::Caller)
            m_object->selections += difference;
    }

    Object* m_object;
};

/// Counts surfaces and the objects that callers own.
void CountAlive(int difference);
std::size_t CountOfAlive();

} // namespace melkar
