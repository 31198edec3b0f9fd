#include <MelkarCommon/support/text_measure.h>

#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>

namespace melkar {

namespace {

/// The box as the call leaves it.
CRect DrawInBox(HDC surface, const CString& text, UINT format, CRect box) {
    DrawTextExA(surface, const_cast<char*>(text.GetString()), text.GetLength(), &box, format, nullptr);
    return box;
}

} // namespace

CRect MeasureText(HDC surface, const CString& text, UINT format, CRect box) {
    return DrawInBox(surface, text, format | DT_CALCRECT, box);
}

void PaintText(HDC surface, const CString& text, CRect box, UINT format) {
    const ScopedBkMode transparent(surface, TRANSPARENT);
    DrawInBox(surface, text, format, box);
}

void PaintTextOn(HDC surface, COLORREF ground, const CString& text, CRect box, UINT format) {
    const ScopedBkMode opaque(surface, OPAQUE);
    const ScopedBkColor color(surface, ground);
    DrawInBox(surface, text, format, box);
}

void PaintTextAsSet(HDC surface, const CString& text, CRect box, UINT format) { DrawInBox(surface, text, format, box); }

void PaintTurned(HDC surface, const CPoint& start, const CString& text) {
    const ScopedBkMode transparent(surface, TRANSPARENT);
    TextOutA(surface, start.x, start.y, text, text.GetLength());
}

} // namespace melkar
