#pragma once

#include <MelkarCommon/platform/seam/backend.h>

#include <functional>

/// @file
/// Strokes and shapes for the tests of the backends, made in place.

namespace melkar {

inline Stroke Width(double width) {
    Stroke stroke;
    stroke.width = width;
    return stroke;
}

/// Gaps are red, if they are painted.
inline Stroke Dashes(double on, double off, double phase = 0, bool gaps = false) {
    Stroke stroke;
    stroke.on = on;
    stroke.off = off;
    stroke.phase = phase;
    stroke.gaps = gaps;
    stroke.gapColor = 0xFFFF0000U;
    return stroke;
}

inline void StrokeLine(Backend& backend, POINT from, POINT to, const Stroke& stroke) {
    const POINT ends[] = {from, to};
    backend.StrokePolyline(ends, stroke);
}

/// Something to draw on any backend.
using Draw = std::function<void(Backend&)>;

inline Draw Line(POINT from, POINT to, const Stroke& stroke = {}) {
    return [=](Backend& b) { StrokeLine(b, from, to, stroke); };
}

inline Shape Ellipse(double x, double y, double rx, double ry) { return EllipseShape{{x, y}, {rx, ry}}; }

inline Shape Polygon(std::vector<POINT> points) { return PolygonShape{std::move(points)}; }

} // namespace melkar
