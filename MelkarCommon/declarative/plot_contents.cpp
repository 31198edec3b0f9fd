// What a plot says: its points.

#include <MelkarCommon/declarative/panel_layout.h>
#include <MelkarCommon/declarative/plot_graph.h>
#include <MelkarCommon/declarative/plot_layout.h>
#include <MelkarCommon/frame/contents.h>
#include <MelkarCommon/support/numbers.h>

melkar::Contents CPlotGraph::Shown() const {
    melkar::Contents contents = CGraphBase::Shown();
    if (HasDrawn())
        for (const CPlot& plot : m_vecPlots)
            AddPointTo(contents, plot, GetGraphRect(m_rcGraph));
    return contents;
}

/// A plot writes no figures: they are those of the file.
void CPlotGraph::AddPointTo(melkar::Contents& contents, const CPlot& plot, const CRect& graph) const {
    const value_set& min = m_bVScaleL ? m_vsMinL : m_vsMinR;
    const value_set& max = m_bVScaleL ? m_vsMaxL : m_vsMaxR;
    const auto isOff = [](float value, float low, float high) { return !(value >= low && value <= high); };
    // What a class makes of a value it tells of by operations that aren't const and change nothing.
    const CPoint at = const_cast<CPlotGraph*>(this)->PositionOf(graph, plot);

    melkar::ShownItem item;
    item.caption = Utf8(melkar::FormatShortest(plot.PlotX()));
    item.area = melkar::PlotCircle(at, plot.Size());
    const std::string text = Utf8(melkar::FormatShortest(plot.PlotY()));
    const bool isClipped = isOff(plot.PlotX(), min.x, max.x) || isOff(plot.PlotY(), min.y, max.y);
    const int series = SeriesOf(contents, plot.Color(), "");
    item.figures = {{series, text, melkar::ToDouble(text.c_str()), isClipped, item.area, ""}};
    item.value = item.figures.front().value;
    contents.items.push_back(std::move(item));
}
