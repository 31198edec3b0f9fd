#include <MelkarCommon/bars/bar_graph.h>

#include <MelkarCommon/bars/bar_text_layout.h>
#include <MelkarCommon/frame/data_table.h>
#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/frame/scale.h>
#include <MelkarCommon/frame/text_limits.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/ring_log.h>
#include <MelkarCommon/support/support.h>

#include <algorithm>

using melkar::BarSpan;
using melkar::ScalePixels;
using melkar::ScopedFont;
using melkar::ScopedPen;

namespace {

constexpr int kPolylineWidth = 4;
constexpr int kRepairedMax = 10000; ///< top of a scale that a data file left at 0 or below
constexpr int kNoScaleCode = 340;   ///< what the log says of it

} // namespace

struct CBarGraph::KeyRows : melkar::Keys<CBarGraph> {
    static constexpr Row rows[] = {
        Color<&G::m_crBar>(Own, "BARSCOLOR_RGB", "bar below its target, or without one")
            .MarkOn("CANVASCOLOR_RGB")
            .Or("BARSCOLOR%d_RGB"),
        Color<&G::m_crBar2>(Own, "BARSCOLOR2_RGB", "bar at or above its target")
            .MarkOn("CANVASCOLOR_RGB")
            .Beside("BARSCOLOR_RGB"),
        Text<&G::m_strVAxsLabel>(Own, "VAXSLABEL", "vertical axis label: the unit").Example("steps"),
        Text<&G::m_strHAxsLabel>(Own, "HAXSLABEL", "horizontal axis label").Example("day"),
        Number<&G::m_nVAxsSize>(Own, "VAXSSIZE", 0, "kept; no painting uses it").Idle(),
        Number<&G::m_nHAxsSize>(Own, "HAXSSIZE", 0, "kept; no painting uses it").Idle(),
        Switch<&G::m_bPrintTarget>(Own, "IS_PRINTTARGET", "above 0: target legend and line"),
        Switch<&G::m_bPrintAverage>(Own, "IS_PRINTAVERAGE", "above 0: average legend and line"),
        Text<&G::m_strTargetLabel>(Own, "TARGETLABEL", "target legend"),
        Color<&G::m_crTarget>(Own, "TARGETCOLOR_RGB", "target line").MarkOn("CANVASCOLOR_RGB"),
        Number<&G::m_nTargetTop>(Own, "TargetTop", 0, "kept; no painting uses it").Idle(),
        Number<&G::m_nTargetLeft>(Own, "TargetLeft", 0, "kept; no painting uses it").Idle(),
        Text<&G::m_strAverageLabel>(Own, "AVERAGELABEL", "average legend").Example("Average"),
        Color<&G::m_crAverage>(Own, "AVERAGECOLOR_RGB", "average line").MarkOn("CANVASCOLOR_RGB"),
        Number<&G::m_nAverageTop>(Own, "AverageTop", 0, "kept; no painting uses it").Idle(),
        Number<&G::m_nAverageLeft>(Own, "AverageLeft", 0, "kept; no painting uses it").Idle(),
        Colors<&G::m_crSeries, &G::m_nSeriesCount>(Own, "BARSCOLOR%d_RGB", "stacked series, from the bottom")
            .MarkOn("CANVASCOLOR_RGB")
            .Beside("BARSCOLOR%d_RGB"),
        Color<&G::m_crBalloon>(Common, "BALLOONCOLOR_RGB", "balloon").UnderText(),
        Number<&G::m_nChartMax, &G::m_nDefChartMax>(Own, "CHARTMAX", 0, "top of the scale").TopFrom("CHARTMIN"),
        Number<&G::m_nChartMin>(Own, "CHARTMIN", 0, "bottom of the scale"),
        Number<&G::m_dChartInterval, &G::m_nDefChartInterval>(Own, "CHARTINTERVAL", 0, "step of the scale")
            .StepTo("CHARTMAX"),
        Number<&G::m_nChartMaxBig, &G::m_nDefChartMaxBig>(Own, "CHARTMAX_BIG", 0, "top of the big scale")
            .FreeTopFrom("CHARTMIN")
            .Example("20000"),
        Number<&G::m_nChartIntervalBig, &G::m_nDefChartIntervalBig>(Own, "CHARTINTERVAL_BIG", 0,
                                                                    "step of the big scale")
            .StepTo("CHARTMAX_BIG")
            .Example("4000"),
        Number<&G::m_nVMeasureSize>(Common, "VMEASURESIZE", 12, "scale labels, points"),
        Number<&G::m_nVMeasureLabelSize, &G::m_nHMeasureLabelSize>(Common, "MEASURELABELSIZE", 12,
                                                                   "axis labels, points"),
        Number<&G::m_nHMeasureSize>(Common, "HMEASURESIZE", 12, "kept; no painting uses it").Idle(),
        Number<&G::m_nDateSize>(Common, "DATESIZE", 12, "date strip, points"),
    };
};

