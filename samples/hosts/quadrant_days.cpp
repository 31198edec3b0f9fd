#include "quadrant_days.h"

#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
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
        const melkar::ScopedTextColor color(m_hMemDC, kDayColor);
        for (const Day& day : m_days)
            DrawDay(day, m_strPoint);
    }
    const melkar::ScopedTextColor color(m_hMemDC, m_crAverage);
    if (!m_strAverage1.IsEmpty())
        DrawDay({melkar::ToDouble(m_strAverage1), melkar::ToDouble(m_strAverage2)}, m_strAveragePoint);
    return 0;
}

// `m_rcCanvas` is the square by now. `DrawPoint` leaves out what lies outside of it.
long CQuadrantDays::DrawDay(const Day& day, const CString& mark) {
    const double x = m_rcCanvas.left + day.steps / m_nHMax * m_rcCanvas.Width();
    const double y = m_rcCanvas.bottom - day.minutes / m_nVMax * m_rcCanvas.Height();
    return DrawPoint(melkar::Truncate(x), melkar::Truncate(y), mark);
}
