#include <MelkarCommon/support/platform/pixels/pixel_lines.h>
#include <MelkarCommon/support/platform/pixels/pixel_shapes.h>
#include <MelkarCommon/support/platform/pixels/pixel_spans.h>

#include <cmath>
#include <iterator>
#include <numbers>

namespace melkar {

namespace {

constexpr double kTurn = 2 * std::numbers::pi;
constexpr double kFar = 1 << 16; ///< cairo mislays edges some 2^18 pixels long; twice the largest surface is enough
constexpr double kSmallestRadius = 1.0 / 256; ///< less can't be told from nothing
constexpr int kFarSlicePoints = 4096;         ///< an ellipse that reaches beyond `kFar` becomes that many corners

struct Bounds {
    double left;
    double top;
    double right;
    double bottom;
};

Bounds BoundsOf(const Shape& shape) {
    if (shape.kind != Shape::Kind::Polygon)
        return {shape.center.x - shape.radius.x, shape.center.y - shape.radius.y, shape.center.x + shape.radius.x,
                shape.center.y + shape.radius.y};
    Bounds bounds{HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
    for (const POINT& point : shape.points)
        bounds = {std::min<double>(bounds.left, point.x), std::min<double>(bounds.top, point.y),
                  std::max<double>(bounds.right, point.x), std::max<double>(bounds.bottom, point.y)};
    return bounds;
}

bool HasArea(const Shape& shape) {
    if (shape.kind == Shape::Kind::Polygon)
        return shape.points.size() >= 3;
    const bool numbers = std::isfinite(shape.center.x) && std::isfinite(shape.center.y) &&
                         std::isfinite(shape.radius.x) && std::isfinite(shape.radius.y);
    if (!numbers || shape.radius.x < kSmallestRadius || shape.radius.y < kSmallestRadius)
        return false;
    return shape.kind == Shape::Kind::Ellipse || (std::isfinite(shape.from) && shape.sweep > 0);
}

/// False if a shape, widened by `margin`, can't touch the clip.
bool Touches(const Bounds& bounds, const RECT& clip, double margin) {
    return bounds.left - margin < clip.right && bounds.right + margin > clip.left &&
           bounds.top - margin < clip.bottom && bounds.bottom + margin > clip.top;
}

bool IsNear(const Bounds& bounds) {
    return bounds.left > -kFar && bounds.top > -kFar && bounds.right < kFar && bounds.bottom < kFar;
}

bool IsWhole(const Shape& shape) { return shape.kind == Shape::Kind::Ellipse || shape.sweep >= kTurn; }

void TracePoints(cairo_t* cr, const std::vector<PointD>& points) {
    for (const PointD& point : points)
        cairo_line_to(cr, point.x, point.y);
    cairo_close_path(cr);
}

void TraceRound(cairo_t* cr, const Shape& shape) {
    cairo_matrix_t former;
    cairo_get_matrix(cr, &former);
    cairo_translate(cr, shape.center.x, shape.center.y);
    cairo_scale(cr, shape.radius.x, shape.radius.y);
    if (IsWhole(shape)) {
        cairo_arc(cr, 0, 0, 1, 0, kTurn);
    } else {
        const double from = -std::fmod(shape.from, kTurn); // y grows downwards, angles counter-clockwise
        cairo_move_to(cr, 0, 0);
        cairo_arc_negative(cr, 0, 0, 1, from, from - shape.sweep);
    }
    cairo_close_path(cr);
    cairo_set_matrix(cr, &former);
}

/// The corners of a shape, a round one taken as a polygon.
std::vector<PointD> CornersOf(const Shape& shape) {
    std::vector<PointD> corners;
    if (shape.kind == Shape::Kind::Polygon) {
        for (const POINT& point : shape.points)
            corners.push_back({static_cast<double>(point.x), static_cast<double>(point.y)});
        return corners;
    }
    const double sweep = IsWhole(shape) ? kTurn : shape.sweep;
    if (!IsWhole(shape))
        corners.push_back(shape.center);
    for (int i = 0; i <= kFarSlicePoints; ++i) {
        const double angle = shape.from + sweep * i / kFarSlicePoints;
        corners.push_back(
            {shape.center.x + shape.radius.x * std::cos(angle), shape.center.y - shape.radius.y * std::sin(angle)});
    }
    return corners;
}

/// Cuts off what lies beyond `edge`; `side` is 1 to keep the greater values, -1 to keep the smaller ones.
std::vector<PointD> CutSide(const std::vector<PointD>& corners, double PointD::*axis, double edge, int side) {
    std::vector<PointD> kept;
    const auto inside = [&](const PointD& p) { return (p.*axis - edge) * side >= 0; };
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const PointD& one = corners[i];
        const PointD& next = corners[(i + 1) % corners.size()];
        if (inside(one))
            kept.push_back(one);
        if (inside(one) == inside(next))
            continue;
        const double part = (edge - one.*axis) / (next.*axis - one.*axis);
        PointD cut{one.x + (next.x - one.x) * part, one.y + (next.y - one.y) * part};
        cut.*axis = edge;
        kept.push_back(cut);
    }
    return kept;
}

void TraceFar(cairo_t* cr, const Shape& shape) {
    std::vector<PointD> corners = CornersOf(shape);
    corners = CutSide(corners, &PointD::x, -kFar, 1);
    corners = CutSide(corners, &PointD::x, kFar, -1);
    corners = CutSide(corners, &PointD::y, -kFar, 1);
    corners = CutSide(corners, &PointD::y, kFar, -1);
    TracePoints(cr, corners);
}

/// Makes the shape the context's path. @return false if nothing of it can show.
bool TraceShape(cairo_t* cr, const RECT& clip, const Shape& shape, double margin) {
    if (!HasArea(shape))
        return false;
    const Bounds bounds = BoundsOf(shape);
    if (!Touches(bounds, clip, margin))
        return false;
    cairo_new_path(cr);
    if (!IsNear(bounds)) {
        TraceFar(cr, shape);
    } else if (shape.kind == Shape::Kind::Polygon) {
        for (const POINT& point : shape.points)
            cairo_line_to(cr, point.x, point.y);
        cairo_close_path(cr);
    } else {
        TraceRound(cr, shape);
    }
    return true;
}

/// A width that the rasteriser can bear; no number is one pixel.
double BoundedWidth(double width) { return width > 0 ? std::min(width, 32768.0) : 1; }

/// The part of a line within bounds, as fractions of its length. Empty if first >= last.
struct Part {
    double first = 0;
    double last = 1;

