#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/surfaces/surface_state.h>

#include <utility>

using namespace melkar;

BOOL MoveToEx(HDC surface, int x, int y, POINT* former) {
    if (!IsSurface(surface))
        return FALSE;
    if (former)
        *former = surface->position;
    surface->FlushLines();
    surface->lines.RestartPattern();
    surface->position = {x, y};
    return TRUE;
}

BOOL LineTo(HDC surface, int x, int y) {
    if (!IsSurface(surface))
        return FALSE;
    const POINT from = std::exchange(surface->position, POINT{x, y});
    return surface->pen->style != PS_NULL && surface->AddLine(from, {x, y}) ? TRUE : FALSE;
}
