// The panel's drawing: title, graph area, grid, scales, captions and note box.

#include <MelkarCommon/declarative/graph_base.h>

#include <MelkarCommon/declarative/panel_layout.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/support/chart_font.h>
#include <MelkarCommon/support/figure_format.h>
#include <MelkarCommon/support/font.h>
#include <MelkarCommon/support/support.h>
#include <MelkarCommon/support/text_box.h>

using melkar::ScopedBkMode;
using melkar::ScopedSelection;
using melkar::ScopedTextColor;

namespace melkar {

/// What the figures of a vertical scale are made from.
struct ScaleLook {
    float min;
    float max;
    int divisions;
    const CString& format;
    int font;
};

} // namespace melkar

namespace {

constexpr int kGraphBorder = 2;
constexpr int kGridPenWidth = 2;
constexpr int kMarkInset = 5;              ///< of a note mark, from the edges of its cell
constexpr const char* kPlainFigure = "%g"; ///< stands in for a format that can't be used

HPEN GridPen(DWORD style, COLORREF color) {
    const LOGBRUSH brush{BS_SOLID, color, 0};
    return ExtCreatePen(PS_GEOMETRIC | style, kGridPenWidth, &brush, 0, nullptr);
}

/// Owns the pen; selected only where it is handed to a drawing call.
struct OwnedPen {
    explicit OwnedPen(HPEN pen) : handle(pen) {}
    ~OwnedPen() { DeleteObject(handle); }
    OwnedPen(const OwnedPen&) = delete;
    OwnedPen& operator=(const OwnedPen&) = delete;
    const HPEN handle;
};

/// The value at division `index` of `count`; in double, as the figures are formatted.
double ValueAt(float min, float max, int count, int index) { return min + index * ((double(max) - min) / count); }

} // namespace

float CGraphBase::RateX_L(float value) { return melkar::RateOf(value, m_vsMinL.x, m_vsMaxL.x); }
float CGraphBase::RateY_L(float value) { return melkar::RateOf(value, m_vsMinL.y, m_vsMaxL.y); }
float CGraphBase::RateX_R(float value) { return melkar::RateOf(value, m_vsMinR.x, m_vsMaxR.x); }
float CGraphBase::RateY_R(float value) { return melkar::RateOf(value, m_vsMinR.y, m_vsMaxR.y); }

CRect CGraphBase::GetTitleRect(CRect panel) const {
    return melkar::TitleBox(panel, m_ptTitleOffsetLT, m_nTitleOffsetR, m_nTitleHeight);
}

CRect CGraphBase::GetGraphRect(CRect panel) const {
    return melkar::Inside(panel, {m_ptGraphOffsetLT.x, m_ptGraphOffsetLT.y, m_ptGraphOffsetRB.x, m_ptGraphOffsetRB.y});
}

CRect CGraphBase::GetNoteRect(CRect panel) const {
    return melkar::Inside(panel, {m_ptNoteOffsetLT.x, m_ptNoteOffsetLT.y, m_ptNoteOffsetRB.x, m_ptNoteOffsetRB.y});
}

struct CGraphBase::Cycle : melkar::Steps<CGraphBase> {
    static constexpr Step steps[] = {Do<&G::ReadDataFile>, {Do<&G::PrepareCycle>, Needed}, Do<&G::DrawPanel>};
    static constexpr Step panel[] = {Do<&G::FillPanel>, Do<&G::DrawPanelTitle>, Do<&G::DrawGraphArea>,
                                     Do<&G::DrawNotes>};
};

long CGraphBase::Draw(CRect area, char* path) { return melkar::RunCycle(*this, Cycle::steps, area, path); }

/// All texts of a panel stand on what is there, those of derived classes, too.
void CGraphBase::DrawPanel() {
    const ScopedBkMode transparent(m_hMemDC, TRANSPARENT);
    const auto color = TextColorOn(m_hMemDC);
    RunSteps(*this, Cycle::panel);
}

void CGraphBase::FillPanel() { DrawRectangle(m_hMemDC, m_rcGraph, m_crBaseBk, m_crBaseBorder, m_nBaseBorderWidth); }

void CGraphBase::DrawPanelTitle() { DrawTitle(GetTitleRect(m_rcGraph), DT_CENTER); }

void CGraphBase::DrawGraphArea() { DrawGraph(GetGraphRect(m_rcGraph)); }

void CGraphBase::DrawNotes() {
    if (!m_vecNoteLabels.empty())
        DrawNote(GetNoteRect(m_rcGraph));
}

bool CGraphBase::HasTitleIn(const CRect& box) const { return m_nTitleHeight != 0 && melkar::HasRoom(box); }

