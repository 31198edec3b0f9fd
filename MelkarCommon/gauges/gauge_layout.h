#pragma once

#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/types.h>
#include <MelkarCommon/support/bounds.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>

/// @file
/// Where a gauge's figure stands and which class it belongs to. Device units; divisions truncate towards zero.
///
///  bar gauge                                   disc gauge
///    L                          R                L                          R
///    +--------------------------+  T             +-------+--------+---------+  T
///    |##############            |  T + tenth     |  thin | normal |  more   |     first strip: one line high
///    |##########24.2#           |                | -20%  |        |  +20%   |     second strip: to the middle
///    |##############            |  B - tenth     +-------+--------+---------+  (T + B) / 2
///    +--------------------------+  B             |         (o) 24.2 %       |     band: a twentieth off both edges
///                 x                              +--------------------------+  B
///                                                           x

namespace melkar {

/// The class of a figure: -1 below the scale, as many as there are bounds at or above it; but the first class whose
/// upper bound lies above the figure wins over both. Where none of these holds the former class stays.
inline int ClassOf(double value, double min, double max, std::span<const double> bounds, int former) {
    int found = min > value ? -1 : former;
    if (max <= value)
        found = static_cast<int>(bounds.size());
    const auto bound = std::find_if(bounds.begin(), bounds.end(), [value](double b) { return b > value; });
    return bound != bounds.end() ? static_cast<int>(bound - bounds.begin()) : found;
}

/// A gauge's scale along its width. A scale without range has everything at its left end.
struct GaugeScale {
    double min;
    double max;
    int left;
    int right;

    /// x of a figure: (value - min) x width / (max - min) from the left, not cut at the ends but where coordinates make
    /// no sense any more. What is no number stands at the left end.
    int FigureX(double value) const { return Cut((value - min) * Width() / (max - min) + left); }
    /// x of a class bound: the quotient comes before the product here, and is cut before the left end is added.
    int BoundX(double bound) const { return Cut(std::trunc((bound - min) / (max - min) * Width()) + left); }

private:
    double Width() const { return double{1} * right - left; }
    int Cut(double x) const { return min == max || std::isnan(x) ? left : Edge(x); }
};

// How a gauge writes its figure: on one line, in the middle of its box's height.
constexpr UINT kFigureAtLeft = DT_VCENTER | DT_SINGLELINE;
constexpr UINT kFigureAtRight = DT_RIGHT | kFigureAtLeft;

/// The band of the bar.
constexpr CRect BarBand(const CRect& canvas) {
    const int margin = canvas.Height() / 10;
    return {canvas.left, canvas.top + margin, canvas.right, canvas.bottom - margin};
}

/// Where the figure of a bar stands: in it, behind it, or as much of it as there is room for.
enum class GaugeFigurePlace : std::uint8_t { InBar, BehindBar, CutOff };

/// `end` is where the bar ends, `width` that of the figure.
constexpr GaugeFigurePlace PlaceGaugeFigure(const CRect& band, int end, int width) {
    if (AddEdge(end, width) >= band.right)
        return GaugeFigurePlace::CutOff;
    return width <= SubtractEdge(end, band.left) ? GaugeFigurePlace::InBar : GaugeFigurePlace::BehindBar;
}

/// The first strip of a class, from the bound of the class before it to its own.
inline CRect FirstStrip(const CRect& graph, const GaugeScale& scale, std::span<const double> bounds, std::size_t cls,
                        int bottom) {
    return {cls == 0 ? graph.left : scale.BoundX(bounds[cls - 1]), graph.top, scale.BoundX(bounds[cls]), bottom};
}

/// The second strip of a class, below the first.
constexpr CRect SecondStrip(const CRect& graph, const CRect& first) {
    return {first.left, first.bottom, first.right, (graph.top + graph.bottom) / 2};
}

/// The disc at a figure.
constexpr CRect DiscAt(const CRect& band, int x) {
    const int radius = band.Height() / 2;
    return {x - radius, band.top, x + radius, band.bottom};
}

/// The band of the disc, from edge to edge of the canvas.
constexpr CRect DiscBand(const CRect& graph, const CRect& canvas) {
    const int margin = graph.Height() / 20;
    return {canvas.left, (graph.top + graph.bottom) / 2 + margin, canvas.right, graph.bottom - margin};
}

} // namespace melkar
