#include <MelkarCommon/support/platform/pixels/pixel_lines.h>
#include <MelkarCommon/support/platform/record/recording_parts.h>
#include <MelkarCommon/support/platform/seam/polyline.h>

#include <cmath>
#include <numbers>

namespace melkar {

namespace {

/// Whole pixels around an area; what is no number or too large ends at the edge of what an int can name.
class Area {
public:
    void Add(double x, double y) {
        m_left = std::min(m_left, x);
        m_top = std::min(m_top, y);
        m_right = std::max(m_right, x);
        m_bottom = std::max(m_bottom, y);
    }
    Box Grown(double by) const {
        return {Whole(std::floor(m_left - by)), Whole(std::floor(m_top - by)), Whole(std::ceil(m_right + by)),
                Whole(std::ceil(m_bottom + by))};
    }

private:
    static std::int64_t Whole(double value) {
        return std::isnan(value) ? 0 : static_cast<std::int64_t>(std::clamp<double>(value, INT32_MIN, INT32_MAX));
    }

    double m_left = HUGE_VAL;
    double m_top = HUGE_VAL;
    double m_right = -HUGE_VAL;
    double m_bottom = -HUGE_VAL;
};

Box ShapeBox(const Shape& shape, double margin) {
    Area area;
    if (shape.kind == Shape::Kind::Polygon) {
        for (const POINT& point : shape.points)
            area.Add(point.x, point.y);
    } else {
        area.Add(shape.center.x - shape.radius.x, shape.center.y - shape.radius.y);
        area.Add(shape.center.x + shape.radius.x, shape.center.y + shape.radius.y);
    }
    return area.Grown(margin);
}

/// An axis-aligned line takes whole rows or columns; a sloped one is as wide about its centres.
Box LineBox(POINT from, POINT to, const Stroke& stroke) {
    const std::int64_t width = WholeWidth(stroke.width);
    const std::int64_t x[] = {std::min(from.x, to.x), std::max(from.x, to.x)};
    const std::int64_t y[] = {std::min(from.y, to.y), std::max(from.y, to.y)};
    if (y[0] == y[1]) {
        const int last = to.x < from.x ? 1 : 0; // the end point itself is left out
        return {x[0] + last, y[0] - width / 2, x[1] + last, y[0] - width / 2 + width};
    }
    if (x[0] == x[1]) {
        const int last = to.y < from.y ? 1 : 0;
        return {x[0] - width / 2, y[0] + last, x[0] - width / 2 + width, y[1] + last};
    }
    return {x[0] - width / 2, y[0] - width / 2, x[1] + 1 + width / 2, y[1] + 1 + width / 2};
}

Box PolylineBox(const RecordedOp& op) {
    Box whole{INT64_MAX, INT64_MAX, INT64_MIN, INT64_MIN};
    ForEachSegment(op.points, op.stroke, [&](POINT from, POINT to, const Stroke& stroke) {
        const Box box = LineBox(from, to, stroke);
        whole = {std::min(whole.left, box.left), std::min(whole.top, box.top), std::max(whole.right, box.right),
                 std::max(whole.bottom, box.bottom)};
    });
    return whole;
}

/// The line's box, turned about its top-left corner.
Box TextBox(const RecordedOp& op) {
    constexpr double kTiny = 1e-6; // a quarter turn isn't a pixel wider for its rounding
    const double width = op.layout->lines[op.line].width;
    const double height = op.layout->lineHeight;
    const double angle = op.escapement % 3600 * std::numbers::pi / 1800;
    Area area;
    for (const double along : {0.0, width})
        for (const double down : {0.0, height})
            area.Add(op.from.x + along * std::cos(angle) + down * std::sin(angle),
                     op.from.y - along * std::sin(angle) + down * std::cos(angle));
    return area.Grown(-kTiny);
}

} // namespace

Box BoxOf(const RecordedOp& op) {
    switch (op.verb) {
    case RecordedOp::Verb::FillShape:
        return ShapeBox(op.shape, 0);
    case RecordedOp::Verb::StrokeShape:
        return ShapeBox(op.shape, WholeWidth(op.stroke.width) / 2.0);
    case RecordedOp::Verb::StrokePolyline:
        return PolylineBox(op);
    case RecordedOp::Verb::Text:
        return TextBox(op);
    default:
        return ToBox(op.rect);
    }
}

bool IsCut(const RecordedOp& op) {
    if (IsEmptyRect(op.clip))
        return false;
    const Box box = BoxOf(op);
    return box.left < op.clip.left || box.top < op.clip.top || box.right > op.clip.right || box.bottom > op.clip.bottom;
}

} // namespace melkar
