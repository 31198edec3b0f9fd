#include <MelkarCommon/frame/scale.h>

#include <MelkarCommon/platform/measures.h>
#include <MelkarCommon/support/bounds.h>
#include <MelkarCommon/support/numbers.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace melkar {

namespace {

/// The smallest of 1, 2, 5, 10, 20, 50 ... that is not below `least`.
double RoundFactor(double least) {
    const double decade = std::pow(10.0, std::floor(std::log10(std::max(1.0, least))));
    for (const double digit : {1.0, 2.0, 5.0})
        if (digit * decade >= least)
            return digit * decade;
    return 10 * decade;
}

} // namespace

int ScaleLineY(const ScalePixels& on, double value) {
    const Scale& scale = on.scale;
    if (!scale.HasRange())
        return on.bottom;
    const int rise = Truncate((value - scale.min) * on.Height() / (scale.max - scale.min));
    const auto [low, high] = std::minmax({0, on.Height()});
    return on.bottom - std::clamp(rise, low, high); // the product may be infinite, the line lies on the scale
}

int FigureY(const ScalePixels& on, double value) {
    const Scale& scale = on.scale;
    if (!(value >= scale.min))
        return on.bottom;
    if (value > scale.max)
        return on.top;
    if (!scale.HasRange())
        return on.bottom;
    return on.bottom - Truncate((value - scale.min) / (scale.max - scale.min) * on.Height());
}

int FigureFromZeroY(const ScalePixels& on, double value) {
    const Scale& scale = on.scale;
    if (!(value >= scale.min))
        return on.bottom;
    if (value > scale.max)
        return on.top;
    if (!(scale.max > 0))
        return on.bottom; // nothing to measure by
    return Edge(on.bottom - std::trunc(value / scale.max * on.Height()));
}

int TargetY(const ScalePixels& on, double value) {
    const Scale& scale = on.scale;
    if (!scale.HasRange())
        return on.bottom;
    return Truncate(on.bottom - (value - scale.min) * on.Height() / (scale.max - scale.min));
}

int AverageY(const ScalePixels& on, double value) {
    const Scale& scale = on.scale;
    if (!scale.HasRange())
        return on.bottom;
    const auto distance = static_cast<std::int64_t>(value - scale.min);
    const auto range = static_cast<std::int64_t>(scale.max - scale.min);
    return on.bottom - static_cast<int>(distance * on.Height() / std::max<std::int64_t>(range, 1));
}

ScaleWalk WalkScale(const ScalePixels& on, int labelHeight) {
    const Scale& scale = on.scale;
    double step = scale.step;
    if (!(scale.max >= scale.min) || !(step > 0))
        return {scale.min, step, 0};
    const double rows = std::clamp(on.Height(), 1, kMostSide);
    const double lines = std::floor((scale.max - scale.min) / step);
    if (lines > rows)
        step *= RoundFactor(lines * std::max(1, labelHeight) / rows);
    ScaleWalk walk{scale.min, step, Truncate((scale.max - scale.min) / step) + 1};
    while (walk.count > 1 && walk.At(walk.count - 1) > scale.max)
        --walk.count;
    return walk;
}

CString ScaleLabel(double value, int decimals) {
    const bool isWhole = std::trunc(value) == value;
    return FormatFixed(value + 0.0, isWhole ? 0 : decimals); // the sum takes the sign off a 0
}

} // namespace melkar
