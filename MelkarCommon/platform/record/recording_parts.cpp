#include <MelkarCommon/platform/record/recording_parts.h>
#include <MelkarCommon/platform/seam/area.h>
#include <MelkarCommon/platform/text/text_engine.h>

#include <cmath>

namespace melkar {

namespace {

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

Box PolylineBox(const StrokePolylineOp& lines) {
    Box whole{INT64_MAX, INT64_MAX, INT64_MIN, INT64_MIN};
    ForEachSegment(lines.points, lines.stroke, [&](POINT from, POINT to, const Stroke& stroke) {
        const Box box = LineBox(from, to, stroke);
        whole = {std::min(whole.left, box.left), std::min(whole.top, box.top), std::max(whole.right, box.right),
                 std::max(whole.bottom, box.bottom)};
    });
    return whole;
}

/// The line's box, turned about its top-left corner.
Box TextBox(const TextOp& text) {
    constexpr double kTiny = 1e-6; // a quarter turn isn't a pixel wider for its rounding
    const TextLine& line = text.layout->lines[text.line];
    Area area;
    for (const PointD& corner : TurnedBox(text.at, line.width, text.layout->lineHeight, text.escapement))
        area.Add(corner);
    return ToBox(PixelsAround(area, -kTiny));
}

} // namespace

Box BoxOf(const RecordedOp& op) {
    return std::visit(Overloaded{
                          [](const Fill& fill) { return ToBox(fill.rect); },
                          [](const FillShapeOp& fill) { return ToBox(PixelsAround(AreaOf(fill.shape), 0)); },
                          [](const StrokeShapeOp& outline) {
                              return ToBox(PixelsAround(AreaOf(outline.shape), WholeWidth(outline.stroke.width) / 2.0));
                          },
                          [](const StrokePolylineOp& lines) { return PolylineBox(lines); },
                          [](const TextOp& text) { return TextBox(text); },
                          [](const BlitOp& blit) { return ToBox(blit.target); },
                          [](const CopyMark& mark) { return ToBox(mark.target); },
                      },
                      op.verb);
}

bool IsCut(const RecordedOp& op) {
    if (IsEmptyRect(op.clip))
        return false;
    const Box box = BoxOf(op);
    return box.left < op.clip.left || box.top < op.clip.top || box.right > op.clip.right || box.bottom > op.clip.bottom;
}

} // namespace melkar