struct CBarGraph::File : melkar::Columns<CBarGraph> {
    static constexpr Form form = Form{2, "day"}.Limit(melkar::kRowLimit);
    static constexpr Row rows[] = {
        DayStatus(0),
        Caption(1),
        Figures<&G::m_saValues, &G::SeriesCount>(2, "figure")
            .OnScale("CHARTMAX", "CHARTMAX_BIG")
            .Means("height of the bar, or of its parts from the bottom")
            .Needed()
            .Example("6812|9268|6835|4120|10250|11840|7930"),
    };
};

struct CBarGraph::Cycle : melkar::Steps<CBarGraph> {
    static constexpr Step steps[] = {
        Do<&G::ReadDataFile>,
        Do<&G::GetGraphMeasure>,
        {Do<&G::BeginCycle>, Needed},
        {Do<&G::DrawNoRecordsMessage>, LastIfPainted},
        Do<&G::FillCanvas>,
        Do<&G::DrawCanvasMeasure>,
        Do<&G::DrawBarChart>,
        Do<&G::DrawCanvas>,
        Do<&G::DrawTargetAverage>,
        Do<&G::DrawValueOnBar>,
        Do<&G::DrawDate>,
        Do<&G::DrawVAxsLabel>,
        Do<&G::DrawHAxsLabel>,
        Do<&G::DrawSecExs>,
        Do<&G::DrawNoDataMessage>,
        Do<&G::DrawExcludeMessage>,
    };
};

CBarGraph::CBarGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon)
    : CGraph(window, dc, section, shared, second, balloon) {
    CBarGraph::ReadIniFile(GraphProfile());
}

CBarGraph::~CBarGraph() { CBarGraph::ClearArrays(); }

long CBarGraph::ReadIniFile(char* path) {
    melkar::ReadKeys(KeyRows::rows, *this, path, m_strSection);
    m_nBalloonSize = 20;
    return 0;
}

melkar::ClassKeys CBarGraph::ProfileKeys() { return {"CBarGraph", melkar::InfoOf(KeyRows::rows)}; }

long CBarGraph::ClearArrays() {
    CGraph::ClearArrays();
    m_oaBarRects.RemoveAll();
    m_saTargets.RemoveAll();
    return 0;
}

void CBarGraph::ForgetDays() {
    m_oaBarRects.RemoveAll();
    m_dwaStatus.RemoveAll();
    m_saDates.RemoveAll();
    m_saValues.RemoveAll();
}

void CBarGraph::RepairChartMax() {
    if (m_nChartMax > 0)
        return;
    m_nChartMax = kRepairedMax;
    writeLogCode(kLogFile, kNoScaleCode);
}

melkar::DataTables CBarGraph::DataFiles() { return {melkar::TableOf<File>()}; }

long CBarGraph::ReadDataFile(char* path) {
    return melkar::ReadFile(*this, "CBarGraph::ReadDataFile", path, [this](melkar::DataFile& file) {
        ForgetDays();
        melkar::ReadHeads<File>(*this, file);
        melkar::ReadRows<File>(*this, file);
        return melkar::kOk; // a file without days is no failure here
    });
}

int CBarGraph::SeriesCount() const { return std::clamp(m_nSeriesCount, 1, kMostSeries); }

double CBarGraph::FigureOf(int day, int series) const {
    return melkar::ToDouble(m_saValues[day * SeriesCount() + series]);
}

double CBarGraph::SumOf(int day) const {
    double sum = 0;
    for (int series = 0; series < SeriesCount(); ++series)
        sum += FigureOf(day, series);
    return sum;
}

/// How far a day reaches on the scale: to the top of its stack, or to the highest of its figures where a derived class
/// places it.
double CBarGraph::ReachOf(int day) const {
    if (!m_fnDayRect)
        return SumOf(day);
    double highest = FigureOf(day, 0);
    for (int series = 1; series < SeriesCount(); ++series)
        highest = std::max(highest, FigureOf(day, series));
    return highest;
}

ScalePixels CBarGraph::LeftScale() const {
    return melkar::PixelsOf({double(m_nChartMin), double(m_nChartMax), m_dChartInterval}, m_rcCanvas);
}

