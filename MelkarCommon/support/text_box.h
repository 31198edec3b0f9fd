#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/cstring.h>
#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/types.h>

/// @file
/// Word-wrapped text in a box. The text always wraps at the box's left and right edges, whatever `format` (flags of
/// `DrawTextExA`) says; at most 10000 bytes of it count. A text higher than its box begins at the box's top and is
/// clipped at its bottom. All return the result of the painting `DrawTextExA`: the height of the text, 0 on failure.
///
/// `size` is a cell height in pixels (below 0 an em height), not a point size; null stands for any `face`.
///
/// @code{.cpp}
/// DrawTextVCenterEx(view, CRect(20, 20, 220, 120), "Start slowly, and add a few minutes each week.", DT_CENTER, -14,
///                   "DejaVu Sans");
/// @endcode

/// Half-way up the box, in the surface's font.
MELKAR_API int DrawTextVCenter(HDC surface, CRect box, CString text, unsigned int format);
/// The same in a plain font of its own; size 0 is the default height.
MELKAR_API int DrawTextVCenterEx(HDC surface, CRect box, CString text, unsigned int format, int size, const char* face);
/// On the bottom of the box; with a size of 0 or below in the surface's font.
MELKAR_API int DrawTextBottom(HDC surface, CRect box, CString text, unsigned int format, int size, const char* face);
/// At the top of the box; with a size of 0 or below in the surface's font.
MELKAR_API int DrawTextTop(HDC surface, CRect box, CString text, unsigned int format, int size, const char* face);
