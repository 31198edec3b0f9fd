#include <MelkarCommon/bars/step_graph.h>

#include <MelkarCommon/bars/day_file.h>
#include <MelkarCommon/support/platform/drawing.h>
#include <MelkarCommon/support/ring_log.h>
#include <MelkarCommon/support/scoped.h>

using melkar::CsvRow;
using melkar::ScopedPen;

namespace {

constexpr int kLegendGap = 80; ///< from the average's text to the target's, with room for the line sample
constexpr double kInterval = 1000.0;

} // namespace

CStepGraph::CStepGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon)
    : CLineGraph(window, dc, section, shared, second, balloon) {
    m_nSeriesCount = 1;
}

long CStepGraph::ReadDataFile(char* path) {
    return melkar::ReadGuarded([&] {
        melkar::LogText("CStepGraph::ReadDataFile");
        melkar::DataFile file(path);
        if (!file.IsOpen())
            return melkar::kNoFile;
        ForgetDays();
        file.Head(melkar::kHeadLimit);
        const CsvRow& header = file.Head(melkar::kHeadLimit);
        TakeHeaderFields(header);
        m_nChartMin = 0;
        m_dChartInterval = kInterval;
        m_nChartMax = header.IntField(7);
        RepairChartMax();
        m_strAverage = header.Field(9);
        return melkar::ReadDays(file, [this](const CsvRow& row) {
            const bool hasFigures = AddDay(row);
            m_saValues.Add(hasFigures ? row.Field(4) : CString());
        });
    });
}

/// Its right edge at `right`, its bottom level with the title's.
void CStepGraph::LayAverageLegend(int right) {
    m_rcAverage = MeasureText(AverageText(), DT_CALCRECT | DT_SINGLELINE);
    m_rcAverage.OffsetRect(right - m_rcAverage.right, m_rcTitle.bottom - m_rcAverage.bottom);
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
    m_rcTarget = MeasureText(text, DT_CALCRECT | DT_SINGLELINE, CRect(0, m_rcAverage.top, 0, 0));
    m_rcTarget.OffsetRect((m_bPrintAverage ? m_rcAverage.left - kLegendGap : m_rcCanvas.right) - m_rcTarget.right, 0);
    DrawLegendLine(m_rcTarget);
    DrawTargetLine();
    PaintText(text, m_rcTarget, DT_BOTTOM | DT_RIGHT);
}
