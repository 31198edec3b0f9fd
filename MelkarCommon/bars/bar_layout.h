#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/arrays.h>
#include <MelkarCommon/platform/geometry.h>

#include <cstdint>
#include <optional>
#include <vector>

/// @file
/// Where days, bars and dots stand on the canvas. Device units; divisions truncate towards zero.
///
///     L                                   R
///     |   +---+       +---+               |     slot of a day: an Nth of the canvas
///     |   |   |       |   |       +---+   |     bar: half a slot wide, in its middle
///     |   | d0|       | d1|       | d2|   |     all series of a day share left and right
///     +-------------+-------------+-------+  B

namespace melkar {

/// Left and right of a day's bar.
struct BarSpan {
    int left;  ///< first column
    int right; ///< column behind the last one

    int Middle() const { return (left + right) / 2; } ///< where dots, ticks and captions stand
};

/// The left edge of a day's slot; of the day behind the last one, the right edge of the canvas. `days` is at least 1.
inline int SlotLeft(const CRect& canvas, std::int64_t day, std::int64_t days) {
    return canvas.left + static_cast<int>(canvas.Width() * day / days);
}

/// The width of half a slot.
inline int HalfSlot(const CRect& canvas, int days) {
    return static_cast<int>(canvas.Width() / (std::int64_t{2} * days));
}

/// The bar of a day: half a slot, in the middle of its own. `days` is at least 1.
inline BarSpan BarOf(const CRect& canvas, int day, int days) {
    const int width = HalfSlot(canvas, days);
    const int left = SlotLeft(canvas, day, days) + width / 2;
    return {left, left + width};
}

constexpr int kThickTop = -2;   ///< first row of a thick line, from its height
constexpr int kThickBottom = 1; ///< its last row

/// The pixels of a thick line.
constexpr CRect ThickLineBox(int left, int right, int y) { return {left, y + kThickTop, right, y + kThickBottom + 1}; }

/// The middle of a bar's top.
inline CPoint PeakOf(const RECT& bar) { return {(bar.left + bar.right) / 2, bar.top}; }

/// What a line series keeps of a day: a twentieth of the canvas wide around the slot's middle, without height at `y`.
inline CRect LineBoxOf(const CRect& canvas, int day, int days, int y) {
    const int width = canvas.Width() / 20;
    const int left = SlotLeft(canvas, day, days) + HalfSlot(canvas, days) - width / 2;
    return {left, y, left + width, y};
}

/// The dot of a line series, a fifth of its box wide.
inline CRect DotOf(const CRect& box) {
    const CPoint centre = PeakOf(box);
    const int radius = box.Width() / 10;
    return {centre.x - radius, centre.y - radius, centre.x + radius, centre.y + radius};
}

/// Neighbouring days at one height: whole slots, `right` that of the first day behind them.
struct LevelStretch {
    int left;  ///< left end of the first slot
    int right; ///< right end of the last one
    int y;     ///< of the line
};

/// The stretches of a line that has a height of its own for each day, or none. It starts anew behind a day without one
/// and where the height changes, and nowhere else.
MELKAR_API std::vector<LevelStretch> LevelStretches(const CRect& canvas,
                                                    const std::vector<std::optional<int>>& heights);

/// Index of the bar under a point: the first whose right edge isn't left of it and whose top isn't below it, since a
/// stack grows upwards; -1 in the gaps, above the bars and from `bottom` down.
MELKAR_API int BarAt(const CObArray& bars, int x, int y, int bottom);

/// The same of bars that stand anywhere: the first that holds the point; -1 if none does.
MELKAR_API int PlacedBarAt(const CObArray& bars, CPoint point);

} // namespace melkar
