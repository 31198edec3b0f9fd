// Scale lines, frame, axis labels and figures of a bar chart.

#include <MelkarCommon/bars/bar_graph.h>
#include <MelkarCommon/frame/day_status.h>
#include <MelkarCommon/frame/scale.h>
#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/platform/drawing.h>
#include <MelkarCommon/support/scoped.h>
#include <MelkarCommon/support/support.h>

using melkar::ScopedFont;
using melkar::ScopedPen;

namespace {

constexpr int kLabelGap = 5; ///< between a scale label and the canvas
constexpr int kLabelBytes = 255;

} // namespace

long CBarGraph::DrawCanvasMeasure() {
    const ScopedPen pen(m_hMemDC, PS_SOLID, 1, m_crPen);
    const ScopedFont font(m_hMemDC, ChartFont(m_nVMeasureSize));
    SetBkMode(m_hMemDC, TRANSPARENT);
    if (!(m_dChartInterval > 0))
        m_dChartInterval = melkar::kStepOfNone;

    for (const melkar::ScaleStep& step : ScaleSteps(LeftScale(), m_nDecimals)) {
        if (!m_bCoach || !step.even)
            PaintText(step.label, melkar::LabelBoxTo(m_rcCanvas.left - kLabelGap, step), DT_RIGHT);
        DrawLine(m_hMemDC, CPoint(m_rcCanvas.left, step.y), CPoint(m_rcCanvas.right, step.y), nullptr);
    }
    return 0;
}

long CBarGraph::DrawCanvas() {
    DrawTransParentRectangle(m_hMemDC, m_rcCanvas, m_crPen, m_crPen, 1);
    return 0;
}

long CBarGraph::DrawVAxsLabel() {
    const ScopedFont font(m_hMemDC, ChartFont(m_nVMeasureLabelSize, 900));
    const CString label = Limited(m_strVAxsLabel, kLabelBytes);
    const int width = MeasureText(label, DT_CALCRECT | DT_BOTTOM | DT_RIGHT).Width();
    TextOutA(m_hMemDC, m_rcSideBar.right, (m_rcCanvas.top + m_rcCanvas.bottom + width) / 2, label, label.GetLength());
    return 0;
}

long CBarGraph::DrawHAxsLabel() {
    const ScopedFont font(m_hMemDC, ChartFont(m_nHMeasureLabelSize));
    const CString label = Limited(m_strHAxsLabel, kLabelBytes);
    const int height = MeasureText(label, DT_CALCRECT | DT_BOTTOM | DT_CENTER).Height();
    PaintText(label, CRect(m_rcCanvas.left, m_rcGraph.bottom - 2 * height, m_rcCanvas.right, m_rcGraph.bottom - height),
              DT_BOTTOM | DT_CENTER);
    return 0;
}

/// The figure of a day: cut to a whole number without decimals, else rounded to them.
CString CBarGraph::FigureText(int day) const {
    const CString sum = melkar::FormatFixed(SumOf(day), 6); // so that 0.1 + 0.2 + 0.7 is 1
    if (m_nDecimals > 0)
        return getDecimalNumber(sum, m_nDecimals);
    return melkar::FormatFixed(melkar::ToInt(sum), 0);
}

/// Above the bar on the canvas colour, or inside it where it wouldn't fit above.
void CBarGraph::DrawFigure(const CString& figure, const RECT& bar) {
    CRect box = MeasureText(figure, DT_CALCRECT | DT_CENTER);
    const bool fitsAbove = bar.top - box.Height() - 2 > m_rcCanvas.top;
    box.OffsetRect((bar.left + bar.right) / 2 - box.Width() / 2, fitsAbove ? bar.top - box.Height() - 1 : bar.top + 1);
    SetBkMode(m_hMemDC, fitsAbove && !m_bValueTransparent ? OPAQUE : TRANSPARENT);
    PaintText(figure, box, DT_SINGLELINE);
}

long CBarGraph::DrawValueOnBar() {
    if (m_bValueOnBar != 1)
        return 0;
    const ScopedFont font(m_hMemDC, ChartFont(m_nValueSize));
    if (!m_bValueTransparent)
        SetBkColor(m_hMemDC, m_crCanvas);
    for (int day = 0; day < Days(); ++day) {
        const CObEntry bar = m_oaBarRects[(day + 1) * SeriesCount() - 1];
        if (bar && !HasNoData(melkar::ToDayStatus(m_dwaStatus[day])))
            DrawFigure(FigureText(day), *bar);
    }
    SetBkMode(m_hMemDC, TRANSPARENT);
    return 0;
}
