#pragma once

#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/support/bounds.h>

#include <algorithm>
#include <cstdint>

/// @file
/// Where the pieces of a declarative panel stand. Device units; offsets come from a profile and may be anything, so
/// every edge stops at 2^24, beyond which no surface reaches and within which widths can be computed.
///
///   +-- panel ------------------------------------------------------+
///   |            +-- title ---------------------------+             |
///   |            +------------------------------------+             |
///   | caption figures +-- graph area -----+ figures caption  +note+ |
///   |  strip   scale  |   .    .    .     |  scale   strip   |  # a||
///   |                 |   .    .    .     |                  |  # b||
///   |                 +-------------------+                  +----+ |
///   |               figures of the horizontal scale                 |
///   |               caption of the horizontal scale                 |
///   +----------------------------------------------------------------+

namespace melkar {

constexpr double kPi = 3.1415926535; ///< as far as the angles of slices and arrow heads go

/// Whether a piece can show anything: a host's own step may be given any rectangle.
constexpr bool HasRoom(const CRect& box) { return MakesSense(box) && box.Width() > 0 && box.Height() > 0; }

/// Distances of a piece from the four edges of the panel, inwards.
struct PanelOffsets {
    int left;
    int top;
    int right;
    int bottom;
};

inline CRect Inside(const CRect& panel, const PanelOffsets& offsets) {
    return {Edge(double(panel.left) + offsets.left), Edge(double(panel.top) + offsets.top),
            Edge(double(panel.right) - offsets.right), Edge(double(panel.bottom) - offsets.bottom)};
}

/// The title: as `Inside`, but with a height of its own.
inline CRect TitleBox(const CRect& panel, const POINT& leftTop, int right, int height) {
    CRect box = Inside(panel, {leftTop.x, leftTop.y, right, 0});
    box.bottom = Edge(double(panel.top) + leftTop.y + height);
    return box;
}

/// The distance of two divisions of an axis, and what counts as their number: a scale needs one at least.
struct Divisions {
    int count;
    double step;
};
inline Divisions DivisionsOf(int extent, int count) {
    const int divisions = std::max(count, 1);
    return {divisions, double(extent) / divisions};
}

/// A scale beside the graph area and the strip of its caption beyond it. The scale reaches half a step beyond both ends
/// of the axis, so that each division has a band of one step about its line and the end figures centre on the edges.
struct ScaleBoxes {
    CRect figures;
    CRect caption;
};

/// What the profile says of one scale: gap to the graph area, extent of the figures, extent of the caption.
struct ScaleExtents {
    int offset;
    int figures;
    int caption;
};

ScaleBoxes LeftScaleBoxes(const CRect& graph, double step, const ScaleExtents& extents);
ScaleBoxes RightScaleBoxes(const CRect& graph, double step, const ScaleExtents& extents);
ScaleBoxes BottomScaleBoxes(const CRect& graph, double step, const ScaleExtents& extents);

/// Band of figure `index` (from 0) on a vertical scale, upwards from the bottom.
inline CRect BandUpwards(const CRect& scale, double step, int index) {
    return {scale.left, Edge(scale.bottom - (index + 1.0) * step), scale.right, Edge(scale.bottom - index * step)};
}
/// The same on a horizontal scale, rightwards from the left.
inline CRect BandRightwards(const CRect& scale, double step, int index) {
    return {Edge(scale.left + index * step), scale.top, Edge(scale.left + (index + 1.0) * step), scale.bottom};
}

/// Which of `count` divisions are drawn: every `stride`-th one. More of them than `extent` has pixels would paint the
/// same pixels again and again (and a profile may ask for 2^31 of them), so then a stride leaves one a pixel. Of an
/// area far larger than any surface no more pixels count than the longest side of one has.
inline int StrideOf(int count, int extent) {
    const int pixels = std::clamp(std::abs(extent), 1, kMostSide);
    return 1 + static_cast<int>((std::int64_t{count} - 1) / pixels);
}

/// What shows one division of an axis: a line across the graph area and a tick `tick` long at its edge.
struct DivisionLines {
    CPoint gridFrom, gridTo;
    CPoint tickFrom, tickTo;
};
inline DivisionLines LeftDivision(const CRect& graph, double step, int index, int tick) {
    const int y = Edge(graph.bottom - index * step);
    return {{graph.left, y}, {graph.right, y}, {graph.left, y}, {Edge(double(graph.left) + tick), y}};
}
inline DivisionLines RightDivision(const CRect& graph, double step, int index, int tick) {
    const int y = Edge(graph.bottom - index * step);
    return {{graph.left, y}, {graph.right, y}, {graph.right, y}, {Edge(double(graph.right) - tick), y}};
}
inline DivisionLines BottomDivision(const CRect& graph, double step, int index, int tick) {
    const int x = Edge(graph.left + index * step);
    return {{x, graph.bottom}, {x, graph.top}, {x, graph.bottom}, {x, Edge(double(graph.bottom) - tick)}};
}

/// A value as a fraction of its axis, 0 to 1; 0 for what is no number.
inline float RateOf(float value, float min, float max) {
    const float rate = (value - min) / (max - min);
    if (!(rate >= 0))
        return 0;
    return std::min(rate, 1.0F);
}

/// Where a caption that runs upwards begins, so that it stands centred in its strip.
inline CPoint UpwardCaptionAt(const CRect& strip, int textWidth, int textHeight) {
    return {strip.left + (strip.Width() - textHeight) / 2, strip.bottom - (strip.Height() - textWidth) / 2};
}

/// Row `index` of a note box with `rows` rows; what a whole row height leaves over stays empty at the bottom.
inline CRect NoteRow(const CRect& box, int rows, int index) {
    const int height = box.Height() / rows;
    return {box.left, box.top + index * height, box.right, box.top + (index + 1) * height};
}
inline CRect NoteMarks(const CRect& box, int width) {
    return {box.left, box.top, Edge(double(box.left) + width), box.bottom};
}
inline CRect NoteText(const CRect& row, int markWidth) {
    return {Edge(double(row.left) + markWidth), row.top, row.right, row.bottom};
}

} // namespace melkar
