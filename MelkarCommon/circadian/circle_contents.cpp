// What the circle says: minutes and share of each class.

#include <MelkarCommon/circadian/circle_graph.h>

#include <MelkarCommon/circadian/circle_layout.h>
#include <MelkarCommon/frame/contents.h>

using melkar::CircleSlice;
using melkar::ShownItem;

melkar::Contents CCircleGraph::Shown() const {
    melkar::Contents contents = CGraph::Shown();
    if (!HasDrawn())
        return contents;
    const melkar::ClassFigures classes = MinutesOfClasses();
    melkar::CircleSlices slices{};
    if (IsPieShown(classes))
        slices = melkar::SlicesOf(m_rcCircle, classes);
    const auto areaOf = [this](const CircleSlice& slice) {
        return slice.IsShown() ? slice.BoxIn(m_rcCircle) : CRect();
    };
    AddClassTo(contents, m_strLightLabel, m_crLight, m_dLightMinutes, m_dLightRate, areaOf(slices.light));
    AddClassTo(contents, m_strModerateLabel, m_crModerate, m_dModerateMinutes, m_dModerateRate,
               areaOf(slices.moderate));
    AddClassTo(contents, m_strVigorousLabel, m_crVigorous, m_dVigorousMinutes, m_dVigorousRate,
               areaOf(slices.vigorous));
    return contents;
}

/// The legend writes the minutes, and the share, which is what the slice is drawn by.
void CCircleGraph::AddClassTo(melkar::Contents& contents, const CString& label, COLORREF color, double minutes,
                              double share, const CRect& area) const {
    ShownItem item;
    item.caption = Utf8(label);
    item.value = minutes;
    if (IsLegendShown())
        item.text = Utf8(MinutesText(minutes));
    item.figures.push_back({static_cast<int>(contents.series.size()), Utf8(ShareText(share)), share, false, area, ""});
    item.area = area;
    contents.series.push_back({Utf8(label), color});
    contents.items.push_back(std::move(item));
}
