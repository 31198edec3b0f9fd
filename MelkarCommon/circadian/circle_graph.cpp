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

using melkar::CircleMarks;
using melkar::ClassFigures;
using melkar::ScopedBrush;
using melkar::ScopedFont;
using melkar::ScopedObject;

namespace {

constexpr int kMessagePoints = 24;
constexpr double kLeastMinutes = 0.01; ///< less than that is no pie
constexpr int kPercentDecimals = 6;    ///< of the shares in the log

/// What the log says of a share, and what is shown of it.
struct LoggedShares {
    double light;
    double moderate;
    double vigorous;
};

/// The light class has what the others leave, rounded as the legend shows them.
LoggedShares LoggedSharesOf(const ClassFigures& minutes) {
    const double total = minutes.Sum();
    const double moderate = minutes.moderate * 100 / total;
    const double vigorous = minutes.vigorous * 100 / total;
    const auto rounded = [](double share) {
        return melkar::ToDouble(getDecimalNumber(melkar::FormatFixed(share, kPercentDecimals), 1));
    };
    return {100 - rounded(moderate) - rounded(vigorous), moderate, vigorous};
}

void LogShares(const LoggedShares& shares, const CircleMarks& marks) {
    const auto text = [](double share) { return melkar::FormatFixed(share, kPercentDecimals); };
    melkar::LogText("CircleGraph S=" + text(shares.light) + " M=" + text(shares.moderate) +
                    " V=" + text(shares.vigorous));
    CString line;
    line.Format("CircleGraph 0(%d,%d) SM(%d,%d), MV(%d,%d)", marks.top.x, marks.top.y, marks.moderateEnd.x,
                marks.moderateEnd.y, marks.vigorousEnd.x, marks.vigorousEnd.y);
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
        {&G::BeginCycle, Needed}, &G::DrawTitle, &G::PutLegendBelow, &G::SetCanvasRect, &G::DrawCircle, &G::DrawSecExs,
    };
    static constexpr Step beside[] = {
        {&G::BeginCycle, Needed}, &G::DrawTitle,  &G::PutLegendBeside,
        &G::SetCanvasRect,        &G::DrawCircle, &G::DrawLegendUnlessExcluded,
    };
};

long CCircleGraph::Draw(CRect area, char* path) { return melkar::RunCycle(*this, Cycle::below, area, path); }
long CCircleGraph::DrawSeparate(CRect area, char* path) { return melkar::RunCycle(*this, Cycle::beside, area, path); }

void CCircleGraph::PutLegendBelow() { m_bSeparate = 0; }
void CCircleGraph::PutLegendBeside() { m_bSeparate = 1; }

void CCircleGraph::DrawLegendUnlessExcluded() {
    if (!m_bExclude)
        DrawSecExs();
}

void CCircleGraph::CalcCircleRect() {
    const melkar::CircleAreas areas = m_bSeparate ? melkar::LegendBeside(m_rcGraph) : melkar::LegendBelow(m_rcGraph);
    m_rcCircle = areas.circle;
    m_rcLegend = areas.legend;
}

/// A graph too narrow for a pie shows the legend alone.
void CCircleGraph::DrawCircle() {
    const ClassFigures minutes = melkar::MinutesOf(m_saValues, m_nModerateFrom, m_nModerateTo);
    m_dLightMinutes = std::max(minutes.Sum() - minutes.vigorous - minutes.moderate, 0.0);
    m_dModerateMinutes = minutes.moderate;
    m_dVigorousMinutes = minutes.vigorous;
    TakeShares(melkar::SharesOf(minutes));
    CalcCircleRect();
    if (minutes.Sum() < kLeastMinutes || m_rcCircle.Height() <= 0)
        return;
    const CircleMarks marks = melkar::MarksOf(m_rcCircle, minutes);
    const LoggedShares shares = LoggedSharesOf(minutes);
    LogShares(shares, marks);
    const ScopedObject noOutline(m_hMemDC, GetStockObject(NULL_PEN));
    DrawSlice(marks.moderateEnd, marks.top, shares.light, m_crLight);
    DrawSlice(marks.top, marks.vigorousEnd, shares.vigorous, m_crVigorous);
    DrawSlice(marks.vigorousEnd, marks.moderateEnd, shares.moderate, m_crModerate);
    SetTextColor(m_hMemDC, melkar::kBlack); // left to the legend and to a derived class
}

void CCircleGraph::TakeShares(const ClassFigures& shares) {
    m_dLightRate = shares.light;
    m_dModerateRate = shares.moderate;
    m_dVigorousRate = shares.vigorous;
}

void CCircleGraph::DrawSlice(CPoint from, CPoint to, double share, COLORREF color) {
    if (!melkar::ShowsSlice(from, to, share))
        return;
    const ScopedBrush brush(m_hMemDC, color);
    Pie(m_hMemDC, m_rcCircle.left, m_rcCircle.top, m_rcCircle.right, m_rcCircle.bottom, from.x, from.y, to.x, to.y);
}

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
    const CString percents[] = {Figure(m_dLightRate, "%"), Figure(m_dModerateRate, "%"), Figure(m_dVigorousRate, "%")};
    const CString minutes[] = {Figure(m_dLightMinutes, m_strMinLabel), Figure(m_dModerateMinutes, m_strMinLabel),
                               Figure(m_dVigorousMinutes, m_strMinLabel)};
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
