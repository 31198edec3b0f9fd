#include <MelkarCommon/support/text_measure.h>

#include <MelkarCommon/platform/drawing.h>

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

void PaintText(HDC surface, const CString& text, CRect box, UINT format) { DrawInBox(surface, text, format, box); }

} // namespace melkar
