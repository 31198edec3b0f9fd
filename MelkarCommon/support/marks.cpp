#include <MelkarCommon/support/marks.h>

#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/support/marks_layout.h>
#include <MelkarCommon/support/polygons.h>

#include <span>

namespace {

int DrawMark(HDC surface, std::span<const POINT> corners, unsigned long fill, unsigned long line, int lineWidth) {
    melkar::FillPolygon(surface, corners, static_cast<COLORREF>(fill));
    const melkar::ScopedPen pen(surface, PS_SOLID, lineWidth, static_cast<COLORREF>(line));
    melkar::DrawPath(surface, corners);
    LineTo(surface, corners.front().x, corners.front().y);
    return 0;
}

} // namespace

int DrawTriangle(HDC surface, RECT box, unsigned long fill, unsigned long line, int lineWidth) {
    return DrawMark(surface, melkar::TriangleIn(box), fill, line, lineWidth);
}

int DrawDiamond(HDC surface, CRect box, unsigned long fill, unsigned long line, int lineWidth) {
    return DrawMark(surface, melkar::DiamondIn(box), fill, line, lineWidth);
}

void DrawArrow(HDC surface, CPoint from, CPoint to, double halfAngle, double headLength, int headAtTo, int headAtFrom) {
    const melkar::ArrowAxis axis(from, to);
    const CPoint end = axis.End();
    const auto draw = [surface](POINT start, POINT stop) {
        MoveToEx(surface, start.x, start.y, nullptr);
        LineTo(surface, stop.x, stop.y);
    };
    draw(from, end);
    if (headAtFrom != 0)
        for (const double angle : {-halfAngle, halfAngle})
            draw(from, axis.BarbAtFrom(angle, headLength));
    if (headAtTo != 0)
        for (const double angle : {halfAngle, -halfAngle})
            draw(end, axis.BarbAtTo(angle, headLength));
}
