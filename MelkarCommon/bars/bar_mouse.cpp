// Clicks and hovering, between two draws, on what the last one left.

#include <MelkarCommon/bars/bar_graph.h>
#include <MelkarCommon/bars/bar_layout.h>
#include <MelkarCommon/support/platform/drawing.h>
#include <MelkarCommon/support/scoped.h>
#include <MelkarCommon/support/support.h>

#include <algorithm>
#include <climits>

using melkar::ScopedFont;

namespace {

constexpr int kPointerGap = 3;   ///< from the pointer to the balloon's text
constexpr int kBalloonRise = 6;  ///< how far the balloon's text ends above the pointer's gap
constexpr int kBalloonFrame = 3; ///< around the text
constexpr int kBalloonBytes = 255;

int ToCoordinate(long value) { return static_cast<int>(std::clamp<long>(value, INT_MIN, INT_MAX)); }

/// Size of a text on any surface, in its font.
CRect Measured(HDC surface, const CString& text, UINT format, CRect box = CRect()) {
    DrawTextExA(surface, const_cast<char*>(text.GetString()), text.GetLength(), &box, format, nullptr);
    return box;
}

} // namespace

int CBarGraph::HitTest(CPoint point, int enabled) const {
    if (enabled != 1)
        return -1;
    return melkar::BarAt(m_oaBarRects, ToCoordinate(long{point.x} - m_nOriginX),
                         ToCoordinate(long{point.y} - m_nOriginY), m_rcCanvas.bottom);
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
    OnMouseMove(CPoint(ToCoordinate(x), ToCoordinate(y)));
    return 0;
}

long CBarGraph::OnMouseMove(CPoint point) {
    ::BitBlt(m_hGMemDC, m_nOriginX, m_nOriginY, m_rcGraph.Width(), m_rcGraph.Height(), m_hGMemDCBalloon, m_nOriginX,
             m_nOriginY, SRCCOPY);
    const int bar = HitTest(point, m_bHoverEnabled);
    if (bar >= 0)
        DrawBalloon(point, bar);
    return bar;
}

/// The day's date and the bar's own figure, above and right of the pointer. It may leave the graph.
void CBarGraph::DrawBalloon(CPoint pointer, int bar) {
    const HDC surface = m_hGMemDC;
    const CString date = m_saDates[bar / SeriesCount()];
    const CString figure = m_saValues[bar];
    const ScopedFont font(surface, ChartFontFor(surface, m_nBalloonSize));
    const int width =
        std::max(Measured(surface, date, DT_CALCRECT).Width(), Measured(surface, figure, DT_CALCRECT).Width());
    const CPoint corner(pointer.x + kPointerGap, pointer.y + kPointerGap);
    const CString text = Limited(date + "\n" + figure, kBalloonBytes);
    CRect box = Measured(surface, text, DT_CALCRECT | DT_CENTER, CRect(corner.x, corner.y, corner.x + width, corner.y));
    box.OffsetRect(0, -(box.Height() + kBalloonRise));

    CRect frame = box;
    frame.DeflateRect(-kBalloonFrame, -kBalloonFrame);
    DrawRectangle(surface, frame, m_crBalloon, m_crPen, 1);
    SetBkMode(surface, TRANSPARENT);
    DrawTextExA(surface, const_cast<char*>(text.GetString()), text.GetLength(), &box, DT_CENTER, nullptr);
}
