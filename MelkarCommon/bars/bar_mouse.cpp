// Clicks and hovering, between two draws, on what the last one left.

#include <MelkarCommon/bars/bar_graph.h>
#include <MelkarCommon/bars/bar_text_layout.h>
#include <MelkarCommon/frame/text_limits.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/support/support.h>
#include <MelkarCommon/support/text_measure.h>

#include <algorithm>

using melkar::ScopedFont;

int CBarGraph::HitTest(CPoint point, int enabled) const {
    if (enabled != 1)
        return -1;
    const CPoint on(melkar::SubtractEdge(point.x, m_nOriginX), melkar::SubtractEdge(point.y, m_nOriginY));
    return m_fnDayRect ? melkar::PlacedBarAt(m_oaBarRects, on)
                       : melkar::BarAt(m_oaBarRects, on.x, on.y, m_rcCanvas.bottom);
}

long CBarGraph::OnClick(int x, int y) {
    OnClick(CPoint(x, y));
    return 0;
}

long CBarGraph::OnClick(CPoint point) {
    const int bar = HitTest(point, m_bClickEnabled);
    return bar < 0 ? -1 : bar / SeriesCount();
}

long CBarGraph::OnMouseMove(long x, long y) {
    OnMouseMove(CPoint(melkar::NearestInt(x), melkar::NearestInt(y)));
    return 0;
}

long CBarGraph::OnMouseMove(CPoint point) {
    const melkar::HostDirectory here(Host());
    ::BitBlt(m_hGMemDC, m_nOriginX, m_nOriginY, m_rcGraph.Width(), m_rcGraph.Height(), m_hGMemDCBalloon, m_nOriginX,
             m_nOriginY, SRCCOPY);
    const int bar = HitTest(point, m_bHoverEnabled);
    if (bar >= 0)
        DrawBalloon(point, bar);
    return bar;
}

CString CBarGraph::BalloonText(int bar) const {
    return m_fnDayText ? m_fnDayText(bar / SeriesCount()) : m_saValues[bar];
}

/// All that a balloon says: the day, and the figure below it.
CString CBarGraph::BalloonLines(int bar) const {
    return Limited(m_saDates[bar / SeriesCount()] + "\n" + BalloonText(bar), melkar::kLabelBytes);
}

/// The day's date and what it says of itself or else the bar's own figure, above and right of the pointer. It may leave
/// the graph.
void CBarGraph::DrawBalloon(CPoint pointer, int bar) {
    const HDC surface = m_hGMemDC;
    const CString date = m_saDates[bar / SeriesCount()];
    const CString figure = BalloonText(bar);
    const ScopedFont font(surface, ChartFontFor(surface, m_nBalloonSize));
    const auto widthOf = [surface](const CString& line) {
        return melkar::MeasureText(surface, line, DT_CALCRECT).Width();
    };
    const CRect start = melkar::BalloonStart(pointer, std::max(widthOf(date), widthOf(figure)));
    const CString text = BalloonLines(bar);
    const auto balloon = melkar::BalloonOf(melkar::MeasureText(surface, text, DT_CALCRECT | DT_CENTER, start));
    DrawRectangle(surface, balloon.frame, m_crBalloon, m_crPen, 1);
    const auto color = TextColorOn(surface);
    melkar::PaintText(surface, text, balloon.text, DT_CENTER);
}
