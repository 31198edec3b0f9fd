#include <MelkarCommon/support/polygons.h>

#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/path.h>

namespace melkar {

void FillPolygon(HDC surface, std::span<const POINT> corners, COLORREF color) {
    const HBRUSH brush = CreateSolidBrush(color);
    const HRGN region = CreatePolygonRgn(corners.data(), static_cast<int>(corners.size()), ALTERNATE);
    FillRgn(surface, region, brush);
    DeleteObject(region);
    DeleteObject(brush);
}

void DrawPath(HDC surface, std::span<const POINT> points) {
    MoveToEx(surface, points.front().x, points.front().y, nullptr);
    LinesTo(surface, points.subspan(1));
}

} // namespace melkar
