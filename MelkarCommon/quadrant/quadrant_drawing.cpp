#include <MelkarCommon/quadrant/square_graph.h>

#include <MelkarCommon/frame/frame_layout.h>
#include <MelkarCommon/frame/legend_layout.h>
#include <MelkarCommon/frame/scale.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/quadrant/quadrant_layout.h>
#include <MelkarCommon/support/chart_font.h>
#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/support.h>
#include <MelkarCommon/support/text_box.h>

using melkar::kBlack;
using melkar::kWhite;
using melkar::QuadrantScale;
using melkar::ScopedFont;

namespace {

constexpr double kEntryDistance = 1.1;         ///< from entry to entry of the legend, in heights of its text
constexpr const char* kShareSample = "0000% "; ///< its height makes the share box's

} // namespace

long CSquareGraph::DrawCanvas() {
    const ScopedFont font(m_hMemDC, ChartFont(m_nVAxsSize));
    LayOutCanvas();
    FillCanvas();
    DrawRectangle(m_hMemDC, m_rcLeftUpper, m_crLeftUpper, m_crLeftUpper, 1);
    DrawRectangle(m_hMemDC, m_rcRightUpper, m_crRightUpper, m_crRightUpper, 1);
    DrawRectangle(m_hMemDC, m_rcLeftLower, m_crLeftLower, m_crLeftLower, 1);
    DrawRectangle(m_hMemDC, m_rcRightLower, m_crRightLower, m_crRightLower, 1);
    if (m_rcCanvas.Width() > 0) {
        DrawVFigures();
        DrawHFigures();
    }
    return 0;
}

void CSquareGraph::LayOutCanvas() {
    const CRect leftRoom = MeasureText(m_strLeftSpace, DT_CALCRECT);
    const CRect rightRoom = MeasureText(m_strRightSpace, DT_CALCRECT);
    const int side = melkar::SquareSide(
        {m_rcGraph, CPoint(m_rcCanvas.left, m_rcCanvas.top), m_nTitleSpace, leftRoom.Height(), rightRoom.Width()});
    const int left = m_rcSideBar.left + leftRoom.Width();
    const int top = m_rcTitle.bottom + m_rcTitle.Height() * m_nTitleSpace / 2;
    m_rcCanvas = CRect(left, top, left + side, top + side);

    const int xm = left + QuadrantScale{m_nHMin, m_nHMax, m_nHMid}.DividingOffset(side);
    const int ym = m_rcCanvas.bottom - QuadrantScale{m_nVMin, m_nVMax, m_nVMid}.DividingOffset(side);
    const auto quadrants = melkar::QuadrantsAround(m_rcCanvas, xm, ym);
    m_rcLeftUpper = quadrants.leftUpper;
    m_rcRightUpper = quadrants.rightUpper;
    m_rcLeftLower = quadrants.leftLower;
    m_rcRightLower = quadrants.rightLower;
}

/// The figures of a scale that there is room for; `place` tells where a figure's box begins. A scale upside down has
/// none.
void CSquareGraph::DrawFigures(int min, int max, int step,
                               const std::function<CPoint(int value, const CRect& size)>& place) {
    if (min >= max)
        return;
    const melkar::ScalePixels scale = melkar::PixelsOf({double(min), double(max), double(step)}, m_rcCanvas);
    const melkar::ScaleWalk walk = melkar::WalkScale(scale, MeasureText("0", DT_CALCRECT).Height());
    for (int i = 0; i < walk.count; ++i) {
        const int value = melkar::Truncate(walk.At(i));
        const CString figure = melkar::FormatFixed(value, 0);
        CRect box = MeasureText(figure, DT_CALCRECT);
        const CPoint at = place(value, box);
        box.OffsetRect(at.x, at.y);
        PaintText(figure, box, DT_RIGHT);
    }
}

void CSquareGraph::DrawVFigures() {
    const QuadrantScale scale{m_nVMin, m_nVMax, m_nVMid};
    DrawFigures(m_nVMin, m_nVMax, m_nVStep, [&](int value, const CRect& size) {
        return CPoint(m_rcCanvas.left - size.Width() - melkar::kSideGap,
                      m_rcCanvas.bottom - scale.Offset(value, m_rcCanvas.Height()) - size.Height() / 2);
    });
}

void CSquareGraph::DrawHFigures() {
    const QuadrantScale scale{m_nHMin, m_nHMax, m_nHMid};
    DrawFigures(m_nHMin, m_nHMax, m_nHStep, [&](int value, const CRect& size) {
        return CPoint(m_rcCanvas.left + scale.Offset(value, m_rcCanvas.Width()) - size.Width() / 2, m_rcCanvas.bottom);
    });
}

long CSquareGraph::DrawTargetAverage() { return 0; }

