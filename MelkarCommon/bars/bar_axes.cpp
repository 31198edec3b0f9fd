// Scale lines, frame, axis labels and figures of a bar chart.

#include <MelkarCommon/bars/bar_graph.h>
#include <MelkarCommon/bars/bar_text_layout.h>
#include <MelkarCommon/frame/day_status.h>
#include <MelkarCommon/frame/frame_layout.h>
#include <MelkarCommon/frame/scale.h>
#include <MelkarCommon/frame/text_limits.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/support/chart_font.h>
#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/support.h>

using melkar::ScopedFont;
using melkar::ScopedPen;

long CBarGraph::DrawCanvasMeasure() {
    const ScopedPen pen(m_hMemDC, PS_SOLID, 1, m_crPen);
    const ScopedFont font(m_hMemDC, ChartFont(m_nVMeasureSize));
    if (!(m_dChartInterval > 0))
        m_dChartInterval = melkar::kStepOfNone;

    for (const melkar::ScaleStep& step : ScaleSteps(LeftScale(), m_nDecimals)) {
        if (!m_bCoach || !step.even)
            PaintText(step.label, melkar::LabelBoxTo(m_rcCanvas.left - melkar::kScaleGap, step), DT_RIGHT);
        DrawLine(m_hMemDC, CPoint(m_rcCanvas.left, step.y), CPoint(m_rcCanvas.right, step.y), nullptr);
    }
    return 0;
}

long CBarGraph::DrawCanvas() {
    DrawTransParentRectangle(m_hMemDC, m_rcCanvas, m_crPen, m_crPen, 1);
    return 0;
}

long CBarGraph::DrawVAxsLabel() {
    const ScopedFont font(m_hMemDC, ChartFont(m_nVMeasureLabelSize, melkar::kUpwards));
    const CString label = Limited(m_strVAxsLabel, melkar::kLabelBytes);
    const int length = MeasureText(label, DT_CALCRECT | DT_BOTTOM | DT_RIGHT).Width();
    PaintTurned(CPoint(m_rcSideBar.right, melkar::UpwardLabelY(m_rcCanvas, length)), label);
    return 0;
}

long CBarGraph::DrawHAxsLabel() {
    const ScopedFont font(m_hMemDC, ChartFont(m_nHMeasureLabelSize));
    const CString label = Limited(m_strHAxsLabel, melkar::kLabelBytes);
    const int height = MeasureText(label, DT_CALCRECT | DT_BOTTOM | DT_CENTER).Height();
    PaintText(label, melkar::LabelBox(m_rcCanvas, m_rcGraph.bottom, height), DT_BOTTOM | DT_CENTER);
    return 0;
}

/// The figure of a day: cut to a whole number without decimals, else rounded to them.
CString CBarGraph::FigureText(int day) const {
    if (m_fnDayText)
        return m_fnDayText(day);
    const CString sum = melkar::FormatFixed(SumOf(day), 6); // so that 0.1 + 0.2 + 0.7 is 1
    if (m_nDecimals > 0)
        return getDecimalNumber(sum, m_nDecimals);
    return melkar::FormatFixed(melkar::ToInt(sum), 0);
}

/// Above the bar on the canvas colour, or inside it where it wouldn't fit above.
void CBarGraph::DrawFigure(const CString& figure, const RECT& bar) {
    const auto [box, isAbove] =
        melkar::PlaceFigureOnBar(bar, MeasureText(figure, DT_CALCRECT | DT_CENTER), m_rcCanvas.top);
    if (isAbove && !m_bValueTransparent)
        PaintTextOn(m_crCanvas, figure, box, DT_SINGLELINE);
    else
        PaintText(figure, box, DT_SINGLELINE);
}

/// On its bar, the upmost one of a stack. A day of which the file says that it has no data has none.
bool CBarGraph::IsFigureWritten(int day) const {
    return m_bValueOnBar == 1 && m_oaBarRects[(day + 1) * SeriesCount() - 1] &&
           !HasNoData(melkar::ToDayStatus(m_dwaStatus[day]));
}

long CBarGraph::DrawValueOnBar() {
    const ScopedFont font(m_hMemDC, ChartFont(m_nValueSize));
    for (int day = 0; day < Days(); ++day)
        if (IsFigureWritten(day))
            DrawFigure(FigureText(day), *m_oaBarRects[(day + 1) * SeriesCount() - 1]);
    return 0;
}
