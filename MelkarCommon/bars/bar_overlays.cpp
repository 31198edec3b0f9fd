// Target and average lines over the bars, each with a legend.

#include <MelkarCommon/bars/bar_graph.h>
#include <MelkarCommon/bars/bar_text_layout.h>
#include <MelkarCommon/frame/scale.h>
#include <MelkarCommon/frame/text_limits.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/support.h>

#include <optional>
#include <vector>

using melkar::ScalePixels;
using melkar::ScopedFont;
using melkar::ScopedPen;

namespace {

constexpr melkar::LegendSpacing kAverageLegend{5, melkar::kLineLegend.sample};

} // namespace

void CBarGraph::DrawThickLine(int fromX, int toX, int y) {
    for (int row = melkar::kThickTop; row <= melkar::kThickBottom; ++row)
        DrawLine(m_hMemDC, CPoint(fromX, y + row), CPoint(toX, y + row), nullptr);
}

void CBarGraph::DrawLegendLine(const CRect& text) {
    const CRect sample = melkar::LegendSampleOf(text, melkar::kLineLegend);
    DrawThickLine(sample.right, sample.left, melkar::SampleLineY(sample));
}

void CBarGraph::DrawTargetAverage() {
    const melkar::ScopedBkMode transparent(m_hMemDC, TRANSPARENT); // gaps of a line show what is there
    const ScopedFont font(m_hMemDC, ChartFont(m_nTargetSize));
    if (m_bPrintAverage)
        DrawAverage();
    if (m_bPrintTarget)
        DrawTarget();
}

void CBarGraph::CalcTargetRect() {
    const CRect size = MeasureText(m_strTargetLabel, DT_CALCRECT | DT_SINGLELINE);
    m_rcTarget =
        melkar::LegendEntryTo(m_rcCanvas.right, m_rcTitle.bottom - size.Height(), size, melkar::kLineLegend).text;
}

void CBarGraph::DrawTarget() {
    CalcTargetRect();
    const ScopedPen pen(m_hMemDC, PS_DOT, 1, m_crTarget);
    PaintText(m_strTargetLabel, m_rcTarget, DT_BOTTOM | DT_RIGHT);
    DrawLegendLine(m_rcTarget);
    DrawTargetLine();
}

/// Where the line of the target runs over each day; nowhere over days without a figure and off the scale.
std::vector<std::optional<int>> CBarGraph::TargetHeights() const {
    const ScalePixels left = LeftScale();
    std::vector<std::optional<int>> heights(Days());
    for (int day = 0; day < Days() && day < m_saTargets.GetSize(); ++day) {
        const double target = melkar::ToDouble(m_saTargets[day]);
        if (!m_saValues[day * SeriesCount()].IsEmpty() && left.scale.Holds(target))
            heights[day] = melkar::TargetY(left, target);
    }
    return heights;
}

/// Row by row, so that the pattern of each runs on from day to day.
void CBarGraph::DrawTargetLine() {
    const auto stretches = melkar::LevelStretches(m_rcCanvas, TargetHeights());
    for (int row = melkar::kThickTop; row <= melkar::kThickBottom; ++row)
        for (const melkar::LevelStretch& stretch : stretches)
            DrawLine(m_hMemDC, CPoint(stretch.left, stretch.y + row), CPoint(stretch.right, stretch.y + row), nullptr);
}

CString CBarGraph::AverageText() const {
    CString text;
    text.Format("  %s: %s %s", m_strAverageLabel.GetString(), m_strAverage.GetString(), m_strVAxsLabel.GetString());
    return Limited(text, melkar::kCaptionBytes);
}

void CBarGraph::DrawAverage() {
    const ScopedPen pen(m_hMemDC, PS_DASH, 1, m_crAverage);
    const CString text = AverageText();
    // In the graph's corner, which on a page of its caller's is not that of the surface.
    const CRect size = MeasureText(text, DT_CALCRECT | DT_SINGLELINE);
    const auto legend = melkar::LegendEntryFrom(m_rcGraph.left, m_rcGraph.top, size, kAverageLegend);
    DrawThickLine(legend.sample.left, legend.sample.right, melkar::SampleLineY(legend.sample));
    DrawAverageLine();
    PaintText(text, legend.text, DT_BOTTOM | DT_RIGHT);
}

void CBarGraph::DrawAverageLine() {
    const ScalePixels left = LeftScale();
    const double average = melkar::ToDouble(m_strAverage);
    if (left.scale.Holds(average))
        DrawThickLine(m_rcCanvas.left, m_rcCanvas.right, melkar::AverageY(left, average));
}