void CGraphBase::DrawTitle(CRect box, UINT format) {
    if (!HasTitleIn(box))
        return;
    DrawRectangle(m_hMemDC, box, m_crTitleBk, m_crTitleBk, 0);
    const Font face(m_strFont, FontStyleBold, m_nTitleFont, 0);
    const ScopedSelection font(m_hMemDC, face.GetHFONT());
    const ScopedTextColor color(m_hMemDC, m_crTitleLabel);
    DrawTextVCenter(m_hMemDC, box, m_strTitleLabel, format);
}

/// An area without width or height, or one that offsets turned inside out, shows nothing, no scale either.
void CGraphBase::DrawGraph(CRect graph) {
    if (!melkar::HasRoom(graph))
        return;
    DrawBackGround(graph);
    DrawGrid(graph);
    DrawGridEx(graph);
    DrawLeftScale(graph);
    DrawRightScale(graph);
    DrawBottomScale(graph);
}

void CGraphBase::DrawLeftScale(const CRect& graph) {
    if (!m_bVScaleL)
        return;
    const double step = melkar::DivisionsOf(graph.Height(), m_nGraphVDivideL).step;
    const auto boxes = melkar::LeftScaleBoxes(graph, step, {m_nVScaleOffsetL, m_nVScaleWidthL, m_nVLabelWidthL});
    if (m_nVScaleWidthL != 0)
        DrawVScaleL(boxes.figures, step);
    if (m_nVLabelWidthL != 0)
        DrawVScaleLabelL(boxes.caption);
}

void CGraphBase::DrawRightScale(const CRect& graph) {
    if (!m_bVScaleR)
        return;
    const double step = melkar::DivisionsOf(graph.Height(), m_nGraphVDivideR).step;
    const auto boxes = melkar::RightScaleBoxes(graph, step, {m_nVScaleOffsetR, m_nVScaleWidthR, m_nVLabelWidthR});
    if (m_nVScaleWidthR != 0)
        DrawVScaleR(boxes.figures, step);
    if (m_nVLabelWidthR != 0)
        DrawVScaleLabelR(boxes.caption);
}

void CGraphBase::DrawBottomScale(const CRect& graph) {
    const double step = melkar::DivisionsOf(graph.Width(), m_nGraphHDivide).step;
    const auto boxes = melkar::BottomScaleBoxes(graph, step, {m_nHScaleOffset, m_nHScaleHeight, m_nHLabelHeight});
    if (m_nHScaleHeight != 0)
        DrawHScale(boxes.figures, step);
    if (m_nHLabelHeight != 0)
        DrawHScaleLabel(boxes.caption);
}

void CGraphBase::DrawBackGround(CRect graph) { DrawRectangle(m_hMemDC, graph, m_crGraphBk, 0, kGraphBorder); }

/// No line at the first and the last division, where the frame of the graph area stands. For each division its grid
/// line comes first, then its tick, so that ticks stand upon the lines of their own axis.
void CGraphBase::DrawGrid(CRect graph) {
    const OwnedPen dotted(GridPen(PS_DOT, m_crGraphGrid));
    const OwnedPen solid(GridPen(PS_SOLID, 0));
    const ScopedSelection ticks(m_hMemDC, solid.handle);

    const auto drawAxis = [&](int extent, int count, BOOL hasGrid, int tick, auto linesOf) {
        const double step = melkar::DivisionsOf(extent, count).step;
        for (std::int64_t i = 1, stride = melkar::StrideOf(count, extent); i < count; i += stride) {
            const melkar::DivisionLines lines = linesOf(graph, step, static_cast<int>(i), tick);
            if (hasGrid)
                DrawLine(m_hMemDC, lines.gridFrom, lines.gridTo, dotted.handle);
            DrawLine(m_hMemDC, lines.tickFrom, lines.tickTo, nullptr);
        }
    };
    drawAxis(graph.Height(), m_nGraphVDivideL, m_bGraphVGridL, m_nGraphVDivideWidthL, melkar::LeftDivision);
    drawAxis(graph.Height(), m_nGraphVDivideR, m_bGraphVGridR, m_nGraphVDivideWidthR, melkar::RightDivision);
    drawAxis(graph.Width(), m_nGraphHDivide, m_bGraphHGrid, m_nGraphHDivideHeight, melkar::BottomDivision);
}

void CGraphBase::DrawGridEx(CRect) {}

void CGraphBase::DrawVScaleL(CRect scale, double step) {
    DrawVFigures(scale, step, {m_vsMinL.y, m_vsMaxL.y, m_nGraphVDivideL, m_strVScaleFormatL, m_nVScaleFontL});
}

