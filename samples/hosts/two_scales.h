#pragma once

#include <MelkarCommon/declarative/plot_graph.h>
#include <MelkarCommon/frame/data_table.h>

#include <vector>

// What a host writes to get a plot of two series of different units: weight by the left scale, body fat by the right
// one. `CPlotGraph` has one scale for all points, the left one where there is one, and joins them in black; here each
// point says which scale it goes by, and is joined to the one before it in its own colour. Panel, scales, note box and
// the points' data are those of the base classes. C++17 suffices.
//
// Data file: as of the kind "plot", with a sixth field, 1 for a point on the right scale.
class CTwoScales : public CPlotGraph {
public:
    using CPlotGraph::CPlotGraph;
    using CPlotGraph::Draw;

    // 1. A row a point, in the place of those that were there. 0; 101 with everything kept; 102 without points.
    long ReadDataFile(char* path) override;
    // 2. Both halves of the cycle, and the copy that a panel makes before it has points, made again.
    long Draw(CRect area, char* path) override;
    // 3. Where `CPlotGraph` puts its circles: the lines below them end under their middles.
    void DrawPlot(CRect graph) override;
    // 4. Drawn already.
    void DrawPlotConnect(CRect graph, int endHead, int startHead) override;

    melkar::Contents Shown() const; // with points where they stand, and each series at its scale
    static melkar::DataTables DataFiles();
    static bool Register(); // adds the kind "two-scales" to the library's; once, before threads draw

private:
    struct Point;
    struct File;

    bool IsOnRight(int point) const { return point < static_cast<int>(m_isOnRight.size()) && m_isOnRight[point]; }
    CPoint PlaceOf(const CRect& graph, int point);
    void DrawJoin(const CPoint& from, const CPoint& to, COLORREF color) const;
    void DrawCircle(const CPoint& at, int size, COLORREF color) const;

    std::vector<bool> m_isOnRight; // of each point
};

// A value between the ends of an axis, from its low end on: rounded to a pixel, so that one on a grid line stands
// there.
inline int AlongAxis(int length, float rate) { return static_cast<int>(rate * static_cast<float>(length) + 0.5F); }

// The circle of a point, as `CPlotGraph` has it: an odd diameter comes out one smaller.
inline CRect CircleAt(const CPoint& at, int size) {
    return {at.x - size / 2, at.y - size / 2, at.x + size / 2, at.y + size / 2};
}