long CSquareGraph::DrawPoints() {
    if (m_bRatioBox != 1)
        return 0;
    const melkar::ScopedBkMode transparent(m_hMemDC, TRANSPARENT); // texts and gaps of the cross
    // The height comes from the font that the surface holds: the box is as high whatever the size of the shares.
    const CRect box = melkar::ShareBox(m_rcGraph, m_rcCanvas, MeasureText(kShareSample, DT_CALCRECT).Height());
    const int xm = (box.left + box.right) / 2;
    const int ym = (box.top + box.bottom) / 2;
    DrawShares(box, xm, ym);
    DrawTransParentRectangle(m_hMemDC, box, kWhite, kBlack, 1);
    const melkar::ScopedPen dots(m_hMemDC, PS_DOT, 1, kBlack);
    DrawLine(m_hMemDC, CPoint(box.left, ym), CPoint(box.right, ym), nullptr);
    DrawLine(m_hMemDC, CPoint(xm, box.top), CPoint(xm, box.bottom), nullptr);
    return 0;
}

/// In the order of `melkar::QuadrantCounts`.
std::array<CString, 4> CSquareGraph::Shares() const {
    return melkar::ShareTexts({m_nLeftUpperCount, m_nLeftLowerCount, m_nRightUpperCount, m_nRightLowerCount});
}

void CSquareGraph::DrawShares(const CRect& box, int xm, int ym) {
    const auto cells = melkar::QuadrantsAround(box, xm, ym);
    const auto texts = Shares();
    const ScopedFont font(m_hMemDC, ChartFont(melkar::AddEdge(m_nVAxsSize, 1)));
    const auto draw = [this](const CRect& cell, COLORREF color, const CString& share) {
        if (share.IsEmpty())
            return;
        DrawRectangle(m_hMemDC, cell, color, color, 1);
        DrawTextVCenter(m_hMemDC, cell, share, DT_RIGHT);
    };
    draw(cells.leftUpper, m_crLeftUpper, texts[0]);
    draw(cells.leftLower, m_crLeftLower, texts[1]);
    draw(cells.rightUpper, m_crRightUpper, texts[2]);
    draw(cells.rightLower, m_crRightLower, texts[3]);
}

long CSquareGraph::DrawPoint(int x, int y, CString text) {
    if (x < m_rcCanvas.left || x > m_rcCanvas.right || y < m_rcCanvas.top || y > m_rcCanvas.bottom)
        return -1;
    const CRect box = melkar::CenteredOn(CPoint(x, y), MeasureText(text, DT_CALCRECT));
    PaintText(text, box, 0);
    PaintText(text, box, 0);
    return 0;
}

long CSquareGraph::DrawVAxsLabel() {
    const ScopedFont font(m_hMemDC, ChartFont(m_nVAxsSize, melkar::kUpwards));
    m_strVAxsLabel.Replace("__d__", melkar::FormatFixed(m_nLevel, 0));
    const int width = MeasureText(m_strVAxsLabel, DT_CALCRECT).Width();
    PaintTurned(CPoint(m_rcSideBar.right, melkar::UpwardLabelY(m_rcCanvas, width)), m_strVAxsLabel);
    return 0;
}

long CSquareGraph::DrawHAxsLabel() {
    const ScopedFont font(m_hMemDC, ChartFont(m_nVAxsSize));
    CRect box = MeasureText(m_strHAxsLabel, DT_CALCRECT);
    box.OffsetRect((m_rcCanvas.left + m_rcCanvas.right) / 2 - box.Width() / 2, m_rcCanvas.bottom + box.Height());
    SetTextColor(m_hMemDC, TextColorOr(kBlack));
    PaintText(m_strHAxsLabel, box, 0);
    return 0;
}

void CSquareGraph::DrawSecExs() {
    const ScopedFont font(m_hMemDC, ChartFont(m_nVAxsSize));
    const int line = MeasureText("0", DT_CALCRECT).Height();
    const CRect room = melkar::LegendRoom(m_rcGraph, m_rcCanvas, line);
    CPoint at(m_rcCanvas.right + melkar::kSideGap, m_rcCanvas.top);
    const auto entry = [&](const CString& label, COLORREF color) {
        const CRect size = MeasureText(label, DT_CALCRECT | DT_WORDBREAK, room);
        const auto [text, square] = melkar::SquareLegendEntry(at, line, size);
        PaintText(label, text, DT_WORDBREAK);
        DrawRectangle(m_hMemDC, square, color, color, 1);
        at.y = melkar::AddEdge(at.y, melkar::Truncate(size.Height() * kEntryDistance));
    };
    entry(m_strRightUpperLabel, m_crRightUpper);
    entry(m_strLeftUpperLabel, m_crLeftUpper);
    entry(m_strRightLowerLabel, m_crRightLower);
    entry(m_strLeftLowerLabel, m_crLeftLower);
}
