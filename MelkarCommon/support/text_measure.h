#pragma once

#include <MelkarCommon/platform/cstring.h>
#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/types.h>

/// @file
/// Texts on any surface, in its font; `format` are flags of `DrawTextExA`.

namespace melkar {

/// The size of a text, from `box`'s left and top on. Paints nothing, with or without `DT_CALCRECT`.
CRect MeasureText(HDC surface, const CString& text, UINT format, CRect box = CRect());
void PaintText(HDC surface, const CString& text, CRect box, UINT format);

} // namespace melkar
