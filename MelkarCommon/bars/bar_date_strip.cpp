// The row under the canvas: a caption and a tick per day, thinned out so that captions don't run into each other.

#include <MelkarCommon/bars/bar_graph.h>
#include <MelkarCommon/bars/bar_layout.h>
#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/platform/drawing.h>
#include <MelkarCommon/support/scoped.h>
#include <MelkarCommon/support/support.h>

using melkar::ScopedFont;
using melkar::ScopedPen;

namespace {

constexpr int kMostCaptions = 7;
constexpr int kLongView = 61; ///< days from which only firsts of the month have a caption
constexpr int kCaptionBytes = 127;
constexpr double kTickReach = 0.3; ///< in heights of a zero, up and down from the canvas' bottom
constexpr float kLongTick = 0.35F;
constexpr float kShortTick = 0.15F;

} // namespace

void CBarGraph::DrawTick(int x, int bottom, int top) { DrawLine(m_hMemDC, CPoint(x, bottom), CPoint(x, top), nullptr); }

/// A caption turned by the escapement, beginning at the middle of the day's bar less half of what it reaches across.
void CBarGraph::DrawTurnedCaption(int day, const CString& caption) {
    const CRect size = MeasureText(caption, DT_CALCRECT | DT_CENTER);
    const melkar::TurnedExtent extent = melkar::ExtentOf(size.Width(), size.Height(), m_nDateEscapement);
    const int middle = melkar::BarOf(m_rcCanvas, day, Days()).Middle();
    TextOutA(m_hMemDC, middle - melkar::Truncate(extent.across) / 2, m_rcCanvas.bottom + melkar::Truncate(extent.down),
             caption, caption.GetLength());
}

/// A caption centred on the day's slot; the box reaches a canvas width further on both sides, so that a caption wider
/// than its slot isn't cut.
void CBarGraph::DrawCentredCaption(int day, const CString& caption, int zeroHeight) {
    const int width = m_rcCanvas.Width();
    const CRect box(melkar::SlotLeft(m_rcCanvas, day, Days()) - width,
                    melkar::Truncate(m_rcCanvas.bottom + 0.5 * zeroHeight),
                    melkar::SlotLeft(m_rcCanvas, day + 1, Days()) + width, m_rcGraph.bottom);
    PaintText(caption, box, DT_CENTER);
}

long CBarGraph::DrawDate() {
    if (m_bDateStrip != 1)
        return 0;
    SetBkMode(m_hMemDC, TRANSPARENT);
    const ScopedFont font(m_hMemDC, ChartFont(m_nDateSize, m_nDateEscapement));
    const ScopedPen pen(m_hMemDC, PS_SOLID, 1, m_crPen);
    const int zeroHeight = MeasureText("0", DT_CALCRECT).Height();
    const int step = (Days() + kMostCaptions - 1) / kMostCaptions;
    for (int day = 0; day < Days(); day += step) {
        const CString caption = Limited(m_saDates[day], kCaptionBytes);
        if (m_nDateEscapement != 0)
            DrawTurnedCaption(day, caption);
        else
            DrawCentredCaption(day, caption, zeroHeight);
        DrawTick(melkar::BarOf(m_rcCanvas, day, Days()).Middle(),
                 melkar::Truncate(m_rcCanvas.bottom + kTickReach * zeroHeight),
                 melkar::Truncate(m_rcCanvas.bottom - kTickReach * zeroHeight));
    }
    return 0;
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
    if (m_bDateStrip != 1)
        return 0;
    SetBkMode(m_hMemDC, TRANSPARENT);
    const ScopedFont font(m_hMemDC, ChartFont(m_nDateSize, m_nDateEscapement));
    const ScopedPen pen(m_hMemDC, PS_SOLID, 1, m_crPen);
    const auto zeroHeight = static_cast<float>(MeasureText("0", DT_CALCRECT).Height());
    const auto bottom = static_cast<float>(m_rcCanvas.bottom);
    for (int day = 0; day < Days(); ++day) {
        const bool captioned = IsCaptionedByCalendar(day);
        if (captioned)
            DrawTurnedCaption(day, PeriodCaption(day));
        const float reach = (captioned ? kLongTick : kShortTick) * zeroHeight;
        DrawTick(melkar::BarOf(m_rcCanvas, day, Days()).Middle(), melkar::Truncate(bottom + reach),
                 melkar::Truncate(bottom - reach));
    }
    return 0;
}
