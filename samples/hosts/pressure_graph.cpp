#include "pressure_graph.h"

#include <MelkarCommon/frame/contents.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/registry/catalogue.h>
#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/support.h>

namespace {

// What a profile starts with.
constexpr const char* kStarter = R"(CANVASCOLOR_RGB=255,255,255
BASECOLOR_RGB=255,255,255
PENCOLOR_RGB=198,206,216
VALUESIZE=10
TARGETSIZE=10
VMEASURESIZE=10
MEASURELABELSIZE=10
DATESIZE=10
TITLELABEL=" Blood pressure"
TITLESIZE=15
VAXSLABEL=mmHg
BARSCOLOR_RGB=124,146,172
BARSCOLOR2_RGB=176,32,58
CHARTMAX=180
CHARTMIN=40
CHARTINTERVAL=20)";

constexpr std::size_t kRowLimit = 200; // characters; a measurement has no more

} // namespace

struct CPressureGraph::KeyRows : melkar::Keys<CPressureGraph> {
    static constexpr Row rows[] = {
        Number<&G::m_nHighSystolic>(Own, "HIGH_SYSTOLIC", 140, "systolic figure from which a day is high, mmHg"),
        Number<&G::m_nHighDiastolic>(Own, "HIGH_DIASTOLIC", 90, "the same of the diastolic figure"),
        Color<&G::m_crBound>(Own, "BOUND_RGB", "lines at both").Else<&G::m_crBar2>("BARSCOLOR2_RGB"),
        Text<&G::m_strSystolic>(Own, "SYSTOLIC_LABEL", "systolic figures in descriptions").Else("Systolic"),
        Text<&G::m_strDiastolic>(Own, "DIASTOLIC_LABEL", "diastolic figures in descriptions").Else("Diastolic"),
    };
};

CPressureGraph::CPressureGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon)
    : CBarGraph(window, dc, section, shared, second, balloon) {
    m_nSeriesCount = Figures;
    m_fnDayRect = [this](int day) {
        const melkar::BarSpan span = melkar::BarOf(m_rcCanvas, day, Days());
        return IsMeasured(day) ? PressureBarOf(span, LeftScale(), FigureOf(day, Systolic), FigureOf(day, Diastolic))
                               : CRect(span.left, m_rcCanvas.bottom, span.right, m_rcCanvas.bottom);
    };
    m_fnDayText = [this](int day) {
        const int first = day * Figures;
        return IsMeasured(day) ? m_saValues[first + Systolic] + "/" + m_saValues[first + Diastolic] : CString();
    };
    CPressureGraph::ReadIniFile(GraphProfile());
}

// The constructor of the base class has read its own keys by now; here are those of this class.
long CPressureGraph::ReadIniFile(char* path) {
    melkar::ReadKeys(KeyRows::rows, *this, path, m_strSection);
    return 0;
}

melkar::ClassKeys CPressureGraph::ProfileKeys() { return {"CPressureGraph", melkar::InfoOf(KeyRows::rows)}; }

// What a row of the data file says. A table may name members of the graph, too; here several rows make one day.
struct CPressureGraph::Measurement {
    int status = 0;
    CString date, systolic, diastolic;
};

struct CPressureGraph::File : melkar::Columns<Measurement> {
    static constexpr Form form = Form{2, "measurement"}.Limit(kRowLimit);
    static constexpr Row rows[] = {
        DayStatus<&G::status>(0),
        Caption<&G::date>(1),
        Figure<&G::systolic>(2, "systolic", "mmHg").Within(50, 300).Needed().Example("142|128|135"),
        Figure<&G::diastolic>(3, "diastolic", "mmHg").Within(20, 200).Needed().Example("88|80|84"),
    };
};

melkar::DataTables CPressureGraph::DataFiles() { return {melkar::TableOf<File>()}; }

