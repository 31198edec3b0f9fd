#pragma once

#include <MelkarCommon/platform/cstring.h>
#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/types.h>

/// @file
/// Texts on any surface, in its font and colour; `format` are flags of `DrawTextExA`. Who paints one says what it
/// stands on, and leaves the surface's mode and background colour as they were.

namespace melkar {

/// The size of a text, from `box`'s left and top on. Paints nothing, with or without `DT_CALCRECT`.
CRect MeasureText(HDC surface, const CString& text, UINT format, CRect box = CRect());
/// On what is there.
void PaintText(HDC surface, const CString& text, CRect box, UINT format);
/// On a ground of its own, which covers what is there.
void PaintTextOn(HDC surface, COLORREF ground, const CString& text, CRect box, UINT format);
/// In the mode that the surface has: its ground is the caller's.
void PaintTextAsSet(HDC surface, const CString& text, CRect box, UINT format);
/// A line from a point on, turned about it by the font's escapement, on what is there.
void PaintTurned(HDC surface, const CPoint& start, const CString& text);

} // namespace melkar
