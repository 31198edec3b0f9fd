#pragma once

#include <MelkarCommon/platform/seam/slice.h>
#include <MelkarCommon/platform/seam/stroke.h>

#include <cairo.h>

/// @file
/// Internal. What is drawn on pixels and pages by a general rasteriser: filled and outlined shapes, wide sloped lines.
/// The context's clip is set already; `clip` says what it is.

namespace melkar {

void SetSourceColor(cairo_t* cr, Color color);

/// Nothing for a shape without an area: fewer than three points, a radius that isn't above 0, no numbers.
void FillShapeOn(cairo_t* cr, const RECT& clip, const Shape& shape, Color color, const SliceReach& reach = {});
void StrokeShapeOn(cairo_t* cr, const RECT& clip, const Shape& shape, const Stroke& stroke);

/// A sloped line of any width between the centres of two pixels.
void StrokeWideLineOn(cairo_t* cr, const RECT& clip, POINT from, POINT to, const Stroke& stroke);

} // namespace melkar
