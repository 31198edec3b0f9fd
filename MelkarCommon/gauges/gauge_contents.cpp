// What the gauges say: one figure and its class.

#include <MelkarCommon/gauges/bmi_graph_eng.h>
#include <MelkarCommon/gauges/gauge_layout.h>
#include <MelkarCommon/gauges/himand_graph.h>

#include <MelkarCommon/frame/contents.h>

melkar::Contents CBMIGraph_Base::Shown() const {
    melkar::Contents contents = CGraph::Shown();
    contents.messages.clear();
    return contents;
}

CString CBMIGraph_Base::CaptionOf(const CStringArray& captions, int cls) {
    if (cls < 0 || cls >= captions.GetSize())
        return {};
    CString caption = captions[cls];
    caption.Replace(" __n__ ", "\n");
    return caption;
}

/// A bar gauge writes no caption, but its colour says the class.
void CBMIGraph_Base::AddFigureTo(melkar::Contents& contents, const CString& text, const CRect& area,
                                 const CRect& band) const {
    melkar::ShownItem item;
    item.caption = Utf8(CaptionOf(m_saClassCaption, ShownClass()));
    item.isMissing = m_strValue.IsEmpty();
    item.area = band;
    contents.series = {{"", ClassColor(ShownClass()), melkar::AxisSide::Bottom}};
    if (!item.isMissing) {
        item.text = Utf8(text);
        item.value = m_dValue;
        item.figures = {{0, item.text, m_dValue, !(m_dValue >= m_nMin && m_dValue <= m_nMax), area, ""}};
    }
    contents.items = {item};
}

melkar::Contents CBMIGraph_Eng::Shown() const {
    melkar::Contents contents = CBMIGraph_Base::Shown();
    if (!HasDrawn())
        return contents;
    const CRect band = melkar::BarBand(m_rcCanvas);
    AddFigureTo(contents, m_strValue, IsBelowScale() ? CRect() : BarIn(band), band);
    return contents;
}

/// Borders stand between the strips.
melkar::Contents CHimandGraph::Shown() const {
    melkar::Contents contents = CBMIGraph_Base::Shown();
    if (!HasDrawn())
        return contents;
    const CRect band = melkar::DiscBand(m_rcGraph, m_rcCanvas);
    AddFigureTo(contents, FigureText(), IsBelowScale() || IsAboveScale() ? CRect() : DiscIn(band), band);
    for (int cls = 0; cls < kClasses; ++cls) {
        const CRect first = FirstStripOf(cls, m_rcCanvas.top);
        const CRect second = melkar::SecondStrip(m_rcGraph, first);
        const CString caption = CaptionOf(m_saClassCaption, cls);
        contents.texts.push_back(Utf8(caption));
        contents.texts.push_back(Utf8(CaptionOf(m_saClassCaption2, cls)));
        if (cls > 0)
            contents.marks.push_back({melkar::MarkKind::Border, Utf8(caption), "", m_dClassMax[cls - 1],
                                      CRect(first.left, first.top, melkar::AddEdge(first.left, 1), second.bottom)});
    }
    return contents;
}
