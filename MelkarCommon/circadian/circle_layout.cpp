#include <MelkarCommon/circadian/circle_layout.h>

#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/slice_box.h>
#include <MelkarCommon/support/support.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace melkar {

namespace {

constexpr double kFullCircle = 6.283184; ///< radians, cut after the sixth decimal: marks stay where they always were

double SumOf(const CStringArray& levels, int first, int end) {
    double sum = 0;
    for (int i = first; i < end; ++i)
        if (const double value = ToDouble(levels[i]); std::isfinite(value))
            sum += value;
    return sum;
}

double OneDecimal(double value) { return ToDouble(FormatFixed(value, 1)); }

CPoint PointAt(const CRect& circle, double angle) {
    const int size = circle.Height();
    return {(circle.left + circle.right) / 2 - Truncate(size * std::sin(angle)) / 2,
            (circle.top + circle.bottom) / 2 - Truncate(size * std::cos(angle)) / 2};
}

/// Top and bottom of a row, in lines above the legend's bottom.
struct RowSpan {
    double top;
    double bottom;
};
constexpr RowSpan kLightSpan = {1.2, 0.2};
constexpr RowSpan kModerateSpan = {2.3, 1.2};
constexpr RowSpan kVigorousSpan = {3.3, 2.2};

constexpr double kSquareLeft = 0.5;  ///< lines from the legend's left
constexpr double kSquareRight = 1.5; ///< likewise
constexpr double kPercentGap = 0.5;  ///< rows' heights between label and per cent
constexpr double kMinutesGap = 0.9;  ///< likewise between per cent and minutes

/// Left and right of the columns.
struct Columns {
    int square;
    int label;
    int labelRight;
    int percent;
    int percentRight;
    int minutes;
    int minutesRight;
};

Columns ColumnsOf(const CRect& legend, const LegendSizes& sizes, int rowHeight) {
    Columns at{};
    at.square = Truncate(legend.left + kSquareLeft * sizes.line);
    at.label = Truncate(legend.left + kSquareRight * sizes.line);
    at.labelRight = at.label + sizes.label;
    at.percent = Truncate(at.labelRight + kPercentGap * rowHeight);
    at.percentRight = Truncate(at.labelRight + sizes.percent + kPercentGap * rowHeight);
    at.minutes = Truncate(kMinutesGap * rowHeight + at.percentRight);
    at.minutesRight = Truncate(kMinutesGap * rowHeight + at.percentRight + sizes.minutes);
    return at;
}

/// The square reaches to the label, which keeps its distance by a blank of its own.
CircleLegendRow RowOf(const Columns& at, int top, int bottom, int shift) {
    const LegendSpacing spacing{0, double(at.label - at.square)};
    CircleLegendRow row{LegendEntryFrom(at.square, top, {at.label, top, at.labelRight, bottom}, spacing),
                        {at.percent, top, at.percentRight, bottom},
                        {at.minutes, top, at.minutesRight, bottom}};
    for (CRect* box : {&row.entry.sample, &row.entry.text, &row.percent, &row.minutes})
        box->OffsetRect(shift, 0);
    return row;
}

} // namespace

ClassFigures MinutesOf(const CStringArray& levels, int from, int to) {
    const int count = levels.GetSize();
    const int lightEnd = std::clamp(from, 1, count + 1) - 1;
    const int moderateEnd = std::clamp(to, lightEnd, count);
    return {SumOf(levels, 0, lightEnd), SumOf(levels, lightEnd, moderateEnd), SumOf(levels, moderateEnd, count)};
}

ClassFigures SharesOf(const ClassFigures& minutes) {
    const double total = minutes.Sum();
    if (total == 0)
        return {};
    const double vigorous = minutes.vigorous * 100 / total;
    const double moderate = minutes.moderate * 100 / total;
    return {std::max(100 - vigorous - moderate, 0.0), moderate, vigorous};
}

ClassFigures RoundedShares(const ClassFigures& shares) {
    ClassFigures rounded{OneDecimal(shares.light), OneDecimal(shares.moderate), OneDecimal(shares.vigorous)};
    auto& [light, moderate, vigorous] = rounded;
    if (light + moderate + vigorous == 0)
        return rounded;
    if (light >= moderate && vigorous <= light)
        light = 100 - moderate - vigorous;
    if (moderate >= light && vigorous <= moderate)
        moderate = 100 - light - vigorous;
    if (vigorous >= moderate && vigorous >= light)
        vigorous = 100 - moderate - light;
    return rounded;
}

CircleAreas LegendBelow(const CRect& graph) {
    const int size = std::min(3 * graph.Width() / 5 - 2, 3 * graph.Height() / 5);
    const int left = graph.left + (graph.Width() - size) / 2;
    const int top = graph.top + (graph.Height() - size) / 4;
    return {{left, top, left + size, top + size}, {graph.left, top + size, graph.right, graph.bottom}};
}

CircleAreas LegendBeside(const CRect& graph) {
    const int size = std::min(Truncate(graph.Height() * 0.8), graph.Width());
    const int left = graph.left + 3 * (graph.Height() - size);
    const int top = graph.bottom - size;
    return {{left, top, left + size, top + size}, {left + size, graph.top, graph.right, graph.bottom}};
}

CircleMarks MarksOf(const CRect& circle, const ClassFigures& minutes) {
    const double total = minutes.Sum();
    return {PointAt(circle, 0), PointAt(circle, minutes.vigorous * kFullCircle / total),
            PointAt(circle, (minutes.vigorous + minutes.moderate) * kFullCircle / total)};
}

CircleSlices SlicesOf(const CRect& circle, const ClassFigures& minutes) {
    const CircleMarks marks = MarksOf(circle, minutes);
    const double total = minutes.Sum();
    const double moderate = minutes.moderate * 100 / total;
    const double vigorous = minutes.vigorous * 100 / total;
    const auto rounded = [](double share) { return ToDouble(getDecimalNumber(FormatFixed(share, kShareDecimals), 1)); };
    return {{marks.moderateEnd, marks.top, 100 - rounded(moderate) - rounded(vigorous)},
            {marks.vigorousEnd, marks.moderateEnd, moderate},
            {marks.top, marks.vigorousEnd, vigorous}};
}

bool CircleSlice::IsShown() const { return ShowsSlice(from, to, share); }
CRect CircleSlice::BoxIn(const CRect& circle) const { return SliceBox(circle, from, to); }

bool ShowsSlice(CPoint from, CPoint to, double share) {
    return std::abs(from.x - to.x) + std::abs(from.y - to.y) > 1 || share >= 1.0;
}

CircleLegend LegendOf(const CRect& legend, const LegendSizes& sizes, bool isCentred) {
    const int line = std::max(sizes.line, 1);
    const int below = (legend.Height() / line - 3) / 2; // lines that stay free under the three rows
    const auto y = [&](double lines) { return legend.bottom - Truncate((below + lines) * line); };
    const int rowHeight = y(kLightSpan.bottom) - y(kLightSpan.top);
    const Columns at = ColumnsOf(legend, sizes, rowHeight);
    const int shift = isCentred ? Truncate(0.5 * (legend.right - at.minutesRight)) : 0;
    const auto row = [&](RowSpan span) { return RowOf(at, y(span.top), y(span.bottom), shift); };
    return {row(kLightSpan), row(kModerateSpan), row(kVigorousSpan)};
}

} // namespace melkar
