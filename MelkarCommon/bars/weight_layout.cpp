#include <MelkarCommon/bars/weight_layout.h>

#include <MelkarCommon/support/numbers.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace melkar {

namespace {

constexpr std::int64_t kFarAway = 1 << 24;

} // namespace

std::optional<Scale> WeightScaleFor(int highest, int lowest, int steps) {
    const double max = std::ceil(highest + 1.9);
    const double min = std::max(0.0, std::floor(lowest - 0.9));
    const double range = max - min;
    if (range > steps && steps < 1)
        return std::nullopt;
    const double step = range <= steps ? 1 : std::floor(range / steps) + 1;
    const auto whole = [](double value) { return double(Truncate(value)); };
    return Scale{whole(max - whole(step) * steps), whole(max), whole(step)};
}

int WeightX(const CRect& canvas, int row, int rows) {
    return canvas.left +
           static_cast<int>(std::int64_t{canvas.Width()} * (std::int64_t{2} * row + 1) / (std::int64_t{2} * rows));
}

int TargetWeightY(const ScalePixels& on, double target) {
    const auto range = std::max<std::int64_t>(1, static_cast<std::int64_t>(on.scale.max - on.scale.min));
    const std::int64_t rise = Truncate((target - on.scale.min) * on.Height()) / range;
    return on.bottom - static_cast<int>(std::clamp(rise, -kFarAway, kFarAway));
}

int WeightY(const ScalePixels& on, double weight) {
    if (!(weight >= on.scale.min))
        return on.bottom;
    const int y = AverageY(on, std::trunc(std::min(weight, on.scale.max)));
    return std::clamp(y, std::min(on.top, on.bottom), on.bottom);
}

} // namespace melkar
