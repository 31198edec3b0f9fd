#include <MelkarCommon/bars/expenditure_graph.h>

#include <MelkarCommon/bars/bar_layout.h>
#include <MelkarCommon/bars/day_file.h>
#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/frame/scale.h>
#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/platform/drawing.h>
#include <MelkarCommon/support/ring_log.h>
#include <MelkarCommon/support/scoped.h>
#include <MelkarCommon/support/support.h>

#include <cstdint>

using melkar::CsvRow;
using melkar::ScopedFont;

namespace {

constexpr double kInterval = 500.0;
constexpr double kSampleGap = 3;   ///< from a colour sample to its text
constexpr int kSquaresBetween = 2; ///< between the texts of two entries, in heights of the right one

/// A square as high as its text.
melkar::LegendSpacing SquareLegend(const CRect& text) { return {kSampleGap, double(text.Height())}; }

} // namespace

struct CExpenditureGraph::KeyRows : melkar::Keys<CExpenditureGraph> {
    static constexpr Row rows[] = {
        Text<&G::m_strEx1Label>(Own, "EX1_LABEL", "legend of both parts"),
        Text<&G::m_strEx2Label>(Own, "EX2_LABEL", "legend of the second part"),
        Text<&G::m_strAverageIntakeLabel>(Own, "AVERAGE_INTAKE_LABEL", "label of the intake band"),
        Color<&G::m_crIntake>(Own, "INTAKECOLOR_RGB", "intake band"),
    };
};

CExpenditureGraph::CExpenditureGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon)
    : CLineGraph(window, dc, section, shared, second, balloon) {
    m_nSeriesCount = 2;
    m_nDecimals = 0;
    m_nScaleFlag = 1;
    CExpenditureGraph::ReadIniFile(GraphProfile()); // again the bars' keys: now for two series
}

long CExpenditureGraph::ReadIniFile(char* path) {
    CBarGraph::ReadIniFile(path); // NOLINT(bugprone-parent-virtual-call): the line keys are not read again
    melkar::ReadKeys(KeyRows::rows, *this, path, m_strSection);
    return 0;
}

melkar::ClassKeys CExpenditureGraph::ProfileKeys() { return {"CExpenditureGraph", melkar::InfoOf(KeyRows::rows)}; }

void CExpenditureGraph::ForgetPeriod() {
    ForgetDays();
    m_saTargets.RemoveAll();
}

long CExpenditureGraph::ReadDataFile(char* path) {
    return melkar::ReadGuarded([&] {
        melkar::LogText("CExpenditureGraph::ReadDataFile");
        melkar::DataFile file(path);
        if (!file.IsOpen())
            return melkar::kNoFile;
        ForgetPeriod();
        file.Head(melkar::kHeadLimit);
        const CsvRow& header = file.Head(melkar::kHeadLimit);
        TakeHeaderFields(header);
        m_strAverageIntake = header.Field(2);
        m_strAverage = "";
        m_nChartMin = 0;
        m_dChartInterval = kInterval;
        m_nChartMax = header.IntField(4);
        m_nHeaderField5 = header.IntField(5);
        RepairChartMax();
        return melkar::ReadDays(file, [this](const CsvRow& row) {
            const bool hasFigures = AddDay(row);
            const double rest = double(row.IntField(2)) - row.IntField(3);
            m_saValues.Add(hasFigures ? row.Field(3) : CString());
            m_saValues.Add(hasFigures ? melkar::FormatFixed(rest, 0) : CString());
        });
    });
}

struct CExpenditureGraph::Steps {
    using G = CExpenditureGraph;
    static constexpr melkar::Step<G> table[] = {
        &G::FillCanvas,    &G::DrawAverageIntake, &G::DrawCanvasMeasure, &G::DrawBarChart,
        &G::DrawCanvas,    &G::DrawTargetAverage, &G::DrawValueOnBar,    &G::DrawDate,
        &G::DrawVAxsLabel, &G::DrawHAxsLabel,     &G::DrawSecExs,
    };
};

long CExpenditureGraph::Draw(CRect area, char* path) {
    return DrawGuarded([&] {
        ReadDataFile(path);
        return DrawCycle(area, [this] { RunSteps(*this, Steps::table); });
    });
}

long CExpenditureGraph::DrawAverageIntake() {
    const melkar::ScalePixels left = LeftScale();
    const double intake = melkar::ToDouble(m_strAverageIntake);
    if (!left.scale.Holds(intake))
        return 0;
    const int height = m_nChartMax == 0 ? 0 : melkar::Truncate(left.Height() * intake) / m_nChartMax;
    m_rcIntake = CRect(m_rcCanvas.left, m_rcCanvas.bottom - height, m_rcCanvas.right, m_rcCanvas.bottom);
    DrawRectangle(m_hMemDC, m_rcIntake, m_crIntake, m_crIntake, 1);

    // In the right margin, from the band's top down; it wraps there.
    const ScopedFont font(m_hMemDC, ChartFont(m_nIntakeSize));
    const CRect margin(m_rcCanvas.right, m_rcIntake.top, m_rcGraph.right, m_rcIntake.top);
    const CRect box = MeasureText(m_strAverageIntakeLabel, DT_EDITCONTROL | DT_CALCRECT | DT_WORDBREAK, margin);
    PaintText(m_strAverageIntakeLabel, box, DT_EDITCONTROL | DT_WORDBREAK);
    return 0;
}

void CExpenditureGraph::DrawSecExs() {
    const ScopedFont font(m_hMemDC, ChartFont(m_nTargetSize));
    if (!m_bPrintTarget) // nothing has placed the box that this row goes by
        CalcTargetRect();
    const CRect whole = MeasureText(m_strEx1Label, DT_CALCRECT);
    const CRect part = MeasureText(m_strEx2Label, DT_CALCRECT);
    const int right = melkar::LegendSampleOf(m_rcTarget, melkar::kLineLegend).left - melkar::kLegendBetween;
    const auto entry2 = melkar::LegendEntryTo(right, m_rcTarget.top, part, SquareLegend(part));
    const auto entry1 = melkar::LegendEntryTo(entry2.text.left - kSquaresBetween * part.Height(), m_rcTarget.top, whole,
                                              SquareLegend(whole));
    m_rcEx1 = entry1.text;
    m_rcEx2 = entry2.text;
    PaintText(m_strEx1Label, m_rcEx1, DT_RIGHT);
    PaintText(m_strEx2Label, m_rcEx2, DT_RIGHT);

    const auto drawSample = [this](const CRect& sample, COLORREF color) {
        DrawRectangle(m_hMemDC, sample, color, color, 1);
    };
    CRect beside = entry1.sample; // the legend of both parts has a square for each
    beside.OffsetRect(-beside.Width(), 0);
    drawSample(entry1.sample, m_crSeries[1]);
    drawSample(entry2.sample, m_crSeries[1]);
    drawSample(beside, m_crSeries[0]);
}
