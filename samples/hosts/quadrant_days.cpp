#include "quadrant_days.h"

#include <MelkarCommon/frame/contents.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/registry/catalogue.h>
#include <MelkarCommon/support/numbers.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr int kFiguresOnScale = 6;
constexpr double kLargestFigure = 1e8; // whatever a data file says, the scale stays readable
constexpr COLORREF kDayColor = RGB(60, 76, 96);

// 1, 2 or 5 times a power of ten, at least `least`: figures that read well.
int RoundStep(double least) {
    const double decade = std::pow(10.0, std::floor(std::log10(std::max(least, 1.0))));
    for (const double digit : {1.0, 2.0, 5.0})
        if (digit * decade >= least)
            return static_cast<int>(digit * decade);
    return static_cast<int>(10 * decade);
}

} // namespace

// From 0 to the first figure at or above all days and well above the target, so that both halves can be seen.
CQuadrantDays::Axis CQuadrantDays::ChooseAxis(double target, double largest) {
    const double middle = std::clamp(target, 0.0, kLargestFigure);
    const double reach = std::clamp(std::max(largest, 1.5 * middle), 1.0, kLargestFigure);
    const int step = RoundStep(reach / kFiguresOnScale);
    const int max = static_cast<int>(std::ceil(reach / step)) * step;
    return {middle > 0 ? static_cast<int>(middle) : max / 2, max, step};
}

long CQuadrantDays::GetGraphMeasure() {
    m_days.clear();
    Day largest{0, 0};
    for (int i = 0; i < m_saDayField5.GetSize(); ++i) {
        if (m_dwaStatus[i] != 0) // excluded, no data, no records: nothing to plot
            continue;
        const Day day{melkar::ToDouble(m_saDayField5[i]), melkar::ToDouble(m_saDayLevelSum[i])};
        m_days.push_back(day);
        largest = {std::max(largest.steps, day.steps), std::max(largest.minutes, day.minutes)};
    }

    const Axis steps = ChooseAxis(melkar::ToDouble(m_strTarget1), largest.steps);
    m_nHMin = 0;
    m_nHMid = steps.middle;
    m_nHMax = steps.max;
    m_nHStep = steps.step;

    const Axis minutes = ChooseAxis(melkar::ToDouble(m_strTarget2), largest.minutes);
    m_nVMin = 0;
    m_nVMid = minutes.middle;
    m_nVMax = minutes.max;
    m_nVStep = minutes.step;

    CountQuadrants();
    return 0;
}

// A day on a dividing line has reached that target. The counts were set to 0 when the file was read, but a file that
// couldn't be read keeps its former days, so they are counted from 0 here.
void CQuadrantDays::CountQuadrants() {
    m_nLeftUpperCount = m_nLeftLowerCount = m_nRightUpperCount = m_nRightLowerCount = 0;
    for (const Day& day : m_days) {
        const bool right = day.steps >= m_nHMid;
        const bool upper = day.minutes >= m_nVMid;
        int& count =
            right ? (upper ? m_nRightUpperCount : m_nRightLowerCount) : (upper ? m_nLeftUpperCount : m_nLeftLowerCount);
        ++count;
    }
}

long CQuadrantDays::DrawTargetAverage() {
    const melkar::ScopedBkMode transparent(m_hMemDC, TRANSPARENT);
    const melkar::ScopedFont font(m_hMemDC, ChartFont(m_nPointSize));
    {
        const melkar::ScopedTextColor color(m_hMemDC, TextColorOr(kDayColor));
        for (const Day& day : m_days)
            DrawDay(day, m_strPoint);
    }
    const melkar::ScopedTextColor color(m_hMemDC, m_crAverage);
    if (!m_strAverage1.IsEmpty())
        DrawDay({melkar::ToDouble(m_strAverage1), melkar::ToDouble(m_strAverage2)}, m_strAveragePoint);
    return 0;
}

