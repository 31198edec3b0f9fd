// What the bar charts say: days with their figures, scales, target and average.

#include <MelkarCommon/bars/bar_graph.h>
#include <MelkarCommon/bars/bar_layout.h>
#include <MelkarCommon/frame/contents.h>
#include <MelkarCommon/frame/scale.h>
#include <MelkarCommon/frame/text_limits.h>
#include <MelkarCommon/support/numbers.h>

#include <algorithm>

using melkar::ScalePixels;
using melkar::ShownFigure;
using melkar::ShownItem;
using melkar::ShownSeries;

namespace {

/// The area of all figures of a day; bars without height count.
CRect Around(const std::vector<ShownFigure>& figures) {
    if (figures.empty())
        return {};
    CRect all = figures.front().area;
    for (const ShownFigure& figure : figures) {
        all.left = std::min(all.left, figure.area.left);
        all.top = std::min(all.top, figure.area.top);
        all.right = std::max(all.right, figure.area.right);
        all.bottom = std::max(all.bottom, figure.area.bottom);
    }
    return all;
}

} // namespace

melkar::Contents CBarGraph::Shown() const {
    melkar::Contents contents = CGraph::Shown();
    if (!HasDrawn())
        return contents;
    contents.unit = Utf8(Limited(m_strVAxsLabel, melkar::kLabelBytes));
    for (int day = 0; day < Days(); ++day)
        contents.items.push_back(DayShown(day));
    contents.series = SeriesShown();
    if (m_oaBarRects.GetSize() == 0) // a message stands in for all that follows
        return contents;
    contents.axes = {
        {melkar::AxisSide::Left, contents.unit, double(m_nChartMin), double(m_nChartMax), m_dChartInterval},
        {melkar::AxisSide::Bottom, Utf8(Limited(m_strHAxsLabel, melkar::kLabelBytes)), 0, 0, 0}};
    if (m_bPrintAverage)
        AddAverageTo(contents);
    if (m_bPrintTarget)
        AddTargetsTo(contents);
    return contents;
}

/// Bars that a derived class places are of one colour, whatever they are made of.
std::vector<ShownSeries> CBarGraph::SeriesShown() const {
    if (m_nSeriesCount <= 1)
        return {{Utf8(Limited(m_strVAxsLabel, melkar::kLabelBytes)), m_bPolyline ? m_crPen : m_crBar}};
    std::vector<ShownSeries> series(static_cast<std::size_t>(SeriesCount()));
    for (std::size_t one = 0; one < series.size(); ++one)
        series[one].color = m_fnDayRect ? m_crBar : m_crSeries[one];
    return series;
}

ShownItem CBarGraph::DayShown(int day) const {
    ShownItem item;
    item.caption = Utf8(Limited(m_saDates[day], melkar::kCaptionBytes));
    item.value = ReachOf(day);
    item.status = static_cast<long>(m_dwaStatus[day]);
    if (IsFigureWritten(day))
        item.text = Utf8(FigureText(day));
    for (int series = 0; series < SeriesCount(); ++series)
        if (!m_saValues[day * SeriesCount() + series].IsEmpty())
            item.figures.push_back(FigureShown(day, series));
    item.isMissing = item.figures.empty();
    if (SeriesCount() == 1 && !item.figures.empty() && !item.text.empty())
        item.figures.front().text = item.text;
    if (!item.isMissing && !m_saTargets[day].IsEmpty())
        item.reached = HasReachedTarget(day);
    item.area = Around(item.figures);
    return item;
}

/// A part of a stack leaves the scale where its upper end does.
ShownFigure CBarGraph::FigureShown(int day, int series) const {
    const int bar = day * SeriesCount() + series;
    ShownFigure figure;
    figure.series = series;
    figure.text = Utf8(m_saValues[bar]);
    figure.value = FigureOf(day, series);
    double end = figure.value;
    if (!m_fnDayRect)
        for (int below = 0; below < series; ++below)
            end += FigureOf(day, below);
    figure.isClipped = !LeftScale().scale.Holds(end);
    figure.balloon = Utf8(BalloonLines(bar));
    if (const CObEntry area = m_oaBarRects[bar])
        figure.area = *area;
    return figure;
}

/// A mark for each run of days with one target, at the height of its line.
void CBarGraph::AddTargetsTo(melkar::Contents& contents) const {
    const auto heights = TargetHeights();
    for (int day = 0; day < Days(); ++day) {
        if (!heights[day])
            continue;
        const int right = melkar::SlotLeft(m_rcCanvas, day + 1, Days());
        if (day > 0 && heights[day - 1] && m_saTargets[day - 1] == m_saTargets[day]) {
            contents.marks.back().area.right = right;
            continue;
        }
        contents.marks.push_back(
            {melkar::MarkKind::Target, Utf8(m_strTargetLabel), Utf8(m_saTargets[day]),
             melkar::ToDouble(m_saTargets[day]),
             melkar::ThickLineBox(melkar::SlotLeft(m_rcCanvas, day, Days()), right, *heights[day])});
    }
}

/// Its legend is there also where its line lies off the scale.
void CBarGraph::AddAverageTo(melkar::Contents& contents) const {
    const ScalePixels left = LeftScale();
    const double average = melkar::ToDouble(m_strAverage);
    CRect line;
    if (left.scale.Holds(average))
        line = melkar::ThickLineBox(m_rcCanvas.left, m_rcCanvas.right, melkar::AverageY(left, average));
    contents.marks.push_back({melkar::MarkKind::Average, Utf8(m_strAverageLabel), Utf8(m_strAverage), average, line});
}
