#include <MelkarCommon/declarative/plot_graph.h>

#include <MelkarCommon/declarative/panel_layout.h>
#include <MelkarCommon/declarative/plot_layout.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/support/marks.h>

#include <stdexcept>

using melkar::ScopedBrush;
using melkar::ScopedPen;

namespace {

constexpr int kPlainSize = 10;
constexpr COLORREF kPlainColor = RGB(255, 0, 0);
constexpr int kJoinWidth = 3;
constexpr double kHeadAngle = melkar::kPi / 6; ///< between shaft and barb
constexpr double kHeadLength = 20.0;

} // namespace

CPlot::~CPlot() = default;

CPlotGraph::CPlotGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon)
    : CGraphBase(window, dc, section, shared, second, balloon) {
    CPlotGraph::ReadIniFile(GraphProfile());
}

CPlotGraph::~CPlotGraph() = default;

long CPlotGraph::ReadIniFile(char* path) {
    CGraphBase::ReadIniFile(path);
    return 0;
}

long CPlotGraph::ReadPlotDataFile(char*) { return 0; }

void CPlotGraph::AddPlot(float x, float y) { AddPlot(CPlot(x, y, kPlainSize, kPlainColor, 0)); }

CPlot CPlotGraph::Plot(int index) const {
    return index >= 0 && index < PlotSize() ? m_vecPlots[static_cast<std::size_t>(index)] : CPlot();
}

/// Behind the panel's own cycle, which has copied the picture out.
struct CPlotGraph::Cycle : melkar::Steps<CPlotGraph> {
    static constexpr Step plots[] = {Do<&G::DrawPlots>, Do<&G::DrawJoins>, Do<&G::DrawRest>};
};

long CPlotGraph::Draw(CRect area, char* dataFile, char* plotFile) {
    return melkar::DrawGuarded([&] {
        ReadPlotDataFile(plotFile);
        const long failure = CGraphBase::Draw(area, dataFile);
        if (failure != melkar::kOk)
            return failure;
        const auto color = TextColorOn(m_hMemDC);
        return RunSteps(*this, Cycle::plots);
    });
}

void CPlotGraph::DrawPlots() { DrawPlot(GetGraphRect(m_rcGraph)); }
void CPlotGraph::DrawJoins() { DrawPlotConnect(GetGraphRect(m_rcGraph), 0, 0); }
void CPlotGraph::DrawRest() { DrawAfterPlot(GetGraphRect(m_rcGraph)); }

void CPlotGraph::DrawPlot(CRect graph) {
    for (int index = 0; index < PlotSize(); ++index)
        DrawOnePlot(graph, index, 1);
}

/// By the left scale if there is one, else by the right one.
CPoint CPlotGraph::PositionOf(const CRect& graph, const CPlot& plot) {
    if (m_bVScaleL)
        return melkar::PlotAt(graph, RateX_L(plot.PlotX()), RateY_L(plot.PlotY()));
    return melkar::PlotAt(graph, RateX_R(plot.PlotX()), RateY_R(plot.PlotY()));
}

void CPlotGraph::DrawOnePlot(CRect graph, int index, int label) {
    if (index < 0 || index >= PlotSize())
        throw std::out_of_range("invalid vector<T> subscript");
    const CPlot plot = m_vecPlots[static_cast<std::size_t>(index)];
    const ScopedBrush brush(m_hMemDC, plot.Color());
    const ScopedPen pen(m_hMemDC, PS_SOLID, 0, plot.Color());
    const CPoint at = PositionOf(graph, plot);
    const CRect circle = melkar::PlotCircle(at, plot.Size());
    Ellipse(m_hMemDC, circle.left, circle.top, circle.right, circle.bottom);
    if (label != 0)
        DrawPlotLabel(at.x, at.y, index);
}

void CPlotGraph::DrawPlotLabel(int, int, int) {}

/// The flag belongs to the later of two points: the first one's is never looked at.
void CPlotGraph::DrawPlotConnect(CRect graph, int endHead, int startHead) {
    CPoint former;
    for (int index = 0; index < PlotSize(); ++index) {
        const CPlot& plot = m_vecPlots[static_cast<std::size_t>(index)];
        const CPoint at = PositionOf(graph, plot);
        if (index > 0 && plot.IsConnect() != 0)
            DrawJoin(former, m_vecPlots[static_cast<std::size_t>(index - 1)].Size(), at, plot.Size(), endHead,
                     startHead);
        former = at;
    }
}

void CPlotGraph::DrawJoin(const CPoint& from, int fromSize, const CPoint& to, int toSize, int endHead, int startHead) {
    const auto join = melkar::JoinOf(from, fromSize, to, toSize);
    if (!join)
        return;
    const ScopedPen pen(m_hMemDC, PS_SOLID, kJoinWidth, 0);
    DrawArrow(m_hMemDC, join->from, join->to, kHeadAngle, kHeadLength, endHead, startHead);
}

void CPlotGraph::DrawAfterPlot(CRect) {}
