#include <MelkarCommon/bars/weight_layout.h>

#include <MelkarCommon/support/numbers.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace melkar {

namespace {

constexpr std::int64_t kFarAway = 1 << 24;

std::int64_t RangeOf(const WeightScale& scale) {
    return std::max<std::int64_t>(1, std::int64_t{scale.max} - scale.min);
}

} // namespace

std::optional<WeightScale> WeightScaleFor(int highest, int lowest, int steps) {
    const double max = std::ceil(highest + 1.9);
    const double min = std::max(0.0, std::floor(lowest - 0.9));
    const double range = max - min;
    if (range > steps && steps < 1)
        return std::nullopt;
    const int interval = range <= steps ? 1 : Truncate(std::floor(range / steps) + 1);
    return WeightScale{Truncate(max), Truncate(max - double(interval) * steps), interval};
}

int WeightX(const CRect& canvas, int row, int rows) {
    return canvas.left +
           static_cast<int>(std::int64_t{canvas.Width()} * (std::int64_t{2} * row + 1) / (std::int64_t{2} * rows));
}

int TargetWeightY(const CRect& canvas, const WeightScale& scale, double target) {
    const std::int64_t rise = Truncate((target - scale.min) * canvas.Height()) / RangeOf(scale);
    return canvas.bottom - static_cast<int>(std::clamp(rise, -kFarAway, kFarAway));
}

int WeightY(const CRect& canvas, const WeightScale& scale, double weight) {
    const std::int64_t rise = canvas.Height() * (std::int64_t{Truncate(weight)} - scale.min) / RangeOf(scale);
    return canvas.bottom - static_cast<int>(std::clamp<std::int64_t>(rise, 0, std::max(0, canvas.Height())));
}

} // namespace melkar
