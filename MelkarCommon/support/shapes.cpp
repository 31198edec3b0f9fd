#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/framed_box.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/support/support.h>

using melkar::ScopedPen;

int DrawRectangle(HDC surface, RECT rect, unsigned long fill, unsigned long line, int lineWidth) {
    if (rect.right < 0 || rect.top < 0 || rect.left == rect.right || rect.top == rect.bottom)
        return -1;
    melkar::DrawFramedBox(surface, rect, static_cast<COLORREF>(fill), static_cast<COLORREF>(line), lineWidth);
    return 0;
}

int DrawTransParentRectangle(HDC surface, RECT rect, unsigned long, unsigned long line, int lineWidth) {
    const ScopedPen pen(surface, PS_SOLID, lineWidth, static_cast<COLORREF>(line));
    MoveToEx(surface, rect.left, rect.top, nullptr);
    LineTo(surface, rect.right, rect.top);
    LineTo(surface, rect.right, rect.bottom);
    LineTo(surface, rect.left, rect.bottom);
    LineTo(surface, rect.left, rect.top);
    return 0;
}

int DrawLine(HDC surface, CPoint from, CPoint to, HPEN pen) {
    const HGDIOBJ former = pen ? SelectObject(surface, pen) : nullptr;
    MoveToEx(surface, from.x, from.y, nullptr);
    LineTo(surface, to.x, to.y);
    SelectObject(surface, former);
    return 0;
}
