// The row under the canvas: a caption and a tick per day, thinned out so that captions don't run into each other.

#include <MelkarCommon/bars/bar_graph.h>
#include <MelkarCommon/bars/bar_text_layout.h>
#include <MelkarCommon/frame/text_limits.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/support/support.h>

using melkar::ScopedFont;
using melkar::ScopedPen;

namespace {

constexpr int kMostCaptions = 7;
constexpr int kLongView = 61;      ///< days from which only firsts of the month have a caption
constexpr double kTickReach = 0.3; ///< in heights of a zero, up and down from the canvas' bottom
constexpr float kLongTick = 0.35F;
constexpr float kShortTick = 0.15F;

} // namespace

int CBarGraph::MiddleOf(int day) const { return melkar::BarOf(m_rcCanvas, day, Days()).Middle(); }

/// A caption turned by the escapement.
void CBarGraph::DrawTurnedCaption(int day, const CString& caption) {
    const CRect size = MeasureText(caption, DT_CALCRECT | DT_CENTER);
    const CPoint start =
        melkar::TurnedCaptionStart(m_rcCanvas, MiddleOf(day), melkar::ExtentOf(size, m_nDateEscapement));
    PaintTurned(start, caption);
}

/// Runs `paintDay` for each day with the strip's font and pen; it takes the height of a zero, by which ticks go.
template <class PaintDay> long CBarGraph::DrawStrip(PaintDay paintDay) {
    if (m_bDateStrip != 1)
        return 0;
    const ScopedFont font(m_hMemDC, ChartFont(m_nDateSize, m_nDateEscapement));
    const ScopedPen pen(m_hMemDC, PS_SOLID, 1, m_crPen);
    const int zeroHeight = MeasureText("0", DT_CALCRECT).Height();
    for (int day = 0; day < Days(); ++day)
        paintDay(day, zeroHeight);
    return 0;
}

long CBarGraph::DrawDate() {
    const int step = (Days() + kMostCaptions - 1) / kMostCaptions;
    return DrawStrip([&](int day, int zeroHeight) {
        if (day % step != 0)
            return;
        const CString caption = Limited(m_saDates[day], melkar::kCaptionBytes);
        if (m_nDateEscapement != 0)
            DrawTurnedCaption(day, caption);
        else
            PaintText(caption, melkar::CaptionBox(m_rcCanvas, m_rcGraph.bottom, day, Days(), zeroHeight), DT_CENTER);
        DrawTick(melkar::DayTickOf(MiddleOf(day), m_rcCanvas.bottom, kTickReach * zeroHeight));
    });
}

/// One date if the slot is a single day, else both, one behind the other.
CString CBarGraph::PeriodCaption(int day) const {
    CString first = ::FormatDateEx(m_saDates[day], m_strDateFormatType, m_strLocale);
    if (m_saDateEnds[day] == m_saDates[day])
        return first;
    return first + ::FormatDateEx(m_saDateEnds[day], m_strDateFormatType, m_strLocale);
}

/// Every day in a short view, one a week in a middle one, firsts of the month in a long one.
bool CBarGraph::IsCaptionedByCalendar(int day) const {
    if (Days() <= kMostCaptions)
        return true;
    if (Days() < kLongView)
        return (m_nFirstWeekday % 7 + day) % 7 == 1;
    return m_saDates[day].Right(2) == "01";
}

long CBarGraph::DrawDateDailyCoach() {
    return DrawStrip([&](int day, int zeroHeight) {
        const bool captioned = IsCaptionedByCalendar(day);
        if (captioned)
            DrawTurnedCaption(day, PeriodCaption(day));
        const float reach = (captioned ? kLongTick : kShortTick) * static_cast<float>(zeroHeight);
        DrawTick(melkar::DayTickOf(MiddleOf(day), m_rcCanvas.bottom, reach));
    });
}
