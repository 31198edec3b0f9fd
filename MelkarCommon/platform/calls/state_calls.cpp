#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/surfaces/surface_state.h>

#include <utility>

using namespace melkar;

HGDIOBJ SelectObject(HDC surface, HGDIOBJ handle) {
    if (!IsSurface(surface) || !handle)
        return nullptr;
    if (Bitmap* bitmap = BitmapFrom(handle))
        return surface->page || surface->printing ? nullptr : HandleOf<HGDIOBJ>(surface->Take(*bitmap));

    const auto select = [](auto*& slot, auto* chosen) -> HGDIOBJ {
        auto* former = std::exchange(slot, chosen);
        if (former->owner == Owner::Caller)
            --former->selections;
        if (chosen->owner == Owner::Caller)
            ++chosen->selections;
        return HandleOf<HGDIOBJ>(former);
    };
    if (Pen* pen = PenFrom(handle))
        return select(surface->pen, pen);
    if (Brush* brush = BrushFrom(handle))
        return select(surface->brush, brush);
    if (FontObject* font = FontFrom(handle))
        return select(surface->font, font);
    return nullptr;
}

int SetBkMode(HDC surface, int mode) {
    if (!IsSurface(surface) || (mode != TRANSPARENT && mode != OPAQUE))
        return 0;
    return std::exchange(surface->bkMode, mode);
}

COLORREF SetBkColor(HDC surface, COLORREF color) {
    return IsSurface(surface) ? std::exchange(surface->bkColor, color) : 0;
}

COLORREF SetTextColor(HDC surface, COLORREF color) {
    return IsSurface(surface) ? std::exchange(surface->textColor, color) : 0;
}

int GetDeviceCaps(HDC surface, int query) {
    const Device device = DeviceOf(surface);
    switch (query) {
    case LOGPIXELSX:
    case LOGPIXELSY:
        return device.dpi;
    case HORZRES:
        return device.size.width;
    case VERTRES:
        return device.size.height;
    default:
        return 0;
    }
}
