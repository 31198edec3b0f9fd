#include <MelkarCommon/bars/scale.h>

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

int Within(const Scale& scale, double y) {
    return std::isnan(y) ? scale.bottom : Truncate(std::clamp<double>(y, scale.top, std::max(scale.top, scale.bottom)));
}

} // namespace

int ScaleLineY(const Scale& scale, double value) {
    if (!scale.HasRange())
        return scale.bottom;
    return scale.bottom - Truncate((value - scale.min) * scale.Height() / (scale.max - scale.min));
}

int FigureY(const Scale& scale, double value) {
    if (!(value >= scale.min) || !scale.HasRange())
        return scale.bottom;
    if (value > scale.max)
        return scale.top;
    return scale.bottom - Truncate((value - scale.min) / (scale.max - scale.min) * scale.Height());
}

int FigureFromZeroY(const Scale& scale, double value) {
    if (!(value >= scale.min))
        return scale.bottom;
    if (value > scale.max)
        return scale.top;
    // A negative figure on a scale that begins below 0, and a top of 0, must not lead out of the canvas.
    return Within(scale, scale.bottom - std::trunc(value / scale.max * scale.Height()));
}

int TargetY(const Scale& scale, double value) {
    if (!scale.HasRange())
        return scale.bottom;
    return Truncate(scale.bottom - (value - scale.min) * scale.Height() / (scale.max - scale.min));
}

int AverageY(const Scale& scale, double value) {
    if (!scale.HasRange())
        return scale.bottom;
    const auto distance = static_cast<std::int64_t>(value - scale.min);
    const auto range = static_cast<std::int64_t>(scale.max - scale.min);
    return scale.bottom - static_cast<int>(distance * scale.Height() / std::max<std::int64_t>(range, 1));
}

ScaleWalk WalkScale(const Scale& scale, double interval, int labelHeight) {
    if (!(scale.max >= scale.min) || !(interval > 0))
        return {scale.min, interval, 0};
    const double rows = std::max(1, scale.Height());
    const double lines = std::floor((scale.max - scale.min) / interval);
    if (lines > rows)
        interval *= RoundFactor(lines * std::max(1, labelHeight) / rows);
    ScaleWalk walk{scale.min, interval, Truncate((scale.max - scale.min) / interval) + 1};
    while (walk.count > 1 && walk.At(walk.count - 1) > scale.max)
        --walk.count;
    return walk;
}

CString ScaleLabel(double value, int decimals) {
    if (Truncate(std::floor(value)) == Truncate(std::ceil(value)))
        return FormatFixed(Truncate(value), 0);
    return FormatFixed(value, decimals);
}

} // namespace melkar
