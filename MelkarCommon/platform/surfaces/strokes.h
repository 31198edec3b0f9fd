#pragma once

#include <MelkarCommon/platform/seam/stroke.h>
#include <MelkarCommon/platform/surfaces/surface_state.h>

/// @file
/// Internal. What pens draw.

namespace melkar {

inline bool IsPatterned(const Pen& pen) { return pen.style == PS_DASH || pen.style == PS_DOT; }
/// A pen's width, scaled with dpi / 96, not below what shows.
int PenWidth(const Device& device, const Pen& pen);
/// How lines look that this pen draws on this surface now.
Stroke StrokeOf(const HDC__& surface, const Pen& pen);

} // namespace melkar
