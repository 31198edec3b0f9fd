#pragma once

#include <MelkarCommon/platform/types.h>

#include <span>

/// @file
/// Internal.

namespace melkar {

/// `LineTo` to each of the points. A curve has hundreds of them, and a call for each takes as long as drawing some.
void LinesTo(HDC surface, std::span<const POINT> points);

} // namespace melkar