// `m_rcCanvas` is the square by now.
CPoint CQuadrantDays::PlaceOf(const Day& day) const {
    const double x = m_rcCanvas.left + day.steps / m_nHMax * m_rcCanvas.Width();
    const double y = m_rcCanvas.bottom - day.minutes / m_nVMax * m_rcCanvas.Height();
    return {melkar::Truncate(x), melkar::Truncate(y)};
}

// `DrawPoint` leaves out what lies outside of the square.
long CQuadrantDays::DrawDay(const Day& day, const CString& mark) {
    const CPoint place = PlaceOf(day);
    return DrawPoint(place.x, place.y, mark);
}

// Where no axis is painted, a message stands in for the days.
melkar::Contents CQuadrantDays::Shown() const {
    melkar::Contents contents = CSquareGraph::Shown();
    if (contents.axes.empty())
        return contents;
    const int firstSeries = static_cast<int>(contents.series.size());
    contents.series.push_back({contents.axes[1].label, kDayColor, melkar::AxisSide::Bottom});
    contents.series.push_back({contents.axes[0].label, kDayColor, melkar::AxisSide::Left});
    for (int day = 0; day < m_saDayField5.GetSize(); ++day)
        contents.items.push_back(DayShown(day, firstSeries));
    AddMarksTo(contents);
    return contents;
}

// A square about as large as the mark, whose exact size only the surface knows that it was painted on.
CRect CQuadrantDays::MarkAt(const Day& day) const {
    const CPoint place = PlaceOf(day);
    const int half = std::max(m_nPointSize / 2, 1);
    return {place.x - half, place.y - half, place.x + half, place.y + half};
}

// The picture names no day: its place among them stands for it. Days that aren't plotted are there without figures.
melkar::ShownItem CQuadrantDays::DayShown(int day, int firstSeries) const {
    melkar::ShownItem item;
    item.caption = std::to_string(day + 1);
    item.status = static_cast<long>(m_dwaStatus[day]);
    item.isMissing = item.status != 0;
    if (item.isMissing)
        return item;
    const Day one{melkar::ToDouble(m_saDayField5[day]), melkar::ToDouble(m_saDayLevelSum[day])};
    item.area = MarkAt(one);
    item.figures = {{firstSeries, Utf8(m_saDayField5[day]), one.steps, false, item.area, ""},
                    {firstSeries + 1, Utf8(m_saDayLevelSum[day]), one.minutes, false, item.area, ""}};
    return item;
}

// The dividing lines are the targets; without one they stand in the middle and say nothing. The average has a mark for
// both of its figures.
void CQuadrantDays::AddMarksTo(melkar::Contents& contents) const {
    const std::string& steps = contents.axes[1].label;
    const std::string& minutes = contents.axes[0].label;
    const auto add = [&](melkar::MarkKind kind, const std::string& label, const CString& figure, const CRect& area) {
        if (melkar::ToDouble(figure) > 0)
            contents.marks.push_back({kind, label, Utf8(figure), melkar::ToDouble(figure), area});
    };
    const CPoint cross(m_rcRightUpper.left, m_rcRightUpper.bottom);
    add(melkar::MarkKind::Target, steps, m_strTarget1, CRect(cross.x, m_rcCanvas.top, cross.x + 1, m_rcCanvas.bottom));
    add(melkar::MarkKind::Target, minutes, m_strTarget2,
        CRect(m_rcCanvas.left, cross.y, m_rcCanvas.right, cross.y + 1));
    const CRect average = MarkAt({melkar::ToDouble(m_strAverage1), melkar::ToDouble(m_strAverage2)});
    add(melkar::MarkKind::Average, steps, m_strAverage1, average);
    add(melkar::MarkKind::Average, minutes, m_strAverage2, average);
}

bool CQuadrantDays::Register() {
    melkar::KindRow row{"", "CQuadrantDays", "CSquareGraph", "days in four quadrants"};
    row.shown = melkar::ContentsOf<CQuadrantDays>;
    return melkar::FindClass(row.className) || melkar::Register(row);
}
