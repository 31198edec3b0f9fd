#pragma once

#include <MelkarCommon/frame/legend_layout.h>
#include <MelkarCommon/platform/arrays.h>
#include <MelkarCommon/platform/geometry.h>

/// @file
/// Shares of the three intensity classes, and where pie and legend stand. Device units; divisions of whole numbers
/// truncate, figures with a fraction do so once they are a position.
///
///   legend below                         legend beside
///   +--------------------+   1/4 of      +-----------------------------+
///   |        ___         |   the rest    |      ___   [] vigorous % min|
///   |       /   \        |               |     /   \  [] moderate % min|
///   |       \___/        |               |    |     | [] light    % min|
///   |  [] vigorous % min |               |     \___/                   |     pie: on the bottom edge,
///   |  [] moderate % min |               +-----------------------------+     4/5 of the height
///   |  [] light    % min |
///   +--------------------+

namespace melkar {

/// One figure for each intensity class: minutes or per cent.
struct ClassFigures {
    double light = 0;
    double moderate = 0;
    double vigorous = 0;

    double Sum() const { return vigorous + moderate + light; }
};

/// Minutes of the classes from those of the levels, whose entry 0 is level 1. The moderate class reaches from level
/// `from` to level `to`; bounds beyond the levels at hand stop there, and one that ends before it begins is empty. An
/// entry that is no number, or not a finite one, counts as 0.
ClassFigures MinutesOf(const CStringArray& levels, int from, int to);

/// Shares in per cent; none of anything gives 0.
ClassFigures SharesOf(const ClassFigures& minutes);

/// The shares with one decimal each; the largest takes the difference that makes 100.0 of them.
ClassFigures RoundedShares(const ClassFigures& shares);

struct CircleAreas {
    CRect circle; ///< a square; its edges are the wrong way round in a graph too narrow for it
    CRect legend;
};
CircleAreas LegendBelow(const CRect& graph);
CircleAreas LegendBeside(const CRect& graph);

/// Where the slices meet the circle; angles begin at twelve o'clock and run counter-clockwise.
struct CircleMarks {
    CPoint top;
    CPoint vigorousEnd; ///< between vigorous and moderate
    CPoint moderateEnd; ///< between moderate and light
};
/// `minutes` have a sum above 0.
CircleMarks MarksOf(const CRect& circle, const ClassFigures& minutes);

/// A slice, counter-clockwise from one point of the rim to another.
struct CircleSlice {
    CPoint from;
    CPoint to;
    double share; ///< per cent; the light class has what the others leave, rounded as the legend shows them

    bool IsShown() const;                   ///< whether it is large enough
    CRect BoxIn(const CRect& circle) const; ///< the room that it takes
};
struct CircleSlices {
    CircleSlice light;
    CircleSlice moderate;
    CircleSlice vigorous;
};
/// `minutes` have a sum above 0.
CircleSlices SlicesOf(const CRect& circle, const ClassFigures& minutes);
constexpr int kShareDecimals = 6; ///< of the shares in the log

/// Whether a slice is large enough to be painted: its chord is longer than a pixel or its share at least a per cent.
/// What is smaller would be taken for the whole circle.
bool ShowsSlice(CPoint from, CPoint to, double share);

/// One row of the legend.
struct CircleLegendRow {
    LegendEntry entry; ///< square and label
    CRect percent;
    CRect minutes;
};
struct CircleLegend {
    CircleLegendRow light;
    CircleLegendRow moderate;
    CircleLegendRow vigorous;
};
/// Widths of the widest text of each column; `line` is the height of a line.
struct LegendSizes {
    int line;
    int label;
    int percent;
    int minutes;
};
CircleLegend LegendOf(const CRect& legend, const LegendSizes& sizes, bool isCentred);

} // namespace melkar
