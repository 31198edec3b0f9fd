// What panels say: title, axes, the rows of the note box; and the text on one.

#include <MelkarCommon/declarative/fixed_text.h>
#include <MelkarCommon/declarative/panel_layout.h>
#include <MelkarCommon/frame/contents.h>
#include <MelkarCommon/support/box_layout.h>
#include <MelkarCommon/support/numbers.h>

#include <algorithm>

using melkar::AxisSide;
using melkar::ShownAxis;
using melkar::ShownSeries;

namespace {

/// An end of an axis as the profile says it: a float such as 0.1 is another number in double.
double EndOf(float value) { return melkar::ToDouble(melkar::FormatShortest(value)); }

ShownAxis AxisOf(AxisSide side, float from, float to, int divisions) {
    ShownAxis axis{side, "", EndOf(from), EndOf(to), 0};
    axis.step = (axis.to - axis.from) / melkar::DivisionsOf(0, divisions).count;
    return axis;
}

} // namespace

/// The title is the panel's own; it has no days, and so no messages.
melkar::Contents CGraphBase::Shown() const {
    melkar::Contents contents = CGraph::Shown();
    if (!HasDrawn())
        return contents;
    contents.title = HasTitleIn(GetTitleRect(m_rcGraph)) ? Utf8(m_strTitleLabel) : "";
    if (melkar::HasRoom(GetGraphRect(m_rcGraph)))
        AddAxesTo(contents);
    if (melkar::HasRoom(GetNoteRect(m_rcGraph)))
        for (const note_label& note : m_vecNoteLabels)
            contents.series.push_back({Utf8(note.text), note.mark_color});
    return contents;
}

/// Those that have figures or a caption.
void CGraphBase::AddAxesTo(melkar::Contents& contents) const {
    const auto add = [&](ShownAxis axis, int figures, const CString& caption, int captionRoom) {
        if (captionRoom != 0)
            axis.label = Utf8(caption);
        if (figures != 0 || captionRoom != 0)
            contents.axes.push_back(std::move(axis));
    };
    if (m_bVScaleL)
        add(AxisOf(AxisSide::Left, m_vsMinL.y, m_vsMaxL.y, m_nGraphVDivideL), m_nVScaleWidthL, m_strVLabelL,
            m_nVLabelWidthL);
    if (m_bVScaleR)
        add(AxisOf(AxisSide::Right, m_vsMinR.y, m_vsMaxR.y, m_nGraphVDivideR), m_nVScaleWidthR, m_strVLabelR,
            m_nVLabelWidthR);
    add(AxisOf(AxisSide::Bottom, m_vsMinL.x, m_vsMaxL.x, m_nGraphHDivide), m_nHScaleHeight, m_strHLabel,
        m_nHLabelHeight);
}

int CGraphBase::SeriesOf(melkar::Contents& contents, COLORREF color, const std::string& name) {
    const auto isIt = [color](const ShownSeries& one) { return one.color == color; };
    const auto found = std::find_if(contents.series.begin(), contents.series.end(), isIt);
    const auto index = static_cast<int>(found - contents.series.begin());
    if (found == contents.series.end())
        contents.series.push_back({name, color});
    return index;
}

/// No scale, no note box but that of the panel.
melkar::Contents CFixedText::Shown() const {
    melkar::Contents contents = CGraphBase::Shown();
    contents.axes.clear();
    if (HasDrawn() && melkar::HasRoom(TextBox(GetGraphRect(m_rcGraph))))
        contents.texts = {Utf8(Limited(m_strText, melkar::kMostBoxBytes))};
    return contents;
}
