#include <MelkarCommon/bars/step_graph.h>

#include <MelkarCommon/bars/bar_text_layout.h>
#include <MelkarCommon/frame/data_table.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>

using melkar::ScopedPen;

namespace {

constexpr double kInterval = 1000.0;

} // namespace

struct CStepGraph::File : melkar::Columns<CStepGraph> {
    static constexpr Form form{2, "day"};
    static constexpr Row rows[] = {
        Text<&G::m_strHeaderField0>(0, "first").Means("kept for a host").InHead(1).Example("20260302"),
        Text<&G::m_strHeaderField1>(1, "last").Means("kept for a host").InHead(1).Example("20260308"),
        Whole<&G::m_nChartMax>(7, "top", "steps")
            .TopOf("CHARTMAX")
            .Means("top of the scale; 10000 in its place if it is 0 or less")
            .InHead(1)
            .Example("13000"),
        Figure<&G::m_strAverage>(9, "average", "steps").Means("the average line").InHead(1).Example("8007"),
        DayStatus(0),
        Caption(1),
        Figure<&G::m_saValues>(4, "steps", "steps")
            .OnScale("CHARTMAX", "CHARTMAX_BIG")
            .WithFigures()
            .Needed()
            .Example("6812|9268|6835|4120|10250|11840|6930"),
    };
};

melkar::DataTables CStepGraph::DataFiles() { return {melkar::TableOf<File>()}; }

CStepGraph::CStepGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon)
    : CLineGraph(window, dc, section, shared, second, balloon) {
    m_nSeriesCount = 1;
}

long CStepGraph::ReadDataFile(char* path) {
    return melkar::ReadFile(*this, "CStepGraph::ReadDataFile", path, [this](melkar::DataFile& file) {
        ForgetDays();
        m_nChartMin = 0;
        m_dChartInterval = kInterval;
        melkar::ReadHeads<File>(*this, file);
        RepairChartMax();
        return melkar::ReadRows<File>(*this, file);
    });
}

/// Its right edge at `right`, its bottom level with the title's.
void CStepGraph::LayAverageLegend(int right) {
    const CRect size = MeasureText(AverageText(), DT_CALCRECT | DT_SINGLELINE);
    m_rcAverage = melkar::LegendEntryTo(right, m_rcTitle.bottom - size.Height(), size, melkar::kLineLegend).text;
}

void CStepGraph::DrawAverage() {
    const ScopedPen pen(m_hMemDC, PS_DOT, 1, m_crAverage);
    LayAverageLegend(m_rcCanvas.right - m_rcGraph.left);
    DrawLegendLine(m_rcAverage);
    DrawAverageLine();
    PaintText(AverageText(), m_rcAverage, DT_BOTTOM | DT_RIGHT);
}

void CStepGraph::DrawTarget() {
    const ScopedPen pen(m_hMemDC, PS_DASH, 1, m_crTarget);
    if (!m_bPrintAverage) // only its height is used
        LayAverageLegend(m_rcGraph.Width());
    const CString text = "  " + m_strTargetLabel + " ";
    const CRect size = MeasureText(text, DT_CALCRECT | DT_SINGLELINE);
    const int besideAverage = melkar::LegendSampleOf(m_rcAverage, melkar::kLineLegend).left - melkar::kLegendBetween;
    m_rcTarget = melkar::LegendEntryTo(m_bPrintAverage ? besideAverage : m_rcCanvas.right, m_rcAverage.top, size,
                                       melkar::kLineLegend)
                     .text;
    DrawLegendLine(m_rcTarget);
    DrawTargetLine();
    PaintText(text, m_rcTarget, DT_BOTTOM | DT_RIGHT);
}
