#include <MelkarCommon/platform/cairo/shapes.h>
#include <MelkarCommon/platform/seam/corners.h>

#include <iterator>

namespace melkar {

namespace {

/// Calls trace() where the ellipse is the unit circle, y downwards.
template <class Trace> void InUnitCircle(cairo_t* cr, const EllipseShape& ellipse, const Trace& trace) {
    cairo_matrix_t former;
    cairo_get_matrix(cr, &former);
    cairo_translate(cr, ellipse.center.x, ellipse.center.y);
    cairo_scale(cr, ellipse.radius.x, ellipse.radius.y);
    trace();
    cairo_close_path(cr);
    cairo_set_matrix(cr, &former);
}

void TraceNear(cairo_t* cr, const PolygonShape& polygon) {
    for (const POINT& point : polygon.points)
        cairo_line_to(cr, point.x, point.y);
    cairo_close_path(cr);
}

void TraceNear(cairo_t* cr, const EllipseShape& ellipse) {
    InUnitCircle(cr, ellipse, [&] { cairo_arc(cr, 0, 0, 1, 0, kTurn); });
}

void TraceNear(cairo_t* cr, const SliceShape& slice) {
    if (slice.sweep >= kTurn)
        return TraceNear(cr, slice.whole);
    InUnitCircle(cr, slice.whole, [&] {
        const double from = -std::fmod(slice.from, kTurn); // y grows downwards, angles counter-clockwise
        const auto& [center, radius] = slice.whole;
        cairo_move_to(cr, (slice.apex.x - center.x) / radius.x, (slice.apex.y - center.y) / radius.y);
        cairo_arc_negative(cr, 0, 0, 1, from, from - slice.sweep);
    });
}

void TracePoints(cairo_t* cr, const std::vector<PointD>& points) {
    for (const PointD& point : points)
        cairo_line_to(cr, point.x, point.y);
    cairo_close_path(cr);
}

/// Makes the shape the context's path. @return false if nothing of it can show.
bool TraceShape(cairo_t* cr, const RECT& clip, const Shape& shape, double margin) {
    if (!HasArea(shape))
        return false;
    const Area bounds = AreaOf(shape);
    if (!Touches(bounds, clip, margin))
        return false;
    cairo_new_path(cr);
    const auto trace = [&](const auto& kind) {
        IsNear(bounds) ? TraceNear(cr, kind) : TracePoints(cr, NearCorners(kind));
    };
    std::visit(trace, shape);
    return true;
}

/// Only polygons cross themselves; a slice and its reach lie over each other.
cairo_fill_rule_t RuleOf(const Shape& shape) {
    const auto* polygon = std::get_if<PolygonShape>(&shape);
    return polygon == nullptr || polygon->winding ? CAIRO_FILL_RULE_WINDING : CAIRO_FILL_RULE_EVEN_ODD;
}

/// A width that the rasteriser can bear; no number is one pixel.
double BoundedWidth(double width) { return width > 0 ? std::min(width, kWidestStroke) : 1; }

void SetDashes(cairo_t* cr, const Stroke& stroke, double phase) {
    const double lengths[] = {stroke.on, stroke.off};
    cairo_set_dash(cr, lengths, static_cast<int>(std::size(lengths)), PhaseInPeriod(stroke, phase));
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_BUTT); // round ends would close short gaps
}

} // namespace

void SetSourceColor(cairo_t* cr, Color color) {
    cairo_set_source_rgb(cr, RedOf(color) / 255.0, GreenOf(color) / 255.0, BlueOf(color) / 255.0);
}

void FillShapeOn(cairo_t* cr, const RECT& clip, const Shape& shape, Color color, const SliceReach& reach) {
    if (!TraceShape(cr, clip, shape, 0))
        return;
    if (const auto* slice = std::get_if<SliceShape>(&shape); slice != nullptr && IsNear(AreaOf(shape)))
        for (const PointD& corner : ReachOf(*slice, reach))
            cairo_line_to(cr, corner.x, corner.y);
    SetSourceColor(cr, color);
    cairo_set_fill_rule(cr, RuleOf(shape));
    cairo_fill(cr);
}

void StrokeShapeOn(cairo_t* cr, const RECT& clip, const Shape& shape, const Stroke& stroke) {
    const double width = BoundedWidth(stroke.width);
    if (!TraceShape(cr, clip, shape, width))
        return;
    SetSourceColor(cr, stroke.color);
    cairo_set_line_width(cr, width);
    cairo_set_dash(cr, nullptr, 0, 0);
    cairo_stroke(cr);
}

void StrokeWideLineOn(cairo_t* cr, const RECT& clip, POINT from, POINT to, const Stroke& stroke) {
    const double width = BoundedWidth(stroke.width);
    const double middle = MiddleOfSlope(stroke);
    const PointD start{from.x + middle, from.y + middle};
    const PointD way{static_cast<double>(to.x) - from.x, static_cast<double>(to.y) - from.y};
    const LinePart part = PartWithin(start, way, clip, width);
    if (part.first >= part.last)
        return;
    cairo_new_path(cr);
    cairo_move_to(cr, start.x + way.x * part.first, start.y + way.y * part.first);
    cairo_line_to(cr, start.x + way.x * part.last, start.y + way.y * part.last);
    cairo_set_line_width(cr, width);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
    cairo_set_dash(cr, nullptr, 0, 0);
    if (!HasPattern(stroke)) {
        SetSourceColor(cr, stroke.color);
        cairo_stroke(cr);
        return;
    }
    if (stroke.gaps) {
        SetSourceColor(cr, stroke.gapColor);
        cairo_stroke_preserve(cr);
    }
    SetDashes(cr, stroke, stroke.phase + std::hypot(way.x, way.y) * part.first);
    SetSourceColor(cr, stroke.color);
    cairo_stroke(cr);
}

} // namespace melkar
