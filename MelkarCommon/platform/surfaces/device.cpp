#include <MelkarCommon/platform/seam/shape.h>
#include <MelkarCommon/platform/surfaces/device.h>

#include <algorithm>

namespace melkar {

namespace {

constexpr int kHalfPointsPerInch = 2 * kPointsPerInch;

} // namespace

TextMedium TextsOf(const Device& device) {
    return std::visit(Overloaded{
                          [](const ScreenDevice&) { return TextMedium::Pixels; },
                          [](const PaperDevice&) { return TextMedium::Page; },
                          [](const RecordDevice&) { return TextMedium::Fixed; },
                          [](const TraceDevice&) { return TextMedium::Pixels; },
                      },
                      device.kind);
}

int LeastPenWidth(const Device& device) {
    const int halfPoint = device.dpi / kHalfPointsPerInch + (device.dpi % kHalfPointsPerInch != 0 ? 1 : 0);
    return std::visit(Overloaded{
                          [](const ScreenDevice&) { return 1; },
                          [&](const PaperDevice&) { return halfPoint; },
                          [](const RecordDevice&) { return 1; },
                          [](const TraceDevice&) { return 1; },
                      },
                      device.kind);
}

} // namespace melkar
