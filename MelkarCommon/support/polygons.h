#pragma once

#include <MelkarCommon/platform/types.h>

#include <span>

/// @file
/// Polygons and open paths by the drawing calls.

namespace melkar {

/// The inside of a polygon; nothing for fewer than three corners.
void FillPolygon(HDC surface, std::span<const POINT> corners, COLORREF color);

/// With the surface's pen from the first point to the last, which is left out; at least one point.
void DrawPath(HDC surface, std::span<const POINT> points);

} // namespace melkar
