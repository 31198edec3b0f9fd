// What the sheet of a day says: minutes at the levels, events, class borders, and the day in words.

#include <MelkarCommon/circadian/circadian_graph.h>

#include <MelkarCommon/circadian/circadian_layout.h>
#include <MelkarCommon/frame/contents.h>
#include <MelkarCommon/frame/day_status.h>
#include <MelkarCommon/frame/text_limits.h>

using melkar::AxisSide;
using melkar::MarkKind;
using melkar::ShownItem;
using melkar::ShownMark;
using melkar::ShownSeries;

namespace {

/// The remark stands on the last line; units may break lines, too.
std::vector<std::string> TextsOf(const std::string& summary, bool hasRemark) {
    const std::size_t end = hasRemark ? summary.rfind('\n') : std::string::npos;
    if (end == std::string::npos)
        return {summary};
    return {summary.substr(0, end), summary.substr(end + 1)};
}

} // namespace

/// The frame judges days, of which a sheet has none: its messages are those of the day's own status.
melkar::Contents CCircadianGraph::Shown() const {
    melkar::Contents contents = CGraph::Shown();
    if (!HasDrawn())
        return contents;
    contents.messages.clear();
    const melkar::DayStatus status = melkar::ToDayStatus(m_nDayStatus);
    if (melkar::HasNoRecords(status)) { // stands in for all that follows
        contents.messages.push_back(ShownMessage(m_strNoRecordsMessage));
        return contents;
    }
    if (melkar::HasNoData(status))
        contents.messages.push_back(ShownMessage(m_strNoDataMessage));
    if (melkar::IsExcluded(status))
        contents.messages.push_back(ShownMessage(m_strExcludeMessage));
    contents.title = Utf8(DateCaption()); // a sheet paints no other
    contents.texts = TextsOf(Utf8(SummaryText()), m_bToroken != 0);
    contents.series = {ClassShown(m_strLightLabel, m_crLight), ClassShown(m_strModerateLabel, m_crModerate),
                       ClassShown(m_strVigorousLabel, m_crVigorous)};
    if (m_nLang != melkar::kLangLeftOnly)
        AddLevelsTo(contents);
    contents.axes.push_back({AxisSide::Bottom, "", 0, melkar::kDayHours, 1});
    AddBordersTo(contents);
    AddEventsTo(contents);
    return contents;
}

/// A class of intensity by its label and colour in the strip, which are those of its bars.
ShownSeries CCircadianGraph::ClassShown(const CString& label, COLORREF color) const {
    return {Utf8(Limited(label, melkar::kClassLabelBytes)), color, AxisSide::Bottom};
}

void CCircadianGraph::AddLevelsTo(melkar::Contents& contents) const {
    contents.unit = Utf8(Limited(m_strMinLabel, melkar::kLabelBytes));
    contents.axes = {{AxisSide::Left, Utf8(Limited(m_strIntensityLabel, melkar::kLabelBytes)), 1, melkar::kLevels, 1},
                     {AxisSide::Bottom, contents.unit, 0, double(m_nRightMax), double(m_nRightStep)}};
    for (int level = 1; level <= melkar::kLevels; ++level)
        contents.items.push_back(LevelShown(level));
}

/// The item is a row across the panel, since a short bar has its figure behind it.
ShownItem CCircadianGraph::LevelShown(int level) const {
    ShownItem item;
    item.caption = std::to_string(level);
    item.isMissing = level > m_saLevelMinutes.GetSize();
    if (item.isMissing)
        return item;
    item.value = MinutesAt(level);
    item.text = Utf8(melkar::MinutesText(item.value));
    const CRect bar = melkar::LevelBarOf(m_rcRight, level, item.value);
    const auto series = static_cast<int>(melkar::ClassOf(level, {m_dModerateFrom, m_dModerateTo}));
    item.figures.push_back({series, item.text, item.value, item.value > melkar::kFullBar, bar, ""});
    item.area = CRect(m_rcRight.left, bar.top, m_rcRight.right, bar.bottom);
    return item;
}

/// Lines across the panel; where there is one for each level, the borders show in the class strip alone.
void CCircadianGraph::AddBordersTo(melkar::Contents& contents) const {
    const melkar::ClassBounds bounds{m_dModerateFrom, m_dModerateTo};
    melkar::BorderLines lines = melkar::BorderLinesOf(m_rcLeft, bounds);
    if (m_nLang == melkar::kLangExercise) {
        const melkar::ClassBands bands = melkar::ClassBandsOf(m_rcGraph, m_rcLeft, bounds, m_nLang);
        lines = {bands.moderate.bottom, bands.moderate.top};
    }
    contents.marks = {BorderShown(contents.series[1].name, bounds.from, lines.lower),
                      BorderShown(contents.series[2].name, bounds.to, lines.upper)};
}

/// A border has the label of the class above it.
ShownMark CCircadianGraph::BorderShown(const std::string& label, double level, int y) const {
    const bool isInStrip = m_nLang == melkar::kLangExercise;
    const int left = isInStrip ? m_rcGraph.left : m_rcLeft.left;
    const int right = isInStrip ? m_rcLeft.left - melkar::kStripGap : m_rcLeft.right;
    return {MarkKind::Border, label, "", level, CRect(left, y, right, melkar::AddEdge(y, 1))};
}

/// At the minute of the day.
void CCircadianGraph::AddEventsTo(melkar::Contents& contents) const {
    for (int event = 0; event < EventCount(); ++event)
        if (const auto box = EventBox(event))
            contents.marks.push_back({MarkKind::Event, "", Utf8(melkar::EventTime(m_saEvents[event]).c_str()),
                                      double(*melkar::EventMinute(m_saEvents[event])), *box});
}
