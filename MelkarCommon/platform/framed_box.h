#pragma once

#include <MelkarCommon/platform/types.h>

/// @file
/// Internal. Rectangles as charts draw most of them.

namespace melkar {

/// `Rectangle` with a brush and a pen that draws inside of it, without the two objects: a chart has dozens of boxes,
/// and making, selecting and freeing these takes as long as keeping what is drawn.
BOOL DrawFramedBox(HDC surface, const RECT& rect, COLORREF fill, COLORREF line, int lineWidth);

} // namespace melkar
