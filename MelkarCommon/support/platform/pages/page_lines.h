#pragma once

#include <MelkarCommon/support/platform/seam/stroke.h>

#include <cairo.h>

/// @file
/// Internal. Lines on a page: they cover the area that they would cover on pixels, and an outline is one path.

namespace melkar {

/// As `Backend::StrokePolyline`. The context's clip is set already; `clip` says what it is. The width is drawn as it
/// is.
void StrokePolylineOn(cairo_t* cr, const RECT& clip, std::span<const POINT> points, const Stroke& stroke);

/// Whether two sloped polylines run side by side, a unit apart, all the way: thin and solid, they would show a pale
/// seam between them.
bool LieSideBySide(std::span<const POINT> one, std::span<const POINT> other);

/// Covers the seam between two such lines.
void CoverSeamOn(cairo_t* cr, std::span<const POINT> one, std::span<const POINT> other, const Stroke& stroke);

} // namespace melkar
