#include <MelkarCommon/support/text_box.h>

#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/platform/wrapped_height.h>
#include <MelkarCommon/support/box_layout.h>
#include <MelkarCommon/support/font.h>

#include <algorithm>

using melkar::ScopedSelection;

namespace {

int Length(const CString& text) {
    return std::min(text.GetLength(), melkar::kMostBoxBytes);
} // no character is cut in two

int Text(HDC surface, const CString& text, CRect& box, UINT format) {
    return DrawTextExA(surface, const_cast<char*>(text.GetString()), Length(text), &box, format | DT_WORDBREAK,
                       nullptr);
}

int HeightIn(HDC surface, const CString& text, const CRect& box) {
    return melkar::WrappedHeight(surface, text.GetString(), Length(text), box);
}

int PaintAtBottom(HDC surface, const CRect& box, const CString& text, UINT format) {
    CRect at = melkar::TextAtBottom(box, HeightIn(surface, text, box));
    return Text(surface, text, at, format);
}

/// Paints in a font of `size`, or in the surface's if that is 0 or below.
template <class Paint> int InFont(HDC surface, int size, const char* face, Paint paint) {
    if (size <= 0)
        return paint();
    const Font font(face, FontStyleRegular, size, 0);
    const ScopedSelection selected(surface, font.GetHFONT());
    return paint();
}

} // namespace

int DrawTextVCenter(HDC surface, CRect box, CString text, unsigned int format) {
    CRect at = melkar::TextAtMiddle(box, HeightIn(surface, text, box));
    return Text(surface, text, at, format);
}

int DrawTextVCenterEx(HDC surface, CRect box, CString text, unsigned int format, int size, const char* face) {
    const Font font(face, FontStyleRegular, size, 0);
    const ScopedSelection selected(surface, font.GetHFONT());
    return DrawTextVCenter(surface, box, text, format);
}

int DrawTextBottom(HDC surface, CRect box, CString text, unsigned int format, int size, const char* face) {
    return InFont(surface, size, face, [&] { return PaintAtBottom(surface, box, text, format); });
}

int DrawTextTop(HDC surface, CRect box, CString text, unsigned int format, int size, const char* face) {
    return InFont(surface, size, face, [&] { return Text(surface, text, box, format); });
}
