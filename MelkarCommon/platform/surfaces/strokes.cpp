#include <MelkarCommon/platform/surfaces/strokes.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace melkar {

namespace {

// Lengths of the pen patterns at 96 dpi.
constexpr double kDashOn = 18;
constexpr double kDashOff = 6;
constexpr double kDot = 3;

} // namespace

int PenWidth(const Device& device, const Pen& pen) {
    constexpr int kWidest = 1'000'000;
    const std::int64_t dpi = device.dpi;
    const std::int64_t scaled = pen.width <= 0 ? 1 : (pen.width * dpi + kScreenDpi / 2) / kScreenDpi;
    const int least = std::min(LeastPenWidth(device), kWidest);
    return static_cast<int>(std::clamp<std::int64_t>(scaled, least, kWidest));
}

Stroke StrokeOf(const HDC__& surface, const Pen& pen) {
    Stroke stroke;
    stroke.color = ToColor(pen.color);
    stroke.width = PenWidth(surface.device, pen);
    if (IsPatterned(pen)) {
        const double scale = double{1} * surface.device.dpi / kScreenDpi;
        stroke.on = std::max(1.0, std::round((pen.style == PS_DASH ? kDashOn : kDot) * scale));
        stroke.off = std::max(1.0, std::round((pen.style == PS_DASH ? kDashOff : kDot) * scale));
        stroke.gaps = surface.bkMode == OPAQUE;
        stroke.gapColor = ToColor(surface.bkColor);
    }
    return stroke;
}

} // namespace melkar