bool CPressureGraph::Register() {
    return melkar::Register({"pressure", "CPressureGraph", "CBarGraph",
                             "blood pressure, a bar a day, by samples/hosts/pressure_graph.h", kStarter, ProfileKeys,
                             DataFiles, melkar::MakeGraph<CPressureGraph>, "", melkar::ContentsOf<CPressureGraph>});
}

long CPressureGraph::ReadDataFile(char* path) {
    return melkar::ReadFile(*this, "CPressureGraph::ReadDataFile", path, [this](melkar::DataFile& file) {
        ForgetDays();
        Measurement measurement;
        melkar::ReadHeads<File>(measurement, file);
        return melkar::ReadRows<File>(measurement, file, [&](const melkar::CsvRow&) { AddMeasurement(measurement); });
    });
}

// The figures of a day are the highest systolic and the lowest diastolic one.
void CPressureGraph::AddMeasurement(const Measurement& measurement) {
    if (Days() == 0 || m_saDates[Days() - 1] != measurement.date) {
        m_dwaStatus.Add(static_cast<DWORD>(measurement.status));
        m_saDates.Add(measurement.date);
        m_saValues.SetSize(Days() * Figures);
    }
    const int day = Days() - 1;
    const bool isFirst = !IsMeasured(day);
    if (isFirst || melkar::ToDouble(measurement.systolic) > FigureOf(day, Systolic))
        m_saValues.SetAt(day * Figures + Systolic, measurement.systolic);
    if (isFirst || melkar::ToDouble(measurement.diastolic) < FigureOf(day, Diastolic))
        m_saValues.SetAt(day * Figures + Diastolic, measurement.diastolic);
}

bool CPressureGraph::IsHigh(int day) const {
    return FigureOf(day, Systolic) >= m_nHighSystolic || FigureOf(day, Diastolic) >= m_nHighDiastolic;
}

long CPressureGraph::DrawBarChart() {
    CBarGraph::DrawBarChart();
    for (int day = 0; day < Days(); ++day)
        if (IsHigh(day))
            DrawRectangle(m_hMemDC, *m_oaBarRects[day * Figures], m_crBar2, m_crBar2, 1);
    return 0;
}

void CPressureGraph::DrawTargetAverage() {
    CBarGraph::DrawTargetAverage();
    DrawBound(m_nHighSystolic);
    DrawBound(m_nHighDiastolic);
}

// None off the scale.
std::optional<int> CPressureGraph::BoundY(int figure) const {
    const melkar::ScalePixels scale = LeftScale();
    if (!scale.scale.Holds(figure))
        return std::nullopt;
    return melkar::ScaleLineY(scale, figure);
}

void CPressureGraph::DrawBound(int figure) const {
    const std::optional<int> y = BoundY(figure);
    if (!y)
        return;
    const melkar::ScopedPen pen(m_hMemDC, PS_DASH, 1, m_crBound);
    const melkar::ScopedBkMode gaps(m_hMemDC, TRANSPARENT);
    DrawLine(m_hMemDC, CPoint(m_rcCanvas.left, *y), CPoint(m_rcCanvas.right, *y), nullptr);
}

// Nothing has series before it is drawn. Without axes a message stands in for the chart.
melkar::Contents CPressureGraph::Shown() const {
    melkar::Contents contents = CBarGraph::Shown();
    if (!contents.series.empty()) {
        contents.series[Systolic].name = Utf8(m_strSystolic);
        contents.series[Diastolic].name = Utf8(m_strDiastolic);
    }
    if (contents.axes.empty())
        return contents;
    AddBoundTo(contents, m_nHighSystolic);
    AddBoundTo(contents, m_nHighDiastolic);
    return contents;
}

void CPressureGraph::AddBoundTo(melkar::Contents& contents, int figure) const {
    if (const std::optional<int> y = BoundY(figure))
        contents.marks.push_back({melkar::MarkKind::Border, "", std::to_string(figure), double(figure),
                                  CRect(m_rcCanvas.left, *y, m_rcCanvas.right, *y + 1)});
}
