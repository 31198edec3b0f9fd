#include <MelkarCommon/bars/weight_layout.h>

#include <MelkarCommon/bars/bar_layout.h>
#include <MelkarCommon/support/bounds.h>
#include <MelkarCommon/support/numbers.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace melkar {

namespace {

// What the scale shows above the highest weight and below the lowest one at the least, kilograms
constexpr double kRoomAbove = 1.9;
constexpr double kRoomBelow = 0.9;

// Of the legend row, in heights of its texts
constexpr double kLegendRise = 1.2; ///< from the canvas up to the top of the row
constexpr double kLegendGap = 0.5;  ///< from a sample to its text
constexpr double kLineSample = 2.0; ///< width of the line's sample

LegendEntry SquareLeftOf(const LegendEntry& other, const CRect& size) {
    const double height = size.Height();
    return LegendEntryTo(other.sample.left - size.Height(), other.text.top, size, {kLegendGap * height, height});
}

} // namespace

std::optional<Scale> WeightScaleFor(int highest, int lowest, int steps) {
    const double max = std::ceil(highest + kRoomAbove);
    const double min = std::max(0.0, std::floor(lowest - kRoomBelow));
    const double range = max - min;
    if (range > steps && steps < 1)
        return std::nullopt;
    const double step = range <= steps ? 1 : std::floor(range / steps) + 1;
    const auto whole = [](double value) { return double(Truncate(value)); };
    return Scale{whole(max - whole(step) * steps), whole(max), whole(step)};
}

int WeightX(const CRect& canvas, int row, int rows) {
    return SlotLeft(canvas, std::int64_t{2} * row + 1, std::int64_t{2} * rows);
}

int TargetWeightY(const ScalePixels& on, double target) {
    const auto range = std::max<std::int64_t>(1, static_cast<std::int64_t>(on.scale.max - on.scale.min));
    const std::int64_t rise = Truncate((target - on.scale.min) * on.Height()) / range;
    return on.bottom - Edge(static_cast<double>(rise));
}

int WeightY(const ScalePixels& on, double weight) {
    if (!(weight >= on.scale.min))
        return on.bottom;
    const int y = AverageY(on, std::trunc(std::min(weight, on.scale.max)));
    return std::clamp(y, std::min(on.top, on.bottom), on.bottom);
}

PlanLegend PlanLegendOf(const CRect& canvas, const CRect& lineSize, const CRect& weightSize, const CRect& barsSize) {
    const double height = lineSize.Height();
    const int top = Truncate(canvas.top - height * kLegendRise);
    const LegendEntry line = LegendEntryTo(canvas.right, top, lineSize, {kLegendGap * height, kLineSample * height});
    const LegendEntry weight = SquareLeftOf(line, weightSize);
    return {line, weight, SquareLeftOf(weight, barsSize)};
}

} // namespace melkar
