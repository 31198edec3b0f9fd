#pragma once

#include <MelkarCommon/platform/scoped.h>

/// A rectangle filled with one colour inside a frame of another.
inline void DrawFramed(HDC surface, RECT rect, COLORREF fill, COLORREF line, int width) {
    const melkar::ScopedPen pen(surface, PS_INSIDEFRAME, width, line);
    const melkar::ScopedBrush brush(surface, fill);
    Rectangle(surface, rect.left, rect.top, rect.right, rect.bottom);
}
