#include <MelkarCommon/declarative/circle_graph_base.h>

#include <MelkarCommon/declarative/panel_layout.h>
#include <MelkarCommon/declarative/pie_layout.h>
#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/support/figure_format.h>
#include <MelkarCommon/support/text_box.h>

using melkar::PieSlice;
using melkar::PieSquare;
using melkar::ScopedBkMode;
using melkar::ScopedBrush;
using melkar::ScopedPen;

namespace {

constexpr const char* kLabelFace = "MS Gothic"; ///< whatever face the panel has

} // namespace

struct CCircleGraphBase::KeyRows : melkar::Keys<CCircleGraphBase> {
    static constexpr Row rows[] = {
        ColorList<&G::m_vecValues, &circle_value::color>(Own, "GRAPH_VALUE_RGB%d", "slices; black can't be one of them")
            .Beside("GRAPH_VALUE_RGB%d"),
        Number<&G::m_nValueFont>(Own, "GRAPH_VALUE_FONT", 0, "labels, cell height"),
        Text<&G::m_strValueFormat>(Own, "GRAPH_VALUE_FORMAT", "format of a label's figure")
            .Format()
            .Else(melkar::kPlainPieFigure),
        Text<&G::m_strValueUnit>(Own, "GRAPH_VALUE_UNIT", "behind each label"),
    };
};

CCircleGraphBase::CCircleGraphBase(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon,
                                   float minRate)
    : CGraphBase(window, dc, section, shared, second, balloon), m_fMinRate(minRate) {
    CCircleGraphBase::ReadIniFile(GraphProfile());
}

CCircleGraphBase::~CCircleGraphBase() = default;

long CCircleGraphBase::ReadIniFile(char* path) {
    CGraphBase::ReadIniFile(path);
    melkar::ReadKeys(KeyRows::rows, *this, path, m_strSection);
    return 0;
}

melkar::ClassKeys CCircleGraphBase::ProfileKeys() { return {"CCircleGraphBase", melkar::InfoOf(KeyRows::rows)}; }

void CCircleGraphBase::SetValue(float value, int index) {
    if (index >= 0 && index < static_cast<int>(m_vecValues.size()))
        m_vecValues[static_cast<std::size_t>(index)].value = value;
    else
        m_vecValues.push_back({0, value});
}

std::vector<double> CCircleGraphBase::Values() const {
    std::vector<double> values;
    for (const circle_value& one : m_vecValues)
        values.push_back(one.value);
    return values;
}

void CCircleGraphBase::CalcSum() {
    m_dSum = 0.0;
    for (const circle_value& one : m_vecValues)
        m_dSum += one.value;
}

void CCircleGraphBase::DrawGraph(CRect graph) {
    CalcSum();
    if (!melkar::HasRoom(graph))
        return;
    const PieSquare pie = melkar::PieSquareOf(graph);
    for (const PieSlice& slice : melkar::PieSlicesOf(Values(), m_fMinRate))
        DrawSlice(pie, slice);
    DrawValueLabel(pie.box);
}

void CCircleGraphBase::DrawSlice(const PieSquare& pie, const PieSlice& slice) {
    const auto radials = melkar::PieRadialsOf(pie, slice);
    if (!radials)
        return;
    const COLORREF color = m_vecValues[static_cast<std::size_t>(slice.index)].color;
    const ScopedBrush brush(m_hMemDC, color);
    const ScopedPen pen(m_hMemDC, PS_SOLID, 0, color);
    const auto& [from, to] = *radials;
    Pie(m_hMemDC, pie.box.left, pie.box.top, pie.box.right, pie.box.bottom, from.x, from.y, to.x, to.y);
}

void CCircleGraphBase::DrawValueLabel(CRect square) {
    if (!melkar::MakesSense(square))
        return;
    const PieSquare pie{square, square.Width() / 2};
    const ScopedBkMode transparent(m_hMemDC, TRANSPARENT);
    const melkar::FigureFormat format(m_strValueFormat, melkar::kPlainPieFigure);
    for (const PieSlice& slice : melkar::PieSlicesOf(Values(), m_fMinRate)) {
        const CString label = LabelOf(format, slice.index);
        const CRect box = CalcLabelRect(melkar::PieRimAt(pie, slice.Middle()), pie.Middle(), pie.radius);
        DrawTextVCenterEx(m_hMemDC, box, label, DT_CENTER, m_nValueFont, kLabelFace);
    }
}

CString CCircleGraphBase::LabelOf(const melkar::FigureFormat& format, int index) const {
    return format.Of(m_vecValues[static_cast<std::size_t>(index)].value) + m_strValueUnit;
}

CRect CCircleGraphBase::CalcLabelRect(CPoint outer, CPoint centre, int size) const {
    return melkar::PieLabelBox(outer, centre, size, m_nValueFont);
}
