#include <MelkarCommon/platform/calls/failing.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/framed_box.h>
#include <MelkarCommon/platform/seam/box.h>
#include <MelkarCommon/platform/surfaces/strokes.h>
#include <MelkarCommon/platform/surfaces/surface_state.h>

#include <algorithm>
#include <cmath>
#include <numbers>

using namespace melkar;

namespace {

RECT Ordered(int left, int top, int right, int bottom) {
    return {std::min(left, right), std::min(top, bottom), std::max(left, right), std::max(top, bottom)};
}

void Fill(Backend& backend, const RECT& rect, COLORREF color) {
    if (!IsEmptyRect(rect))
        backend.FillRect(rect, ToColor(color));
}

/// The four edges of a rectangle in a dash or dot pattern, each pixel once.
void StrokeFrame(Backend& backend, const RECT& r, const Stroke& stroke) {
    const POINT corners[] = {
        {r.left, r.top}, {r.right - 1, r.top}, {r.right - 1, r.bottom - 1}, {r.left, r.bottom - 1}, {r.left, r.top}};
    backend.StrokePolyline(corners, stroke);
}

void DrawRectangle(HDC surface, Backend& backend, const RECT& box, const Pen& pen, const Brush& brush) {
    if (pen.style == PS_NULL || IsPatterned(pen)) {
        if (!brush.hollow)
            Fill(backend, box, brush.color);
        if (IsPatterned(pen))
            StrokeFrame(backend, box, StrokeOf(*surface, pen));
        return;
    }
    const int width = PenWidth(surface->device, pen);
    const RECT outer = pen.style == PS_INSIDEFRAME ? box : Grown(box, width / 2);
    if (!brush.hollow && brush.color == pen.color)
        return Fill(backend, outer, pen.color);
    backend.FillFramed(outer, width, ToColor(pen.color),
                       brush.hollow ? std::nullopt : std::optional(ToColor(brush.color)));
}

/// The angle, in the ellipse's own units, at which the ray from `apex`, which lies within it, through (x, y) leaves it.
double RadialAngle(const EllipseShape& ellipse, PointD apex, int x, int y) {
    const auto& [center, radius] = ellipse;
    const PointD start{(apex.x - center.x) / radius.x, (center.y - apex.y) / radius.y};
    const PointD way{(x - apex.x) / radius.x, (apex.y - y) / radius.y};
    const double length = std::hypot(way.x, way.y);
    if (!(length > 0))
        return 0;
    const PointD unit{way.x / length, way.y / length};
    const double along = start.x * unit.x + start.y * unit.y;
    const double distance = std::sqrt(std::max(0.0, 1 - start.x * start.x - start.y * start.y + along * along)) - along;
    return std::atan2(start.y + distance * unit.y, start.x + distance * unit.x);
}

EllipseShape EllipseIn(const RECT& box) {
    return {{(double{1} * box.left + box.right) / 2, (double{1} * box.top + box.bottom) / 2},
            {(double{1} * box.right - box.left) / 2, (double{1} * box.bottom - box.top) / 2}};
}

EllipseShape Shrunk(const EllipseShape& ellipse, double by) {
    return {ellipse.center, {std::max(0.0, ellipse.radius.x - by), std::max(0.0, ellipse.radius.y - by)}};
}
SliceShape Shrunk(const SliceShape& slice, double by) {
    return {Shrunk(slice.whole, by), slice.from, slice.sweep, slice.apex};
}

/// Fills with the brush and outlines with the pen, whose line stays inside the shape.
template <class Round> void DrawRound(HDC surface, Backend& backend, const Round& shape) {
    const bool filled = !surface->brush->hollow;
    const bool outlined = surface->pen->style != PS_NULL;
    if (filled)
        backend.FillShape(shape, ToColor(surface->brush->color));
    if (!outlined || (filled && surface->pen->color == surface->brush->color))
        return;
    Stroke stroke = StrokeOf(*surface, *surface->pen);
    stroke.on = stroke.off = 0;
    backend.StrokeShape(Shrunk(shape, stroke.width / 2), stroke);
}

/// Draws by `draw(backend)` if there is room.
template <class Draw> BOOL DrawIfRoom(HDC surface, const Draw& draw) {
    return DrawOrFail(surface, [&](Backend* backend) {
        if (backend != nullptr)
            draw(*backend);
        return backend != nullptr ? TRUE : FALSE;
    });
}

} // namespace

BOOL Rectangle(HDC surface, int left, int top, int right, int bottom) {
    const RECT box = Ordered(left, top, right, bottom);
    if (!IsSurface(surface) || IsEmptyRect(box))
        return FALSE;
    return DrawIfRoom(surface,
                      [&](Backend& backend) { DrawRectangle(surface, backend, box, *surface->pen, *surface->brush); });
}

BOOL melkar::DrawFramedBox(HDC surface, const RECT& rect, COLORREF fill, COLORREF line, int lineWidth) {
    const RECT box = Ordered(rect.left, rect.top, rect.right, rect.bottom);
    if (!IsSurface(surface) || IsEmptyRect(box))
        return FALSE;
    const Pen pen(PS_INSIDEFRAME, lineWidth, line, Owner::Stock);
    const Brush brush(fill, false, Owner::Stock);
    return DrawIfRoom(surface, [&](Backend& backend) { DrawRectangle(surface, backend, box, pen, brush); });
}

BOOL Ellipse(HDC surface, int left, int top, int right, int bottom) {
    const RECT box = Ordered(left, top, right, bottom);
    if (!IsSurface(surface) || IsEmptyRect(box))
        return FALSE;
    return DrawIfRoom(surface, [&](Backend& backend) { DrawRound(surface, backend, EllipseIn(box)); });
}

BOOL Pie(HDC surface, int left, int top, int right, int bottom, int x1, int y1, int x2, int y2) {
    const RECT box = Ordered(left, top, right, bottom);
    if (!IsSurface(surface) || IsEmptyRect(box))
        return FALSE;
    SliceShape slice{EllipseIn(box)};
    constexpr double kWhole = 2 * std::numbers::pi;
    // Callers compute radials about the halves of left + right and top + bottom, in whole numbers.
    slice.apex = {std::trunc(slice.whole.center.x), std::trunc(slice.whole.center.y)};
    slice.from = RadialAngle(slice.whole, slice.apex, x1, y1);
    slice.sweep = RadialAngle(slice.whole, slice.apex, x2, y2) - slice.from;
    if (slice.sweep < 0)
        slice.sweep += kWhole;
    const bool equalRadials = slice.sweep < 1e-9 || slice.sweep > kWhole - 1e-9;
    return DrawIfRoom(surface, [&](Backend& backend) {
        equalRadials ? DrawRound(surface, backend, slice.whole) : DrawRound(surface, backend, slice);
    });
}

BOOL FillRgn(HDC surface, HRGN regionHandle, HBRUSH brushHandle) {
    const Region* region = RegionFrom(regionHandle);
    const Brush* brush = BrushFrom(brushHandle);
    if (!IsSurface(surface) || !region || !brush)
        return FALSE;
    return DrawIfRoom(surface, [&](Backend& backend) {
        if (!brush->hollow)
            backend.FillShape(region->shape, ToColor(brush->color));
    });
}
