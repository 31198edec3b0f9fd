#include <MelkarCommon/circadian/circle_graph.h>

#include <MelkarCommon/circadian/circle_layout.h>
#include <MelkarCommon/frame/data_file.h>
#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/frame/results.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/ring_log.h>
#include <MelkarCommon/support/support.h>

#include <algorithm>
#include <tuple>

using melkar::CircleSlice;
using melkar::CircleSlices;
using melkar::ClassFigures;
using melkar::ScopedBrush;
using melkar::ScopedFont;
using melkar::ScopedObject;

namespace {

constexpr int kMessagePoints = 24;
constexpr double kLeastMinutes = 0.01; ///< less than that is no pie

void LogSlices(const CircleSlices& slices) {
    const auto text = [](const CircleSlice& slice) { return melkar::FormatFixed(slice.share, melkar::kShareDecimals); };
    melkar::LogText("CircleGraph S=" + text(slices.light) + " M=" + text(slices.moderate) +
                    " V=" + text(slices.vigorous));
    const auto& [top, vigorousEnd] = std::tie(slices.vigorous.from, slices.vigorous.to);
    CString line;
    line.Format("CircleGraph 0(%d,%d) SM(%d,%d), MV(%d,%d)", top.x, top.y, slices.light.from.x, slices.light.from.y,
                vigorousEnd.x, vigorousEnd.y);
    melkar::LogText(line);
}

CString Figure(double value, const CString& unit) {
    CString text;
    text.Format("%5.1f ", value);
    return text + unit;
}

} // namespace

struct CCircleGraph::KeyRows : melkar::Keys<CCircleGraph> {
    static constexpr Row rows[] = {
        Text<&G::m_strMinLabel>(Own, "MIN", "unit of the minutes"),
        Text<&G::m_strLightLabel>(Own, "LIGHTLABEL", "light class"),
        Text<&G::m_strModerateLabel>(Own, "MODERATELABEL", "moderate class"),
        Text<&G::m_strVigorousLabel>(Own, "VIGOROUSLABEL", "vigorous class"),
        Color<&G::m_crLight>(Own, "LIGHTCOLOR_RGB", "light class: slice and legend")
            .MarkOn("BASECOLOR_RGB")
            .Beside("MODERATECOLOR_RGB"),
        Color<&G::m_crModerate>(Own, "MODERATECOLOR_RGB", "moderate class").Beside("VIGOROUSCOLOR_RGB"),
        Color<&G::m_crVigorous>(Own, "VIGOROUSCOLOR_RGB", "vigorous class").Beside("LIGHTCOLOR_RGB"),
    };
};

CCircleGraph::CCircleGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon)
    : CGraph(window, dc, section, shared, second, balloon) {
    m_nMessageSize = kMessagePoints;
    CCircleGraph::ReadIniFile(GraphProfile());
}

CCircleGraph::~CCircleGraph() = default;

long CCircleGraph::ReadIniFile(char* path) {
    melkar::ReadKeys(KeyRows::rows, *this, path, m_strSection);
    return 0;
}

melkar::ClassKeys CCircleGraph::ProfileKeys() { return {"CCircleGraph", melkar::InfoOf(KeyRows::rows)}; }

long CCircleGraph::SetData(CStringArray* values) {
    return melkar::ReadGuarded([&] {
        m_dwaStatus.RemoveAll();
        m_saValues.RemoveAll();
        m_dwaStatus.Add(0); // one day with figures: the frame shows no message
        for (int level = 0; values && level < values->GetSize(); ++level)
            m_saValues.Add((*values)[level]);
        return melkar::kOk;
    });
}

struct CCircleGraph::Cycle : melkar::Steps<CCircleGraph> {
    static constexpr Step below[] = {
        {Do<&G::BeginCycle>, Needed}, Do<&G::DrawTitle>,  Do<&G::PutLegendBelow>,
        Do<&G::SetCanvasRect>,        Do<&G::DrawCircle>, Do<&G::DrawSecExs>,
    };
    static constexpr Step beside[] = {
        {Do<&G::BeginCycle>, Needed}, Do<&G::DrawTitle>,  Do<&G::PutLegendBeside>,
        Do<&G::SetCanvasRect>,        Do<&G::DrawCircle>, Do<&G::DrawLegendUnlessExcluded>,
    };
};

long CCircleGraph::Draw(CRect area, char* path) { return melkar::RunCycle(*this, Cycle::below, area, path); }
long CCircleGraph::DrawSeparate(CRect area, char* path) { return melkar::RunCycle(*this, Cycle::beside, area, path); }

void CCircleGraph::PutLegendBelow() { m_bSeparate = 0; }
void CCircleGraph::PutLegendBeside() { m_bSeparate = 1; }

