#include <MelkarCommon/platform/calls/failing.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/surfaces/surface_state.h>

#include <utility>

using namespace melkar;

HGDIOBJ SelectObject(HDC surface, HGDIOBJ handle) {
    if (!IsSurface(surface) || !handle)
        return nullptr;
    if (Bitmap* bitmap = BitmapFrom(handle)) {
        return AfterLines(surface, [&] { return HandleOf<HGDIOBJ>(SelectOn(surface->target, *bitmap)); });
    }
    if (Pen* pen = PenFrom(handle))
        return HandleOf<HGDIOBJ>(surface->pen.Change(*pen));
    if (Brush* brush = BrushFrom(handle))
        return HandleOf<HGDIOBJ>(surface->brush.Change(*brush));
    if (FontObject* font = FontFrom(handle))
        return HandleOf<HGDIOBJ>(surface->font.Change(*font));
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
