#include <MelkarCommon/bars/step_graph.h>

#include <MelkarCommon/bars/bar_text_layout.h>
#include <MelkarCommon/bars/day_file.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>

using melkar::CsvRow;
using melkar::ScopedPen;

namespace {

constexpr double kInterval = 1000.0;

} // namespace

CStepGraph::CStepGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon)
    : CLineGraph(window, dc, section, shared, second, balloon) {
    m_nSeriesCount = 1;
}

long CStepGraph::ReadDataFile(char* path) {
    enum { Top = 7, Average = 9 }; // of the header
    enum { Steps = 4 };            // of a day
    return melkar::ReadFile("CStepGraph::ReadDataFile", path, [this](melkar::DataFile& file) {
        ForgetDays();
        file.Head(melkar::kHeadLimit);
        const CsvRow& header = file.Head(melkar::kHeadLimit);
        TakeHeaderFields(header);
        m_nChartMin = 0;
        m_dChartInterval = kInterval;
        m_nChartMax = header.IntField(Top);
        RepairChartMax();
        m_strAverage = header.Field(Average);
        return melkar::ReadDays(file, [this](const CsvRow& row) {
            const bool hasFigures = AddDay(row);
            m_saValues.Add(hasFigures ? row.Field(Steps) : CString());
        });
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
