#include <MelkarCommon/frame/scale.h>

#include <MelkarCommon/support/numbers.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace melkar {

namespace {

constexpr double kFar = 1 << 26; ///< off any surface; sums with it stay within an int
constexpr int kMostRows = 32767; ///< of any surface, however high a canvas is laid out

/// The smallest of 1, 2, 5, 10, 20, 50 ... that is not below `least`.
double RoundFactor(double least) {
    const double decade = std::pow(10.0, std::floor(std::log10(std::max(1.0, least))));
    for (const double digit : {1.0, 2.0, 5.0})
        if (digit * decade >= least)
            return digit * decade;
    return 10 * decade;
}

} // namespace

int ScaleLineY(const Scale& scale, double value) {
    if (!scale.HasRange())
        return scale.bottom;
    const int rise = Truncate((value - scale.min) * scale.Height() / (scale.max - scale.min));
    const auto [low, high] = std::minmax({0, scale.Height()});
    return scale.bottom - std::clamp(rise, low, high); // the product may be infinite, the line lies on the scale
}

int FigureY(const Scale& scale, double value) {
    if (!(value >= scale.min))
        return scale.bottom;
    if (value > scale.max)
        return scale.top;
    if (!scale.HasRange())
        return scale.bottom;
    return scale.bottom - Truncate((value - scale.min) / (scale.max - scale.min) * scale.Height());
}

int FigureFromZeroY(const Scale& scale, double value) {
    if (!(value >= scale.min))
        return scale.bottom;
    if (value > scale.max)
        return scale.top;
    if (!(scale.max > 0))
        return scale.bottom; // nothing to measure by
    return Truncate(std::clamp(scale.bottom - std::trunc(value / scale.max * scale.Height()), -kFar, kFar));
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
    const double rows = std::clamp(scale.Height(), 1, kMostRows);
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
