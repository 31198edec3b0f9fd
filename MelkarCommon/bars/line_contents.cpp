// What stands over the bars: lines, the band of the intake, the weight plan.

#include <MelkarCommon/bars/bar_layout.h>
#include <MelkarCommon/bars/simulation.h>
#include <MelkarCommon/bars/weight_layout.h>
#include <MelkarCommon/frame/contents.h>
#include <MelkarCommon/frame/scale.h>
#include <MelkarCommon/support/numbers.h>

using melkar::AxisSide;
using melkar::ShownItem;
using melkar::ToDouble;

melkar::Contents CLineGraph::Shown() const {
    melkar::Contents contents = CBarGraph::Shown();
    if (!m_bLines || m_oaLineRects.GetSize() == 0 || contents.axes.empty())
        return contents;
    for (int line = 0; line < LineCount(); ++line)
        AddLineTo(contents, line);
    if (m_bLineMeasure && m_dChartLineMin <= m_dChartLineMax) // a scale upside down has no labels
        contents.axes.push_back(
            {AxisSide::Right, Utf8(m_strVLineAxsLabel), m_dChartLineMin, m_dChartLineMax, m_dChartLineInterval});
    return contents;
}

/// The dots of a line. A line without any is no series.
void CLineGraph::AddLineTo(melkar::Contents& contents, int line) const {
    const int series = static_cast<int>(contents.series.size());
    bool hasAny = false;
    for (int day = 0; day < Days(); ++day) {
        if (!HasDot(day, line))
            continue;
        hasAny = true;
        const CString& text = LineValue(day, line);
        const double value = ToDouble(text);
        const CRect dot = melkar::DotOf(*m_oaLineRects[day * LineCount() + line]);
        ShownItem& item = contents.items[static_cast<std::size_t>(day)];
        item.figures.push_back({series, Utf8(text), value, !RightScale().scale.Holds(value), dot, ""});
        item.isMissing = false;
    }
    if (hasAny)
        contents.series.push_back({Utf8(m_strVLineAxsLabel), m_crLine[line], AxisSide::Right});
}

melkar::Contents CExpenditureGraph::Shown() const {
    melkar::Contents contents = CLineGraph::Shown();
    if (contents.axes.empty())
        return contents;
    if (m_nSeriesCount == 2) {
        contents.whole = Utf8(m_strEx1Label);
        contents.series[1].name = Utf8(m_strEx2Label);
    }
    const double intake = ToDouble(m_strAverageIntake);
    if (LeftScale().scale.Holds(intake) && m_rcIntake.Height() > 0)
        contents.marks.insert(contents.marks.begin(), {melkar::MarkKind::Average, Utf8(m_strAverageIntakeLabel),
                                                       Utf8(m_strAverageIntake), intake, m_rcIntake});
    return contents;
}

/// Target and average of the bars aren't painted here. The plan has a row for each day; one of another length has
/// places of its own.
melkar::Contents CSimulation::Shown() const {
    melkar::Contents contents = CBarGraph::Shown(); // NOLINT(bugprone-parent-virtual-call): no lines, no band
    if (contents.axes.empty())
        return contents;
    contents.marks.clear();
    contents.series.push_back({Utf8(m_strWeightLabel), m_crOverweight, AxisSide::Right});
    contents.series.push_back({Utf8(m_strTargetWeightLabel), m_crTargetWeight, AxisSide::Right});
    contents.axes.push_back({AxisSide::Right, Utf8(m_strWeightLabel), double(m_nWeightMin), double(m_nWeightMax),
                             double(m_nWeightInterval)});
    const int rows = m_saWeights.GetSize();
    const std::size_t first = rows == Days() ? 0 : contents.items.size();
    contents.items.resize(first + static_cast<std::size_t>(rows));
    for (int row = 0; row < rows; ++row)
        AddRowTo(contents.items[first + static_cast<std::size_t>(row)], row);
    return contents;
}

/// The square of a weight, which isn't there below the scale, and the end of the line of the plan.
void CSimulation::AddRowTo(ShownItem& item, int row) const {
    const int rows = m_saWeights.GetSize();
    const int x = melkar::WeightX(m_rcCanvas, row, rows);
    const melkar::ScalePixels scale = WeightScale();
    if (item.caption.empty())
        item.caption = Utf8(m_saWeightDates[row]);
    if (const double weight = ToDouble(m_saWeights[row]); !m_saWeights[row].IsEmpty()) {
        CRect square;
        if (weight >= m_nWeightMin)
            square = melkar::WeightSquareOf(m_rcCanvas, {x, melkar::WeightY(scale, weight)});
        item.figures.push_back({1, Utf8(m_saWeights[row]), weight, !scale.scale.Holds(weight), square, ""});
    }
    if (HasStroke(row) || HasStroke(row + 1)) {
        const double target = ToDouble(m_saTargetWeights[row]);
        const int y = melkar::TargetWeightY(scale, target);
        item.figures.push_back(
            {2, Utf8(m_saTargetWeights[row]), target, !scale.scale.Holds(target), CRect(x, y - 2, x + 1, y + 1), ""});
    }
    item.isMissing = item.figures.empty();
}
