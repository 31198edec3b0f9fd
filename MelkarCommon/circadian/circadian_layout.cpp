#include <MelkarCommon/circadian/circadian_layout.h>

#include <MelkarCommon/support/numbers.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>

namespace melkar {

namespace {

/// position x part / whole; nothing for an empty whole.
int Share(int extent, int part, int whole) { return whole == 0 ? 0 : NearestInt(std::int64_t{extent} * part / whole); }

int HalfLevel(const CRect& panel) { return panel.Height() / (2 * kPanelLevels); }

double HeightOf(const CRect& panel, double level) { return panel.Height() * level * 0.1; }

} // namespace

CRect LeftPanelOf(const CRect& graph, int classLine, int dateLine, int axisLine, int lang) {
    const int width = graph.Width();
    const int right =
        lang == kLangLeftOnly ? SubtractEdge(graph.right, width / 50) : AddEdge(graph.left, Share(width, 5, 6));
    return {graph.left + 2 * classLine + kStripGap, graph.top + Truncate(1.2 * dateLine), right,
            graph.bottom - Truncate(2.5 * axisLine)};
}

CRect RightPanelOf(const CRect& graph, const CRect& left, int figureWidth) {
    return {left.right + figureWidth, left.top, graph.right - 4 * figureWidth / 3, left.bottom};
}

int LevelHeight(const CRect& panel, int level) { return Share(panel.Height(), level, kPanelLevels); }

BorderLines BorderLinesOf(const CRect& panel, ClassBounds bounds) {
    return {Truncate(panel.bottom - HeightOf(panel, bounds.from) + HalfLevel(panel)),
            Truncate(panel.bottom - HeightOf(panel, bounds.to) - HalfLevel(panel))};
}

ClassBands ClassBandsOf(const CRect& graph, const CRect& panel, ClassBounds bounds, int lang) {
    // The borders are the same in both forms; only the truncation falls elsewhere.
    const bool whole = lang == kLangExercise;
    const int half = HalfLevel(panel);
    const int upper = whole ? SubtractEdge(panel.bottom, Truncate(HeightOf(panel, bounds.to + 0.5)))
                            : SubtractEdge(SubtractEdge(panel.bottom, Truncate(HeightOf(panel, bounds.to))), half);
    const int lower = whole ? SubtractEdge(panel.bottom, Truncate(HeightOf(panel, bounds.from - 0.5)))
                            : AddEdge(SubtractEdge(panel.bottom, Truncate(HeightOf(panel, bounds.from))), half);
    const int right = panel.left - kStripGap;
    return {{graph.left, panel.top + half, right, upper},
            {graph.left, upper, right, lower},
            {graph.left, lower, right, panel.bottom - half}};
}

CPoint ClassLabelStart(const CRect& band, int labelWidth) {
    return {band.left + (band.right - band.left) / 4, AddEdge(AddEdge(band.top, band.bottom) / 2, labelWidth / 2)};
}

ProfilePoints ProfileOf(const CRect& panel, const double* intensity) {
    ProfilePoints points;
    points.front() = {panel.left, panel.bottom};
    points.back() = {panel.right, panel.bottom};
    const int width = panel.Width();
    for (int i = 0; i < kDayValues; ++i)
        points[static_cast<std::size_t>(i) + 1] = {AddEdge(panel.left, Share(width, i, kDayValues)),
                                                   SubtractEdge(panel.bottom, Truncate(HeightOf(panel, intensity[i])))};
    return points;
}

CRect HourBox(const CRect& panel, int hour) {
    const int x = AddEdge(panel.left, Share(panel.Width(), hour, kDayHours));
    return {x, panel.bottom, x, panel.bottom + 16};
}

CRect HourFigureOf(const CRect& measured) {
    CRect figure = measured;
    figure.OffsetRect(-(measured.Width() / 2), measured.Height() / 2);
    return figure;
}

Tick HourTickOf(const CRect& panel, const CRect& figure) {
    const int reach = figure.Height() / 5;
    return {(figure.left + figure.right) / 2, panel.bottom - reach, panel.bottom + reach};
}

std::optional<int> EventMinute(const char* event) {
    if (!event || !*event || std::strcmp(event, "0") == 0)
        return std::nullopt;
    const int value = ToInt(event);
    const int hours = value / 100;
    return hours * 60 + (value - hours * 100);
}

std::string EventTime(const char* event) {
    const int minute = EventMinute(event).value_or(-1);
    if (minute < 0 || minute > kDayMinutes)
        return event != nullptr ? event : "";
    const auto digit = [](int number) { return static_cast<char>('0' + number % 10); };
    return {digit(minute / 600), digit(minute / 60), ':', digit(minute % 60 / 10), digit(minute % 60)};
}

CRect EventBoxOf(const CRect& graph, const CRect& panel, int minute, int size) {
    const int left = SubtractEdge(AddEdge(panel.left, Share(panel.Width(), minute, kDayMinutes)), size / 2);
    CRect box(left, panel.bottom + size, AddEdge(left, size), panel.bottom + 2 * size);
    if (box.bottom > graph.bottom)
        box.OffsetRect(0, graph.bottom - box.bottom);
    return box;
}

CRect LevelFigureOf(const CRect& panel, int level, int width, int height) {
    const int top = panel.bottom - height / 2 - LevelHeight(panel, level);
    return {panel.left - width - kFigureGap, top, panel.left - kFigureGap, top + height};
}

int MinuteX(const CRect& panel, int minutes, int max) {
    return AddEdge(panel.left, Share(panel.Width(), minutes, max));
}

std::vector<int> MinuteLines(const CRect& panel, int step, int max) {
    const int most = std::max(1, std::abs(panel.Width()));
    std::vector<int> lines;
    if (step > 0)
        for (std::int64_t minutes = step; minutes < max && std::ssize(lines) < most; minutes += step)
            lines.push_back(static_cast<int>(minutes));
    return lines;
}

CRect MinuteFigureOf(const CRect& panel, int x, const CRect& measured) {
    CRect figure = measured;
    figure.OffsetRect(x - measured.Width() / 2, panel.bottom + measured.Height() / 5);
    return figure;
}

CRect LevelBarOf(const CRect& panel, int level, double minutes) {
    const int lowerHalf = 2 * level - 1; // in halves of a level
    const int height = panel.Height();
    const int right =
        minutes >= kFullBar ? panel.right : AddEdge(panel.left, Truncate(minutes * panel.Width() * 0.025));
    return {panel.left, panel.bottom - Share(height, lowerHalf + 2, 2 * kPanelLevels) + 1, right,
            panel.bottom - Share(height, lowerHalf, 2 * kPanelLevels) - 1};
}

CString MinutesText(double minutes) { return FormatFixed(minutes, 1); }

CRect BarFigureBox(const CRect& panel, const CRect& bar) {
    return {AddEdge(bar.right, kFigureGap), bar.top + (bar.bottom - bar.top) / 2, panel.right, bar.bottom};
}

BarFigure BarFigureOf(const CRect& panel, const CRect& bar, CRect measured) {
    measured.OffsetRect(0, -(measured.Height() / 2));
    const bool inside = measured.right > panel.right;
    if (inside) {
        measured.left = panel.left;
        measured.right = bar.right;
    }
    return {measured, inside};
}

CRect SummaryBox(const CRect& panel) {
    CRect box = panel;
    box.OffsetRect(HalfLevel(panel), HalfLevel(panel));
    return box;
}

} // namespace melkar
