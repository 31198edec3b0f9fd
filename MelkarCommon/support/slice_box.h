#pragma once

#include <MelkarCommon/platform/geometry.h>

#include <algorithm>
#include <cmath>
#include <numbers>

/// @file
/// Internal. The room that a slice of a pie takes.
///
///     .--+--.        from `from` counter-clockwise to `to`: both ends, the middle of the pie, and each of its four
///    /   |   to      utmost points that lies between the ends
///   |    +---|
///    \   |   /
///     '-from'

namespace melkar {

/// The smallest rectangle around a slice of the pie in `pie`, whose ends lie in the directions of `from` and `to`; all
/// of the pie if both are one.
inline CRect SliceBox(const CRect& pie, const CPoint& from, const CPoint& to) {
    constexpr double kTurn = 2 * std::numbers::pi;
    const double x = (double(pie.left) + pie.right) / 2;
    const double y = (double(pie.top) + pie.bottom) / 2;
    const double across = (double(pie.right) - pie.left) / 2;
    const double down = (double(pie.bottom) - pie.top) / 2;
    const auto turned = [](double angle) { return angle > 0 ? angle : angle + kTurn; };
    const double start = std::atan2((y - from.y) * across, (from.x - x) * down);
    const double sweep = turned(std::atan2((y - to.y) * across, (to.x - x) * down) - start);

    double left = x, top = y, right = x, bottom = y;
    const auto take = [&](double angle) {
        left = std::min(left, x + across * std::cos(angle));
        right = std::max(right, x + across * std::cos(angle));
        top = std::min(top, y - down * std::sin(angle));
        bottom = std::max(bottom, y - down * std::sin(angle));
    };
    take(start);
    take(start + sweep);
    for (int quarter = -2; quarter <= 1; ++quarter)
        if (const double angle = quarter * kTurn / 4; turned(angle - start) < sweep)
            take(angle);
    const auto edge = [](double value) { return static_cast<int>(std::lround(value)); };
    return {edge(left), edge(top), edge(right), edge(bottom)};
}

} // namespace melkar
