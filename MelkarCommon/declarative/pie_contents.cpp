// What a pie says: its slices.

#include <MelkarCommon/declarative/circle_graph_base.h>
#include <MelkarCommon/declarative/panel_layout.h>
#include <MelkarCommon/declarative/pie_layout.h>
#include <MelkarCommon/frame/contents.h>
#include <MelkarCommon/support/figure_format.h>
#include <MelkarCommon/support/slice_box.h>

/// No axes. A slice that isn't shown is one without area and text.
melkar::Contents CCircleGraphBase::Shown() const {
    melkar::Contents contents = CGraphBase::Shown();
    contents.axes.clear();
    if (!HasDrawn())
        return contents;
    const melkar::FigureFormat format(m_strValueFormat, melkar::kPlainPieFigure);
    for (int index = 0; index < static_cast<int>(m_vecValues.size()); ++index) {
        const circle_value& slice = m_vecValues[static_cast<std::size_t>(index)];
        const int series = SeriesOf(contents, slice.color, "");
        melkar::ShownItem item;
        item.caption = contents.series[static_cast<std::size_t>(series)].name;
        item.value = slice.value;
        item.figures = {{series, Utf8(LabelOf(format, index)), slice.value, false, CRect(), ""}};
        contents.items.push_back(std::move(item));
    }
    const CRect graph = GetGraphRect(m_rcGraph);
    if (!melkar::HasRoom(graph))
        return contents;
    const melkar::PieSquare pie = melkar::PieSquareOf(graph);
    for (const melkar::PieSlice& slice : melkar::PieSlicesOf(Values(), m_fMinRate)) {
        melkar::ShownItem& item = contents.items[static_cast<std::size_t>(slice.index)];
        item.text = item.figures.front().text;
        if (const auto radials = melkar::PieRadialsOf(pie, slice))
            item.area = item.figures.front().area = melkar::SliceBox(pie.box, radials->from, radials->to);
    }
    return contents;
}
