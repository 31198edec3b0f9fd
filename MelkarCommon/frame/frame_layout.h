#pragma once

#include <MelkarCommon/platform/geometry.h>

/// @file
/// Where the frame's parts stand. Device units; divisions truncate towards zero.
///
///     graph.left                                  graph.right
///      |#  Title                                       |     # side bar, one pixel wide
///      |#        +----------------------------------+  |     title space: title height x space / 2
///      |#u scale |             canvas               |d |     scale: room for the labels left of the canvas
///      |#p       |                                  |o |     right margin: width / 50
///      |#        +----------------------------------+  |     bottom margin: height / 20
///      |#                                              |     up, down: turned labels, centred along the canvas

namespace melkar {

/// The side bar.
constexpr CRect SideBarOf(const CRect& graph) { return {graph.left, graph.top, graph.left + 1, graph.bottom}; }

/// Where the title begins; its right and bottom come from its text.
constexpr CRect TitleStart(const CRect& graph, const CRect& sideBar) {
    return {sideBar.right + 1, graph.top + 1, graph.left + 30, graph.bottom - 1};
}

/// The plot area. @param graph the whole @param sideBar its side bar @param titleHeight that of the title's text
/// @param titleSpace room above the canvas in half title heights @param scaleRoom width of the scale labels
constexpr CRect CanvasOf(const CRect& graph, const CRect& sideBar, int titleHeight, int titleSpace, int scaleRoom) {
    return {sideBar.right + scaleRoom, graph.top + titleHeight * titleSpace / 2, graph.right - graph.Width() / 50,
            graph.bottom - graph.Height() / 20};
}

/// The canvas with a margin at the right as wide as the left one, for a scale of its own there.
constexpr CRect BetweenScales(const CRect& canvas, const CRect& graph) {
    return {canvas.left, canvas.top, graph.right - (canvas.left - graph.left), canvas.bottom};
}

/// A short upright line across an edge.
struct Tick {
    int x;    ///< of all of it
    int from; ///< y at which it begins
    int to;   ///< y before which it ends
};

/// y at which a label of this length begins that reads upwards.
constexpr int UpwardLabelY(const CRect& canvas, int length) { return (canvas.top + canvas.bottom + length) / 2; }
/// The same of one that reads downwards.
constexpr int DownwardLabelY(const CRect& canvas, int length) { return (canvas.top + canvas.bottom - length) / 2; }

} // namespace melkar
