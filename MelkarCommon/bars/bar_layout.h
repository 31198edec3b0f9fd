#pragma once

#include <MelkarCommon/frame/legend_layout.h>
#include <MelkarCommon/support/platform/arrays.h>
#include <MelkarCommon/support/platform/geometry.h>

#include <cstdint>
#include <optional>
#include <vector>

/// @file
/// Where days and bars stand on the canvas. Device units; divisions truncate towards zero.
///
///   L                                   R
///   |   +---+       +---+               |     slot of a day: an Nth of the canvas
///   |   |   |       |   |       +---+   |     bar: half a slot wide, in its middle
///   |   | d0|       | d1|       | d2|   |     all series of a day share left and right
///   +-------------+-------------+-------+  B

namespace melkar {

/// A line's legend: its sample ends at the text.
constexpr LegendSpacing kLineLegend{0, 60};
/// From the sample of a line's legend to the text of the entry left of it.
constexpr int kLegendBetween = 20;

/// Left and right of a day's bar.
struct BarSpan {
    int left;
    int right;

    int Middle() const { return (left + right) / 2; }
};

/// The left edge of a day's slot; of the day behind the last one, the right edge of the canvas.
inline int SlotLeft(const CRect& canvas, int day, int days) {
    return canvas.left + static_cast<int>(std::int64_t{canvas.Width()} * day / days);
}

/// `days` is at least 1.
inline BarSpan BarOf(const CRect& canvas, int day, int days) {
    const int width = static_cast<int>(canvas.Width() / (std::int64_t{2} * days));
    const int left = static_cast<int>(std::int64_t{canvas.Width()} * day / days) + width / 2 + canvas.left;
    return {left, left + width};
}

/// What a line series keeps of a day: a twentieth of the canvas wide around the slot's middle, without height at `y`.
inline CRect LineBoxOf(const CRect& canvas, int day, int days, int y) {
    const int width = canvas.Width() / 20;
    const int left = static_cast<int>(canvas.Width() / (std::int64_t{2} * days) +
                                      std::int64_t{canvas.Width()} * day / days - width / 2 + canvas.left);
    return {left, y, left + width, y};
}
inline CPoint DotOf(const CRect& box) { return {(box.left + box.right) / 2, box.top}; }
inline int DotRadius(const CRect& box) { return box.Width() / 10; }

/// Neighbouring days at one height: whole slots, `right` that of the first day behind them.
struct LevelStretch {
    int left;
    int right;
    int y;
};

/// The stretches of a line that has a height of its own for each day, or none. It starts anew behind a day without one
/// and where the height changes, and nowhere else.
std::vector<LevelStretch> LevelStretches(const CRect& canvas, const std::vector<std::optional<int>>& heights);

/// Index of the bar under a point: the first whose right edge isn't left of it and whose top isn't below it, since a
/// stack grows upwards; -1 in the gaps, above the bars and from `bottom` down.
int BarAt(const CObArray& bars, int x, int y, int bottom);

/// How far a text of this size reaches across and down when it is turned by an angle in tenths of a degree.
struct TurnedExtent {
    double across;
    double down;
};
TurnedExtent ExtentOf(int width, int height, int escapement);

} // namespace melkar
