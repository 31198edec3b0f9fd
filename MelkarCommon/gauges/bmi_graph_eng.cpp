#include <MelkarCommon/gauges/bmi_graph_eng.h>

#include <MelkarCommon/gauges/gauge_layout.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/support/support.h>

#include <algorithm>

using melkar::GaugeFigurePlace;
using melkar::kBlack;
using melkar::kWhite;

namespace {

constexpr COLORREF kFrame = RGB(128, 128, 128);
constexpr int kGap = 5;         ///< from the bar to a figure that is cut off at the right edge
constexpr int kSurfaceLeft = 1; ///< figures off the scale have all the room from here to the right edge

} // namespace

long CBMIGraph_Eng::DrawValue() {
    const CRect band = melkar::BarBand(m_rcCanvas);
    const CRect bar = BarIn(band);
    const melkar::ScopedFont font(m_hMemDC, ChartFont(kFigureSize));
    const CRect wholeRoom(kSurfaceLeft, band.top, band.right, band.bottom);
    if (IsBelowScale()) {
        PaintText(m_strValue, wholeRoom, melkar::kFigureAtLeft);
        return 0;
    }
    DrawRectangle(m_hMemDC, bar, ClassColor(ShownClass()), kFrame, 1);
    if (IsAboveScale())
        PaintText(m_strValue, wholeRoom, melkar::kFigureAtRight);
    else
        WriteFigure(band, bar.right);
    return 0;
}

/// Of a figure that isn't below the scale.
CRect CBMIGraph_Eng::BarIn(const CRect& band) const {
    const melkar::GaugeScale scale{double(m_nMin), double(m_nMax), band.left, band.right};
    return {band.left, band.top, std::max(scale.FigureX(m_dValue), band.left), band.bottom};
}

void CBMIGraph_Eng::WriteFigure(const CRect& band, int end) {
    const CRect behind(end, band.top, band.right, band.bottom);
    const int width = MeasureText(m_strValue, melkar::kFigureAtRight | DT_CALCRECT, behind).Width();
    const GaugeFigurePlace place = melkar::PlaceGaugeFigure(band, end, width);
    if (place == GaugeFigurePlace::CutOff) {
        PaintText(m_strValue, CRect(melkar::AddEdge(end, kGap), band.top, band.right, band.bottom),
                  melkar::kFigureAtLeft);
        return;
    }
    const bool inBar = place == GaugeFigurePlace::InBar;
    SetTextColor(m_hMemDC, inBar ? kWhite : TextColorOr(kBlack));
    PaintText(m_strValue, CRect(inBar ? band.left : end, band.top, inBar ? end : end + width, band.bottom),
              melkar::kFigureAtRight);
    SetTextColor(m_hMemDC, TextColorOr(kBlack));
}
