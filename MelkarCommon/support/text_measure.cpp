#include <MelkarCommon/support/text_measure.h>

#include <MelkarCommon/platform/drawing.h>

namespace melkar {

CRect MeasureText(HDC surface, const CString& text, UINT format, CRect box) {
    DrawTextExA(surface, const_cast<char*>(text.GetString()), text.GetLength(), &box, format, nullptr);
    return box;
}

void PaintText(HDC surface, const CString& text, CRect box, UINT format) { MeasureText(surface, text, format, box); }

} // namespace melkar
