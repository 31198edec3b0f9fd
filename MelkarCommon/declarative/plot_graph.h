#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/declarative/graph_base.h>
#include <MelkarCommon/declarative/plot.h>

#include <vector>

/// @file
/// Points on a panel.

/// Points on the panel's graph area: filled circles, each with a size and a colour of its own, joined on demand to the
/// point before by a thick black line that stops at the two rims. The host or a derived class feeds them by `AddPlot`;
/// none is ever removed.
///
/// @code{.cpp}
/// CPlotGraph weight(nullptr, view, "WEIGHT", view, nullptr, balloon);
/// for (int week = 0; week < 5; ++week)
///     weight.AddPlot(CPlot(week, 78.5F - 0.6F * week, 12, RGB(44, 96, 150), week > 0)); // joined to the one before
/// weight.Draw(CRect(0, 0, 700, 400), nullptr, nullptr);
/// weight.BitBlt(); // the copy that the panel made had no points yet
/// @endcode
class MELKAR_API CPlotGraph : public CGraphBase {
public:
    /// Arguments as for `CGraph`.
    CPlotGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon);
    ~CPlotGraph() override;

    using CGraphBase::Draw;
    long ReadIniFile(char* path) override;

    virtual long ReadPlotDataFile(char* path); ///< nothing: where a derived class loads its points. @return 0
    /// The panel, then its points. The panel was copied out before the points came; who draws on a screen calls
    /// `BitBlt` or takes the surface from `GetMemDC`.
    /// @return what `CGraphBase::Draw` returned; if that isn't 0 no point is painted; -999 after an exception.
    virtual long Draw(CRect area, char* dataFile, char* plotFile);
    virtual void DrawPlot(CRect graph);                  ///< all circles
    virtual void DrawPlotLabel(int x, int y, int index); ///< nothing: a caption of point `index` at (x, y)
    /// All joining lines; the switches add arrow heads at the later and the earlier of two points.
    virtual void DrawPlotConnect(CRect graph, int endHead, int startHead);
    virtual void DrawAfterPlot(CRect graph); ///< nothing: the last step

    melkar::Contents Shown() const; ///< an item for each point

    void AddPlot(CPlot plot) { m_vecPlots.push_back(plot); }             ///< behind the points that are there
    void AddPlot(float x, float y);                                      ///< red, size 10, not joined
    int PlotSize() const { return static_cast<int>(m_vecPlots.size()); } ///< number of points
    CPlot Plot(int index) const;                                         ///< all zeros if there is no such point
    /// One circle, and its label if `label` isn't 0. @throws std::out_of_range if there is no such point.
    void DrawOnePlot(CRect graph, int index, int label);

protected:
    std::vector<CPlot> m_vecPlots; ///< in the order of adding

private:
    struct Cycle;
    MELKAR_LOCAL void AddPointTo(melkar::Contents& contents, const CPlot& plot, const CRect& graph) const;
    MELKAR_LOCAL void DrawPlots();
    MELKAR_LOCAL void DrawJoins();
    MELKAR_LOCAL void DrawRest();
    MELKAR_LOCAL CPoint PositionOf(const CRect& graph, const CPlot& plot);
    MELKAR_LOCAL void DrawJoin(const CPoint& from, int fromSize, const CPoint& to, int toSize, int endHead,
                               int startHead);
};
