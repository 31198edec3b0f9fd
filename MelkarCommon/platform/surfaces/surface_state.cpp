#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/measures.h>
#include <MelkarCommon/platform/surfaces/strokes.h>
#include <MelkarCommon/platform/surfaces/surface_state.h>

#include <algorithm>
#include <cstddef>

using namespace melkar;

Backend* HDC__::Drawing() {
    FlushLines();
    return DrawingOn(target);
}

Picture* HDC__::Shown() {
    FlushLines();
    return PictureOf(target);
}

RECT HDC__::Bounds() const {
    const DeviceSize size = SizeOf(target);
    return {0, 0, size.width, size.height};
}

void HDC__::FlushLines() {
    if (lines.points.size() > lines.stroke.drawn + 1)
        if (Backend* backend = DrawingOn(target))
            backend->StrokePolyline(lines.points, lines.stroke);
    lines.points.clear();
}

/// Memory that was handed out may be looked at after any call, so nothing waits there: each line is drawn as it comes,
/// and those before it count for the corner.
void HDC__::AddLine(POINT from, POINT to) {
    constexpr std::size_t kMostPoints = 4096;
    const LineLook look{pen->style, pen->width, pen->color, bkMode, bkColor};
    if (!lines.GoOnAt(from, look)) {
        FlushLines();
        lines.points.push_back(from);
        lines.look = look;
        lines.stroke = StrokeOf(*this, *pen);
        lines.stroke.phase = patternPhase;
    } else if (lines.points.size() == kMostPoints) {
        const POINT before = lines.points[kMostPoints - 2];
        FlushLines();
        lines.points.assign({before, from});
        lines.stroke.phase = patternPhase - (lines.stroke.IsSolid() ? 0 : Distance(before, from));
        lines.stroke.drawn = 1;
    }
    if (!lines.stroke.IsSolid())
        patternPhase += Distance(from, to);
    lines.points.push_back(to);
    if (!IsExposed(target))
        return;
    DrawingOn(target)->StrokePolyline(lines.points, lines.stroke);
    lines.stroke.drawn = lines.points.size() - 1;
}

bool WaitingLines::GoOnAt(POINT from, const LineLook& next) const {
    return !points.empty() && points.back().x == from.x && points.back().y == from.y && look == next;
}

std::shared_ptr<TextFace> HDC__::Face() const {
    LOGFONTA description = font->description;
    if (description.lfHeight == 0)
        description.lfHeight = -std::max(1, MulDiv(kDefaultEm, device.dpi, kScreenDpi));
    return FindFace(description, TextsOf(device));
}
