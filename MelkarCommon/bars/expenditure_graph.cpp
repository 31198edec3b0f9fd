#include <MelkarCommon/bars/expenditure_graph.h>

#include <MelkarCommon/bars/expenditure_layout.h>
#include <MelkarCommon/frame/data_table.h>
#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/support.h>

using melkar::ScopedFont;

namespace {

constexpr double kInterval = 500.0;

} // namespace

struct CExpenditureGraph::KeyRows : melkar::Keys<CExpenditureGraph> {
    static constexpr Row rows[] = {
        Text<&G::m_strEx1Label>(Own, "EX1_LABEL", "legend of both parts"),
        Text<&G::m_strEx2Label>(Own, "EX2_LABEL", "legend of the second part"),
        Text<&G::m_strAverageIntakeLabel>(Own, "AVERAGE_INTAKE_LABEL", "label of the intake band"),
        Color<&G::m_crIntake>(Own, "INTAKECOLOR_RGB", "intake band").UnderText(),
    };
};

struct CExpenditureGraph::File : melkar::Columns<CExpenditureGraph> {
    static constexpr Form form{2, "day"};
    static constexpr Row rows[] = {
        Text<&G::m_strHeaderField0>(0, "first").Means("kept for a host").InHead(1).Example("20260302"),
        Text<&G::m_strHeaderField1>(1, "last").Means("kept for a host").InHead(1).Example("20260308"),
        Figure<&G::m_strAverageIntake>(2, "intake", "kcal").Means("average intake: the band").InHead(1).Example("2080"),
        Whole<&G::m_nChartMax>(4, "top", "kcal")
            .TopOf("CHARTMAX")
            .Means("top of the scale; 10000 in its place if it is 0 or less")
            .InHead(1)
            .Example("3000"),
        Whole<&G::m_nHeaderField5>(5, "number").Means("kept for a host").InHead(1).Example("0"),
        DayStatus(0),
        Caption(1),
    };
};

/// A day's figures. Drawn are the part, and what is left of the whole.
struct CExpenditureGraph::Parts {
    int total = 0;
    CString first;
};

struct CExpenditureGraph::PartColumns : melkar::Columns<Parts> {
    static constexpr Row rows[] = {
        Whole<&G::total>(2, "total", "kcal")
            .OnScale("CHARTMAX", "CHARTMAX_BIG")
            .Means("the whole bar")
            .WithFigures()
            .Needed()
            .Example("2343|1981|2218|2140|2412|2605|2250"),
        Figure<&G::first>(3, "part", "kcal").Means("the lower part of the bar").WithFigures().Needed().Example("1850"),
    };
};

melkar::DataTables CExpenditureGraph::DataFiles() { return {melkar::TableOf<File, PartColumns>()}; }

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

void CExpenditureGraph::AddParts(const Parts& parts) {
    const bool hasFigures = HasFigures(melkar::ToDayStatus(m_dwaStatus[m_dwaStatus.GetSize() - 1]));
    const double rest = double(parts.total) - melkar::ToInt(parts.first);
    m_saValues.Add(hasFigures ? parts.first : CString());
    m_saValues.Add(hasFigures ? melkar::FormatFixed(rest, 0) : CString());
}

long CExpenditureGraph::ReadDataFile(char* path) {
    return melkar::ReadFile(*this, "CExpenditureGraph::ReadDataFile", path, [this](melkar::DataFile& file) {
        ForgetPeriod();
        m_strAverage = "";
        m_nChartMin = 0;
        m_dChartInterval = kInterval;
        melkar::ReadHeads<File>(*this, file);
        RepairChartMax();
        Parts parts;
        return melkar::ReadRows<File>(*this, file, [&](const melkar::CsvRow& line) {
            melkar::TakeRow<PartColumns>(parts, line);
            AddParts(parts);
        });
    });
}

struct CExpenditureGraph::Cycle : melkar::Steps<CExpenditureGraph> {
    static constexpr Step steps[] = {
        Do<&G::ReadDataFile>,      {Do<&G::BeginCycle>, Needed}, Do<&G::FillCanvas>,
        Do<&G::DrawAverageIntake>, Do<&G::DrawCanvasMeasure>,    Do<&G::DrawBarChart>,
        Do<&G::DrawCanvas>,        Do<&G::DrawTargetAverage>,    Do<&G::DrawValueOnBar>,
        Do<&G::DrawDate>,          Do<&G::DrawVAxsLabel>,        Do<&G::DrawHAxsLabel>,
        Do<&G::DrawSecExs>,
    };
};

long CExpenditureGraph::Draw(CRect area, char* path) { return melkar::RunCycle(*this, Cycle::steps, area, path); }

long CExpenditureGraph::DrawAverageIntake() {
    const melkar::ScalePixels left = LeftScale();
    const double intake = melkar::ToDouble(m_strAverageIntake);
    if (!left.scale.Holds(intake))
        return 0;
    m_rcIntake = melkar::IntakeBandOf(m_rcCanvas, left, intake);
    DrawRectangle(m_hMemDC, m_rcIntake, m_crIntake, m_crIntake, 1);

    const ScopedFont font(m_hMemDC, ChartFont(m_nIntakeSize));
    const CRect start = melkar::IntakeLabelStart(m_rcIntake, m_rcGraph.right);
    const CRect box = MeasureText(m_strAverageIntakeLabel, DT_EDITCONTROL | DT_CALCRECT | DT_WORDBREAK, start);
    PaintText(m_strAverageIntakeLabel, box, DT_EDITCONTROL | DT_WORDBREAK);
    return 0;
}

void CExpenditureGraph::DrawSecExs() {
    const ScopedFont font(m_hMemDC, ChartFont(m_nTargetSize));
    if (!m_bPrintTarget) // nothing has placed the box that this row goes by
        CalcTargetRect();
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