void CCircleGraph::DrawLegendUnlessExcluded() {
    if (IsLegendShown())
        DrawSecExs();
}

bool CCircleGraph::IsLegendShown() const { return !m_bSeparate || !m_bExclude; }

void CCircleGraph::CalcCircleRect() {
    const melkar::CircleAreas areas = m_bSeparate ? melkar::LegendBeside(m_rcGraph) : melkar::LegendBelow(m_rcGraph);
    m_rcCircle = areas.circle;
    m_rcLegend = areas.legend;
}

ClassFigures CCircleGraph::MinutesOfClasses() const {
    return melkar::MinutesOf(m_saValues, m_nModerateFrom, m_nModerateTo);
}

bool CCircleGraph::IsPieShown(const ClassFigures& minutes) const {
    return !(minutes.Sum() < kLeastMinutes) && m_rcCircle.Height() > 0;
}

/// A graph too narrow for a pie shows the legend alone.
void CCircleGraph::DrawCircle() {
    const ClassFigures minutes = MinutesOfClasses();
    m_dLightMinutes = std::max(minutes.Sum() - minutes.vigorous - minutes.moderate, 0.0);
    m_dModerateMinutes = minutes.moderate;
    m_dVigorousMinutes = minutes.vigorous;
    TakeShares(melkar::SharesOf(minutes));
    CalcCircleRect();
    if (!IsPieShown(minutes))
        return;
    const CircleSlices slices = melkar::SlicesOf(m_rcCircle, minutes);
    LogSlices(slices);
    const ScopedObject noOutline(m_hMemDC, GetStockObject(NULL_PEN));
    DrawSlice(slices.light, m_crLight);
    DrawSlice(slices.vigorous, m_crVigorous);
    DrawSlice(slices.moderate, m_crModerate);
    SetTextColor(m_hMemDC, TextColorOr(melkar::kBlack)); // left to the legend and to a derived class
}

void CCircleGraph::TakeShares(const ClassFigures& shares) {
    m_dLightRate = shares.light;
    m_dModerateRate = shares.moderate;
    m_dVigorousRate = shares.vigorous;
}

void CCircleGraph::DrawSlice(const CircleSlice& slice, COLORREF color) {
    if (!slice.IsShown())
        return;
    const ScopedBrush brush(m_hMemDC, color);
    Pie(m_hMemDC, m_rcCircle.left, m_rcCircle.top, m_rcCircle.right, m_rcCircle.bottom, slice.from.x, slice.from.y,
        slice.to.x, slice.to.y);
}

CString CCircleGraph::ShareText(double share) { return Figure(share, "%"); }
CString CCircleGraph::MinutesText(double minutes) const { return Figure(minutes, m_strMinLabel); }

int CCircleGraph::WidestOf(const CString (&texts)[3]) const {
    int widest = 0;
    for (const CString& text : texts)
        widest = std::max(widest, MeasureText(text, DT_CALCRECT).Width());
    return widest;
}

void CCircleGraph::DrawSecExs() {
    const ScopedFont font(m_hMemDC, ChartFont(m_nTargetSize));
    TakeShares(melkar::RoundedShares({m_dLightRate, m_dModerateRate, m_dVigorousRate}));
    const CString labels[] = {" " + m_strLightLabel, " " + m_strModerateLabel, " " + m_strVigorousLabel};
    const CString percents[] = {ShareText(m_dLightRate), ShareText(m_dModerateRate), ShareText(m_dVigorousRate)};
    const CString minutes[] = {MinutesText(m_dLightMinutes), MinutesText(m_dModerateMinutes),
                               MinutesText(m_dVigorousMinutes)};
    const melkar::LegendSizes sizes{MeasureText("W", DT_CALCRECT).Height(), WidestOf(labels), WidestOf(percents),
                                    WidestOf(minutes)};
    const auto [light, moderate, vigorous] = melkar::LegendOf(m_rcLegend, sizes, m_bSeparate != 1);

    DrawRectangle(m_hMemDC, light.entry.sample, m_crLight, m_crLight, 0);
    DrawRectangle(m_hMemDC, moderate.entry.sample, m_crModerate, m_crModerate, 0);
    DrawRectangle(m_hMemDC, vigorous.entry.sample, m_crVigorous, m_crVigorous, 0);
    const melkar::CircleLegendRow* rows[] = {&light, &moderate, &vigorous};
    for (int row = 0; row < 3; ++row)
        PaintText(labels[row], rows[row]->entry.text, 0);
    for (int row = 0; row < 3; ++row)
        PaintText(percents[row], rows[row]->percent, DT_RIGHT);
    for (int row = 0; row < 3; ++row)
        PaintText(minutes[row], rows[row]->minutes, DT_RIGHT);
}
