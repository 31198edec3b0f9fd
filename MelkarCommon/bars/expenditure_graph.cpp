#include <MelkarCommon/bars/expenditure_graph.h>

#include <MelkarCommon/bars/day_file.h>
#include <MelkarCommon/bars/expenditure_layout.h>
#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/support.h>

using melkar::CsvRow;
using melkar::ScopedBkMode;
using melkar::ScopedFont;

namespace {

constexpr double kInterval = 500.0;

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
    enum { Intake = 2, Top = 4, Kept = 5 }; // of the header
    enum { Total = 2, FirstPart = 3 };      // of a day
    return melkar::ReadFile("CExpenditureGraph::ReadDataFile", path, [this](melkar::DataFile& file) {
        ForgetPeriod();
        file.Head(melkar::kHeadLimit);
        const CsvRow& header = file.Head(melkar::kHeadLimit);
        TakeHeaderFields(header);
        m_strAverageIntake = header.Field(Intake);
        m_strAverage = "";
        m_nChartMin = 0;
        m_dChartInterval = kInterval;
        m_nChartMax = header.IntField(Top);
        m_nHeaderField5 = header.IntField(Kept);
        RepairChartMax();
        return melkar::ReadDays(file, [this](const CsvRow& row) {
            const bool hasFigures = AddDay(row);
            const double rest = double(row.IntField(Total)) - row.IntField(FirstPart);
            m_saValues.Add(hasFigures ? row.Field(FirstPart) : CString());
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
    m_rcIntake = melkar::IntakeBandOf(m_rcCanvas, left, intake);
    DrawRectangle(m_hMemDC, m_rcIntake, m_crIntake, m_crIntake, 1);

    const ScopedFont font(m_hMemDC, ChartFont(m_nIntakeSize));
    const ScopedBkMode transparent(m_hMemDC, TRANSPARENT);
    const CRect start = melkar::IntakeLabelStart(m_rcIntake, m_rcGraph.right);
    const CRect box = MeasureText(m_strAverageIntakeLabel, DT_EDITCONTROL | DT_CALCRECT | DT_WORDBREAK, start);
    PaintText(m_strAverageIntakeLabel, box, DT_EDITCONTROL | DT_WORDBREAK);
    return 0;
}

void CExpenditureGraph::DrawSecExs() {
    const ScopedFont font(m_hMemDC, ChartFont(m_nTargetSize));
    if (!m_bPrintTarget) // nothing has placed the box that this row goes by
        CalcTargetRect();
    const ScopedBkMode transparent(m_hMemDC, TRANSPARENT);
    const auto legend = melkar::PartsLegendOf(m_rcTarget, MeasureText(m_strEx1Label, DT_CALCRECT),
                                              MeasureText(m_strEx2Label, DT_CALCRECT));
    m_rcEx1 = legend.whole.text;
    m_rcEx2 = legend.part.text;
    PaintText(m_strEx1Label, m_rcEx1, DT_RIGHT);
    PaintText(m_strEx2Label, m_rcEx2, DT_RIGHT);

    const auto drawSample = [this](const CRect& sample, COLORREF color) {
        DrawRectangle(m_hMemDC, sample, color, color, 1);
    };
    drawSample(legend.whole.sample, m_crSeries[1]);
    drawSample(legend.part.sample, m_crSeries[1]);
    drawSample(legend.besideWhole, m_crSeries[0]);
}
