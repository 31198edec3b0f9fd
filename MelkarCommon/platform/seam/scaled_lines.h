#pragma once

#include <MelkarCommon/platform/seam/pixel_grid.h>
#include <MelkarCommon/platform/seam/stroke.h>

#include <deque>
#include <span>
#include <vector>

/// @file
/// Internal. Lines of units as lines of more pixels.

namespace melkar {

struct PixelPath {
    std::vector<POINT> points;
    Stroke stroke;
};

/// The paths that take the place of a polyline, as `Backend::StrokePolyline` has it. A line of width w covers whole
/// rows from the edge of the first of its w rows on; along it an axis-parallel one ends at the edges at which it ends
/// in units. A pattern has no corners: each of its segments is a path.
std::vector<PixelPath> LinesOnGrid(std::span<const POINT> points, const Stroke& stroke, const PixelGrid& grid);

/// Lines drawn a unit apart close up to a thick one. In pixels they may have room between them, and sloped ones a pale
/// seam. Keeps the lines of width 1 that were drawn last.
class NeighbouringLines {
public:
    /// What closes the line up to those that it lies beside; keeps the line.
    std::vector<PixelPath> Add(POINT from, POINT to, const Stroke& stroke, const PixelGrid& grid);
    void Forget() { m_lines.clear(); }

private:
    struct Line {
        POINT from;
        POINT to;
        Stroke stroke;
    };
    std::deque<Line> m_lines;
};

} // namespace melkar