    void Cut(double start, double distance, double low, double high) {
        if (distance == 0) {
            if (start < low || start > high)
                last = -1;
            return;
        }
        const double one = (low - start) / distance;
        const double other = (high - start) / distance;
        first = std::max(first, std::min(one, other));
        last = std::min(last, std::max(one, other));
    }
};

void SetDashes(cairo_t* cr, const Stroke& stroke, double phase) {
    const double lengths[] = {stroke.on, stroke.off};
    cairo_set_dash(cr, lengths, static_cast<int>(std::size(lengths)), PhaseInPeriod(stroke, phase));
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_BUTT); // round ends would close short gaps
}

} // namespace

void SetSourceColor(cairo_t* cr, Color color) {
    cairo_set_source_rgb(cr, ((color >> 16U) & 0xFFU) / 255.0, ((color >> 8U) & 0xFFU) / 255.0,
                         (color & 0xFFU) / 255.0);
}

void FillShapeOn(cairo_t* cr, const RECT& clip, const Shape& shape, Color color) {
    if (!TraceShape(cr, clip, shape, 0))
        return;
    SetSourceColor(cr, color);
    cairo_set_fill_rule(cr, shape.winding ? CAIRO_FILL_RULE_WINDING : CAIRO_FILL_RULE_EVEN_ODD);
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
    const PointD start{from.x + 0.5, from.y + 0.5};
    const PointD way{static_cast<double>(to.x) - from.x, static_cast<double>(to.y) - from.y};
    Part part;
    part.Cut(start.x, way.x, clip.left - width, clip.right + width);
    part.Cut(start.y, way.y, clip.top - width, clip.bottom + width);
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
