#pragma once

#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/support/numbers.h>

#include <algorithm>
#include <array>
#include <cstdint>

/// @file
/// Where the parts of the quadrant graph stand. Device units; divisions truncate towards zero.
///
///      Title
///      caption +-----------+-----------+  [] right upper     legend: 10 right of the canvas, from its top down;
///        50 -- |   left    |   right   |  [] left upper      a square of one line before each entry
///              |   upper   |   upper   |  [] right lower
///              +-----------+-----------+  [] left lower
///              |   left    |   right   |
///              |   lower   |   lower   |  +------+------+    share box: 10 right of the canvas, on its bottom
///         0 -- |           |           |  | 12 % | 40 % |
///              +-----------+-----------+  +------+------+
///              0           |          50
///                       caption
///                        (xm, ym) is the corner that the four share

namespace melkar {

constexpr int kSideGap = 10; ///< from the canvas to the figures, the legend and the share box

/// One scale of the graph, whole numbers.
struct QuadrantScale {
    int min;
    int max;
    int mid; ///< where the dividing line stands

    bool HasRange() const { return min != max; }
    /// How far a value stands from the scale's beginning on a canvas of this extent; not cut at the ends.
    int Offset(int value, int extent) const {
        const std::int64_t range = std::int64_t{max} - min;
        return range == 0 ? 0 : NearestInt(extent * (std::int64_t{value} - min) / range);
    }
    /// Half-way on a scale without range: four quadrants of one size tell that there is none.
    int DividingOffset(int extent) const { return HasRange() ? Offset(mid, extent) : extent / 2; }
};

/// Measures that the side of the square depends on.
struct SquareRoom {
    CRect graph;
    CPoint canvas;   ///< top-left corner of the canvas as the frame has laid it out
    int titleSpace;  ///< room above the canvas in half title heights
    int lineHeight;  ///< of the text that keeps the room at the left
    int rightMargin; ///< room for legend and share box
};

/// The side of the square: what is left below the title, made shorter line by line until three lines fit below it and
/// the margin to its right. 0 where it doesn't fit. A line without height counts as a unit.
constexpr int SquareSide(const SquareRoom& room) {
    const std::int64_t line = room.lineHeight;
    const std::int64_t start = std::int64_t{room.graph.bottom} - line * (room.titleSpace / 2 + 3) - room.graph.top;
    const std::int64_t tooLow = room.canvas.y + start - (room.graph.bottom - 3 * line);
    const std::int64_t tooWide = room.canvas.x + start - (std::int64_t{room.graph.right} - room.rightMargin);
    const std::int64_t excess = std::max({tooLow, tooWide, std::int64_t{0}});
    const std::int64_t step = std::max<std::int64_t>(line, 1);
    return NearestInt(std::max<std::int64_t>(start - (excess + step - 1) / step * step, 0));
}

/// The four parts of a rectangle around a corner that they share.
struct Quadrants {
    CRect leftUpper, rightUpper, leftLower, rightLower;
};

constexpr Quadrants QuadrantsAround(const CRect& whole, int xm, int ym) {
    return {{whole.left, whole.top, xm, ym},
            {xm, whole.top, whole.right, ym},
            {whole.left, ym, xm, whole.bottom},
            {xm, ym, whole.right, whole.bottom}};
}

/// The right edge of legend and share box.
constexpr int RightColumnEnd(const CRect& graph) { return graph.right - graph.Width() / 20; }

/// Where a legend entry's text wraps: between its square, one line wide, and the column's end.
constexpr CRect LegendRoom(const CRect& graph, const CRect& canvas, int line) {
    return {canvas.right + kSideGap + line, canvas.top, RightColumnEnd(graph), canvas.top};
}

/// The share box, 2.4 lines high.
inline CRect ShareBox(const CRect& graph, const CRect& canvas, int lineHeight) {
    return {canvas.right + kSideGap, Truncate(canvas.bottom - 2.4 * lineHeight), RightColumnEnd(graph), canvas.bottom};
}

/// Counts in the order in which the first of equals wins: left upper, left lower, right upper, right lower.
using QuadrantCounts = std::array<int, 4>;

/// The shares in per cent as they are printed: "%.1f%% ", with one blank behind the sign. They add up to 100.0: the
/// largest takes up what rounding leaves. All empty if nothing was counted.
std::array<CString, 4> ShareTexts(const QuadrantCounts& counts);

/// A text's box with its middle on a point.
constexpr CRect CenteredOn(CPoint point, const CRect& size) {
    CRect box(point.x, point.y, AddEdge(point.x, size.Width()), AddEdge(point.y, size.Height()));
    box.OffsetRect(-(size.Width() / 2), -(size.Height() / 2));
    return box;
}

} // namespace melkar
