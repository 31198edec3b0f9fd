// What the quadrants say: the share of each. Days are told by the class that plots them.

#include <MelkarCommon/quadrant/square_graph.h>

#include <MelkarCommon/frame/contents.h>

using melkar::AxisSide;

/// In the order of the legend.
melkar::Contents CSquareGraph::Shown() const {
    melkar::Contents contents = CGraph::Shown();
    if (!HasDrawn() || m_bNoRecords) // the message stands in for all that follows
        return contents;
    contents.axes = {{AxisSide::Left, Utf8(m_strVAxsLabel), double(m_nVMin), double(m_nVMax), double(m_nVStep)},
                     {AxisSide::Bottom, Utf8(m_strHAxsLabel), double(m_nHMin), double(m_nHMax), double(m_nHStep)}};
    const auto& [leftUpper, leftLower, rightUpper, rightLower] = Shares();
    AddQuadrantTo(contents, m_strRightUpperLabel, m_crRightUpper, m_nRightUpperCount, rightUpper, m_rcRightUpper);
    AddQuadrantTo(contents, m_strLeftUpperLabel, m_crLeftUpper, m_nLeftUpperCount, leftUpper, m_rcLeftUpper);
    AddQuadrantTo(contents, m_strRightLowerLabel, m_crRightLower, m_nRightLowerCount, rightLower, m_rcRightLower);
    AddQuadrantTo(contents, m_strLeftLowerLabel, m_crLeftLower, m_nLeftLowerCount, leftLower, m_rcLeftLower);
    return contents;
}

/// Where nothing was counted there are no shares.
void CSquareGraph::AddQuadrantTo(melkar::Contents& contents, const CString& label, COLORREF color, int count,
                                 const CString& share, const CRect& area) const {
    melkar::ShownItem item;
    item.caption = Utf8(label);
    item.value = count;
    item.area = area;
    item.isMissing = share.IsEmpty();
    if (m_bRatioBox == 1)
        item.text = Utf8(share);
    if (!item.isMissing)
        item.figures = {{static_cast<int>(contents.series.size()), Utf8(share), item.value, false, area, ""}};
    contents.series.push_back({item.caption, color});
    contents.items.push_back(std::move(item));
}