int CBarGraph::GetGraphMeasure() {
    for (int day = 0; day < Days(); ++day) {
        if (m_nChartMaxBig > 0 && ReachOf(day) > m_nChartMax) { // without a big scale figures are cut at the top
            m_nChartMax = m_nChartMaxBig;
            m_dChartInterval = m_nChartIntervalBig;
            break;
        }
    }
    return 0;
}

int CBarGraph::ResetGraphMeasure() {
    m_nChartMax = m_nDefChartMax;
    m_dChartInterval = m_nDefChartInterval;
    m_nChartMaxBig = m_nDefChartMaxBig;
    m_nChartIntervalBig = m_nDefChartIntervalBig;
    return 0;
}

void CBarGraph::SetCanvasRect() {
    CGraph::SetCanvasRect();
    if (!m_strHAxsLabel.IsEmpty()) {
        const ScopedFont font(m_hMemDC, ChartFont(m_nVMeasureLabelSize));
        const CString label = Limited(m_strHAxsLabel, melkar::kCaptionBytes);
        m_rcCanvas.bottom -= melkar::LabelRoom(MeasureText(label, DT_CALCRECT | DT_CENTER).Height());
    }
    if (Days() > 0) {
        const ScopedFont font(m_hMemDC, ChartFont(m_nDateSize, m_nDateEscapement));
        const CString caption = Limited("  " + m_saDates[Days() - 1] + "\n", melkar::kCaptionBytes);
        m_rcCanvas.bottom -= melkar::CaptionRoom(MeasureText(caption, DT_CALCRECT | DT_CENTER), m_nDateEscapement);
    }
}

long CBarGraph::Draw(CRect area, char* path) { return melkar::RunCycle(*this, Cycle::steps, area, path); }

long CBarGraph::DrawBarChart() {
    m_oaBarRects.RemoveAll();
    if (m_fnDayRect)
        DrawPlacedBars();
    else if (m_nSeriesCount > 1)
        DrawStackedBars();
    else
        DrawSingleBars();
    DrawNoDataMessage();
    DrawExcludeMessage();
    return 0;
}

void CBarGraph::DrawStackedBars() {
    const ScalePixels scale = LeftScale();
    for (int day = 0; day < Days(); ++day) {
        const BarSpan span = melkar::BarOf(m_rcCanvas, day, Days());
        int bottom = m_rcCanvas.bottom;
        double sum = 0;
        for (int series = 0; series < SeriesCount(); ++series) {
            sum += FigureOf(day, series);
            const CRect bar(span.left, melkar::FigureY(scale, sum), span.right, bottom);
            m_oaBarRects.Add(bar);
            DrawRectangle(m_hMemDC, bar, m_crSeries[series], m_crSeries[series], 1);
            bottom = bar.top;
        }
    }
}

void CBarGraph::DrawSingleBars() {
    const ScalePixels scale = LeftScale();
    for (int day = 0; day < Days(); ++day) {
        const BarSpan span = melkar::BarOf(m_rcCanvas, day, Days());
        const int top = melkar::FigureFromZeroY(scale, FigureOf(day, 0));
        const CRect bar(span.left, top, span.right, m_bPolyline ? top : m_rcCanvas.bottom);
        m_oaBarRects.Add(bar);
        if (m_bPolyline)
            DrawPolyline(day);
        else
            PaintBar(day, bar);
    }
}

void CBarGraph::DrawPlacedBars() {
    for (int day = 0; day < Days(); ++day) {
        const CRect bar = m_fnDayRect(day);
        for (int series = 0; series < SeriesCount(); ++series)
            m_oaBarRects.Add(bar);
        PaintBar(day, bar);
    }
}

void CBarGraph::PaintBar(int day, const CRect& bar) {
    const COLORREF color = BarColorOf(day);
    DrawRectangle(m_hMemDC, bar, color, color, 1);
}

/// The stroke from the day before to this day.
void CBarGraph::DrawPolyline(int day) {
    if (day == 0)
        return;
    const ScopedPen pen(m_hMemDC, PS_SOLID, kPolylineWidth, m_crPen);
    DrawLine(m_hMemDC, melkar::PeakOf(*m_oaBarRects[day - 1]), melkar::PeakOf(*m_oaBarRects[day]), nullptr);
}

bool CBarGraph::HasReachedTarget(int day) const {
    return day < m_saTargets.GetSize() && FigureOf(day, 0) >= melkar::ToDouble(m_saTargets[day]);
}

COLORREF CBarGraph::BarColorOf(int day) const { return HasReachedTarget(day) ? m_crBar2 : m_crBar; }
