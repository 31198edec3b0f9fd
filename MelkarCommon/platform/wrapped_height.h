#pragma once

#include <MelkarCommon/platform/types.h>

/// @file
/// Internal.

namespace melkar {

/// The height of a text painted with `DT_WORDBREAK` in a box that keeps its edges. It differs from what `DT_CALCRECT`
/// gives where a word is wider than the box: that makes the box as wide, and what stands in it takes fewer lines.
/// @param length as of `DrawTextExA`. @return 0 on failure
int WrappedHeight(HDC surface, const char* text, int length, const RECT& box);

} // namespace melkar