void CGraphBase::DrawVScaleR(CRect scale, double step) {
    DrawVFigures(scale, step, {m_vsMinR.y, m_vsMaxR.y, m_nGraphVDivideR, m_strVScaleFormatR, m_nVScaleFontR});
}

/// A scale that is shown without divisions has one, from its lowest to its highest value; with a negative number of
/// them no figures.
void CGraphBase::DrawVFigures(const CRect& scale, double step, const melkar::ScaleLook& look) {
    if (look.divisions < 0)
        return;
    const Font face(m_strFont, FontStyleRegular, look.font, 0);
    const ScopedSelection font(m_hMemDC, face.GetHFONT());
    const melkar::FigureFormat format(look.format, kPlainFigure);
    const int count = std::max(look.divisions, 1);
    for (std::int64_t i = 0, stride = melkar::StrideOf(count, scale.Height()); i <= count; i += stride) {
        const int index = static_cast<int>(i);
        DrawTextVCenter(m_hMemDC, melkar::BandUpwards(scale, step, index),
                        format.Of(ValueAt(look.min, look.max, count, index)), DT_RIGHT);
    }
}

void CGraphBase::DrawHScale(CRect scale, double step) {
    if (m_nGraphHDivide < 0)
        return;
    const Font face(m_strFont, FontStyleRegular, m_nHScaleFont, 0);
    const ScopedSelection font(m_hMemDC, face.GetHFONT());
    const melkar::FigureFormat format(m_strHScaleFormat, kPlainFigure);
    const int count = std::max(m_nGraphHDivide, 1);
    for (std::int64_t i = 0, stride = melkar::StrideOf(count, scale.Width()); i <= count; i += stride) {
        const int index = static_cast<int>(i);
        DrawTextVCenter(m_hMemDC, melkar::BandRightwards(scale, step, index),
                        format.Of(ValueAt(m_vsMinL.x, m_vsMaxL.x, count, index)), DT_CENTER);
    }
}

void CGraphBase::DrawVScaleLabelL(CRect strip) { DrawUpwardCaption(strip, m_strVLabelL, m_nVLabelFontL); }
void CGraphBase::DrawVScaleLabelR(CRect strip) { DrawUpwardCaption(strip, m_strVLabelR, m_nVLabelFontR); }

void CGraphBase::DrawUpwardCaption(const CRect& strip, const CString& caption, int fontHeight) {
    if (!melkar::MakesSense(strip))
        return;
    const Font face(m_strFont, FontStyleBold, fontHeight, melkar::kUpwards);
    const ScopedSelection font(m_hMemDC, face.GetHFONT());
    const CRect size = MeasureText(caption, DT_CALCRECT | DT_BOTTOM | DT_CENTER, strip);
    PaintTurned(melkar::UpwardCaptionAt(strip, size.Width(), size.Height()), caption);
}

void CGraphBase::DrawHScaleLabel(CRect strip) {
    const Font face(m_strFont, FontStyleBold, m_nHLabelFont, 0);
    const ScopedSelection font(m_hMemDC, face.GetHFONT());
    DrawTextVCenter(m_hMemDC, strip, m_strHLabel, DT_CENTER);
}

void CGraphBase::DrawNote(CRect box) {
    if (!melkar::HasRoom(box))
        return;
    DrawRectangle(m_hMemDC, box, m_crNoteBk, m_crNoteBk, 0);
    DrawNoteMark(melkar::NoteMarks(box, m_nNoteMarkWidth));
    const Font face(m_strFont, FontStyleRegular, m_nNoteFont, 0);
    const ScopedSelection font(m_hMemDC, face.GetHFONT());
    for (int row = 0; row < GetNoteLabelCount(); ++row)
        DrawTextVCenter(m_hMemDC, melkar::NoteText(melkar::NoteRow(box, GetNoteLabelCount(), row), m_nNoteMarkWidth),
                        m_vecNoteLabels[static_cast<std::size_t>(row)].text, DT_LEFT);
}

/// In a cell smaller than two insets a mark is inside out; it is painted all the same, so that a narrow column has
/// colours.
void CGraphBase::DrawNoteMark(CRect column) {
    if (!melkar::MakesSense(column))
        return;
    for (int row = 0; row < GetNoteLabelCount(); ++row) {
        CRect mark = melkar::NoteRow(column, GetNoteLabelCount(), row);
        mark.DeflateRect(kMarkInset, kMarkInset);
        DrawRectangle(m_hMemDC, mark, m_vecNoteLabels[static_cast<std::size_t>(row)].mark_color, 0, 0);
    }
}
