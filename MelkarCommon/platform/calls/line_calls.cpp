#include <MelkarCommon/platform/calls/failing.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/path.h>
#include <MelkarCommon/platform/surfaces/surface_state.h>

#include <cstdint>
#include <utility>

using namespace melkar;

BOOL MoveToEx(HDC surface, int x, int y, POINT* former) {
    if (!IsSurface(surface))
        return FALSE;
    return AfterLines(surface, [&] {
        if (former)
            *former = surface->position;
        surface->lines.RestartPattern();
        surface->position = {x, y};
        return TRUE;
    });
}

BOOL LineTo(HDC surface, int x, int y) {
    if (!IsSurface(surface))
        return FALSE;
    const POINT from = std::exchange(surface->position, POINT{x, y});
    try {
        return surface->pen->style != PS_NULL && surface->AddLine(from, {x, y}) ? TRUE : FALSE;
    } catch (...) {
        TakeBack(surface->target, SIZE_MAX); // a record is as it was
        return FALSE;
    }
}

void melkar::LinesTo(HDC surface, std::span<const POINT> points) {
    while (!points.empty()) {
        LineTo(surface, points[0].x, points[0].y);
        points = points.subspan(1);
        if (IsSurface(surface))
            points = points.subspan(OrFailure([&] { return surface->AddMore(points); }));
    }
}
