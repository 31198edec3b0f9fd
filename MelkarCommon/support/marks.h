#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/types.h>

/// @file
/// Small marks: a filled triangle, a filled diamond, an arrow. What has no extent draws nothing.

/// Fills the box, point upwards, and outlines it with a solid pen of `lineWidth`. @return 0.
MELKAR_API int DrawTriangle(HDC surface, RECT box, unsigned long fill, unsigned long line, int lineWidth);
/// The same with a corner on the middle of each edge of the box. @return 0.
MELKAR_API int DrawDiamond(HDC surface, CRect box, unsigned long fill, unsigned long line, int lineWidth);
/// A shaft with the surface's pen, and a head of two barbs at either end.
/// @param surface drawn on @param from one end @param to the other @param halfAngle between shaft and barb, radians
/// @param headLength of a barb, device units
/// @param headAtTo 0: no head there @param headAtFrom likewise
MELKAR_API void DrawArrow(HDC surface, CPoint from, CPoint to, double halfAngle, double headLength, int headAtTo,
                          int headAtFrom);
