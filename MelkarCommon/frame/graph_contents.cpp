// What every picture says: its title, and messages across it.

#include <MelkarCommon/frame/contents.h>
#include <MelkarCommon/frame/graph.h>
#include <MelkarCommon/frame/text_limits.h>
#include <MelkarCommon/support/utf8.h>

melkar::Contents CGraph::Shown() const {
    melkar::Contents contents;
    if (!HasDrawn())
        return contents;
    contents.area = m_rcGraph;
    if (IsTitleShown())
        contents.title = Utf8(Limited(m_Title.m_strText, melkar::kLabelBytes));
    if (m_bNoRecords)
        contents.messages.push_back(ShownMessage(m_strNoRecordsMessage));
    if (m_bNoData)
        contents.messages.push_back(ShownMessage(m_strNoDataMessage));
    if (IsExcludedShown())
        contents.messages.push_back(ShownMessage(m_strExcludeMessage));
    return contents;
}

std::string CGraph::Utf8(const CString& text) const { return melkar::Utf8Of(text, m_nCharset); }

std::string CGraph::ShownMessage(const CString& message) const { return Utf8(Limited(message, melkar::kMessageBytes)); }
