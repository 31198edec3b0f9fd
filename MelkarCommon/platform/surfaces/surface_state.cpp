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
    if (lines.AreWaiting())
        DrawLines();
    lines.Forget();
}

/// Of what is traced they are of the step that began them: they may have waited until another one.
void HDC__::DrawLines() {
    const auto draw = [this] {
        if (Backend* backend = DrawingOn(target))
            lines.Draw(*backend);
    };
    if (!IsTraced(device))
        return draw();
    StepScope scope;
    scope.Enter(linesStep);
    draw();
}

bool HDC__::AddLine(POINT from, POINT to) {
    const LineLook look = LineLookNow();
    if (!lines.GoOnAt(from, look)) {
        if (Drawing() == nullptr)
            return false;
        if (IsTraced(device))
            linesStep = RunningStep();
        lines.Begin(from, look, StrokeOf(*this, *pen), IsExposed(target));
    } else if (lines.AreMany()) {
        lines.DrawAndGoOn(*DrawingOn(target));
    }
    lines.Add(to);
    if (lines.AreExposed())
        lines.DrawAtOnce(*DrawingOn(target));
    return true;
}

std::size_t HDC__::AddMore(std::span<const POINT> points) {
    if (pen->style == PS_NULL || !lines.GoOnAt(position, LineLookNow()))
        return 0;
    const std::size_t count = lines.AddSome(points);
    if (count > 0)
        position = points[count - 1];
    return count;
}

const std::shared_ptr<TextFace>& HDC__::Face() const {
    LOGFONTA description = font->description;
    if (description.lfHeight == 0)
        description.lfHeight = -std::max(1, MulDiv(kDefaultEm, device.dpi, kScreenDpi));
    return FindFace(description, TextsOf(device), device.dpi);
}
