#include <MelkarCommon/declarative/graph_base.h>

#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/ring_log.h>

using melkar::In;

struct CGraphBase::KeyRows : melkar::Keys<CGraphBase> {
    static constexpr Gate Left{"VERTICAL_SCALE_L", On<&G::m_bVScaleL>};
    static constexpr Gate Right{"VERTICAL_SCALE_R", On<&G::m_bVScaleR>};
    static constexpr Gate Notes{"NOTE_SHOW", On<&G::m_bNoteShow>};
    static constexpr Row rows[] = {
        Color<&G::m_crBaseBk>(Own, "BASE_RGB", "ground of the panel").UnderText().Else(0xFFFFFF),
        Color<&G::m_crBaseBorder>(Own, "BASE_BORDER_RGB", "border of the panel").Else<&G::m_crBaseBk>("BASE_RGB"),
        Number<&G::m_nBaseBorderWidth>(Own, "BASE_BORDER_WIDTH", 0, "its width").Example("1"),
        Text<&G::m_strTitleLabel>(Own, "TITLE_LABEL", "title").Example("Weight"),
        Point<&G::m_ptTitleOffsetLT>(Own, "TITLE_OFFSET_LT", "title, from the panel's left and top")
            .TitleBoxTo("TITLE_OFFSET_R", "TITLE_HEIGHT")
            .Example("0,0"),
        Number<&G::m_nTitleOffsetR>(Own, "TITLE_OFFSET_R", 0, "title, from the panel's right"),
        Number<&G::m_nTitleHeight>(Own, "TITLE_HEIGHT", 0, "height of the title; 0: no title").Example("56"),
        Number<&G::m_nTitleFont>(Own, "TITLE_FONT", 0, "title, cell height of the font").Example("28"),
        Color<&G::m_crTitleLabel>(Own, "TITLE_LABEL_RGB", "title").TextOn("TITLE_BK_RGB"),
        Color<&G::m_crTitleBk>(Own, "TITLE_BK_RGB", "ground of the title"),
        Point<&G::m_ptGraphOffsetLT>(Own, "GRAPH_OFFSET_LT", "graph area, from the panel's left and top")
            .BoxTo("GRAPH_OFFSET_RB"),
        Point<&G::m_ptGraphOffsetRB>(Own, "GRAPH_OFFSET_RB", "graph area, from the panel's right and bottom"),
        Color<&G::m_crGraphBk>(Own, "GRAPH_BK_RGB", "ground of the graph area"),
        Color<&G::m_crGraphGrid>(Own, "GRAPH_GRID_RGB", "grid lines"),
        Number<&G::m_nGraphVDivideL>(Own, "GRAPH_VERTICAL_DIVIDE_L", 0, "divisions of the left axis")
            .PartsTo("GRAPH_VERTICAL_MAX_L")
            .Example("5"),
        Number<&G::m_nGraphVDivideWidthL>(Own, "GRAPH_VERTICAL_DIVIDE_WIDTH_L", 0, "length of its ticks").Example("8"),
        Number<&G::m_nGraphVDivideR>(Own, "GRAPH_VERTICAL_DIVIDE_R", 0, "divisions of the right axis")
            .PartsTo("GRAPH_VERTICAL_MAX_R")
            .Example("5"),
        Number<&G::m_nGraphVDivideWidthR>(Own, "GRAPH_VERTICAL_DIVIDE_WIDTH_R", 0, "length of its ticks").Example("8"),
        Number<&G::m_nGraphHDivide>(Own, "GRAPH_HORIZONTAL_DIVIDE", 0, "divisions of the horizontal axis")
            .PartsTo("GRAPH_HORIZONTAL_MAX")
            .Example("6"),
        Number<&G::m_nGraphHDivideHeight>(Own, "GRAPH_HORIZONTAL_DIVIDE_HEIGHT", 0, "length of its ticks").Example("8"),
        TrueWord<&G::m_bGraphVGridL>(Own, "GRAPH_VERTICAL_GRID_L", "grid lines at the left divisions"),
        TrueWord<&G::m_bGraphVGridR>(Own, "GRAPH_VERTICAL_GRID_R", "grid lines at the right divisions"),
        TrueWord<&G::m_bGraphHGrid>(Own, "GRAPH_HORIZONTAL_GRID", "grid lines at the horizontal divisions"),
        Real<In<&G::m_vsMaxL, &value_set::y>>(Own, "GRAPH_VERTICAL_MAX_L", "top of the left scale")
            .TopFrom("GRAPH_VERTICAL_MIN_L")
            .Example("80"),
        Real<In<&G::m_vsMinL, &value_set::y>>(Own, "GRAPH_VERTICAL_MIN_L", "bottom of the left scale"),
        Real<In<&G::m_vsMaxR, &value_set::y>>(Own, "GRAPH_VERTICAL_MAX_R", "top of the right scale")
            .TopFrom("GRAPH_VERTICAL_MIN_R")
            .Example("30"),
        Real<In<&G::m_vsMinR, &value_set::y>>(Own, "GRAPH_VERTICAL_MIN_R", "bottom of the right scale").Example("18"),
        Real<In<&G::m_vsMaxL, &value_set::x>, In<&G::m_vsMaxR, &value_set::x>>(Own, "GRAPH_HORIZONTAL_MAX",
                                                                               "right end of the horizontal scale")
            .TopFrom("GRAPH_HORIZONTAL_MIN"),
        Real<In<&G::m_vsMinL, &value_set::x>, In<&G::m_vsMinR, &value_set::x>>(Own, "GRAPH_HORIZONTAL_MIN",
                                                                               "left end of the horizontal scale")
            .Example("0"),
        TrueWord<&G::m_bVScaleL>(Own, "VERTICAL_SCALE_L", "there is a left scale"),
        TrueWord<&G::m_bVScaleR>(Own, "VERTICAL_SCALE_R", "there is a right scale"),
        Number<&G::m_nVScaleOffsetL>(Own, "VERTICAL_SCALE_OFFSET_L", 0, "gap to the graph area").When(Left),
        Number<&G::m_nVScaleWidthL>(Own, "VERTICAL_SCALE_WIDTH_L", 0, "room of the figures; 0: none").When(Left),
        Number<&G::m_nVScaleFontL>(Own, "VERTICAL_SCALE_FONT_L", 0, "figures, cell height").When(Left),
        Text<&G::m_strVScaleFormatL>(Own, "VERTICAL_SCALE_FORMAT_L", "format of one figure")
            .Format()
            .When(Left)
            .Example("%.0f"),
        Number<&G::m_nVLabelWidthL>(Own, "VERTICAL_LABEL_WIDTH_L", 0, "room of the caption; 0: none").When(Left),
        Number<&G::m_nVLabelFontL>(Own, "VERTICAL_LABEL_FONT_L", 0, "caption, cell height").When(Left),
        Text<&G::m_strVLabelL>(Own, "VERTICAL_LABEL_L", "caption").When(Left),
        Number<&G::m_nVScaleOffsetR>(Own, "VERTICAL_SCALE_OFFSET_R", 0, "gap to the graph area")
            .When(Right)
            .Example("6"),
        Number<&G::m_nVScaleWidthR>(Own, "VERTICAL_SCALE_WIDTH_R", 0, "room of the figures; 0: none")
            .When(Right)
            .Example("32"),
        Number<&G::m_nVScaleFontR>(Own, "VERTICAL_SCALE_FONT_R", 0, "figures, cell height").When(Right).Example("18"),
        Text<&G::m_strVScaleFormatR>(Own, "VERTICAL_SCALE_FORMAT_R", "format of one figure")
            .Format()
            .When(Right)
            .Example("%.0f"),
        Number<&G::m_nVLabelWidthR>(Own, "VERTICAL_LABEL_WIDTH_R", 0, "room of the caption; 0: none")
            .When(Right)
            .Example("36"),
        Number<&G::m_nVLabelFontR>(Own, "VERTICAL_LABEL_FONT_R", 0, "caption, cell height").When(Right).Example("18"),
        Text<&G::m_strVLabelR>(Own, "VERTICAL_LABEL_R", "caption").When(Right).Example("Body fat (%)"),
        Number<&G::m_nHScaleOffset>(Own, "HORIZONTAL_SCALE_OFFSET", 0, "gap to the graph area"),
        Number<&G::m_nHScaleHeight>(Own, "HORIZONTAL_SCALE_HEIGHT", 0, "room of the figures; 0: none"),
        Number<&G::m_nHScaleFont>(Own, "HORIZONTAL_SCALE_FONT", 0, "figures, cell height"),
        Text<&G::m_strHScaleFormat>(Own, "HORIZONTAL_SCALE_FORMAT", "format of one figure").Format().Example("%.0f"),
        Number<&G::m_nHLabelHeight>(Own, "HORIZONTAL_LABEL_HEIGHT", 0, "room of the caption; 0: none"),
        Number<&G::m_nHLabelFont>(Own, "HORIZONTAL_LABEL_FONT", 0, "caption, cell height"),
        Text<&G::m_strHLabel>(Own, "HORIZONTAL_LABEL", "caption"),
        TrueWord<&G::m_bNoteShow>(Own, "NOTE_SHOW", "there is a note box"),
        Point<&G::m_ptNoteOffsetLT>(Own, "NOTE_OFFSET_LT", "note box, from the panel's left and top")
            .BoxTo("NOTE_OFFSET_RB")
            .When(Notes),
        Point<&G::m_ptNoteOffsetRB>(Own, "NOTE_OFFSET_RB", "note box, from the panel's right and bottom").When(Notes),
        Number<&G::m_nNoteFont>(Own, "NOTE_LABEL_FONT", 0, "rows, cell height").When(Notes),
        Number<&G::m_nNoteMarkWidth>(Own, "NOTE_MARK_WIDTH", 0,
                                     "room of the marks, 5 of it free on each side; colour shows in their black "
                                     "frames from 13 up, in rows as high as that")
            .When(Notes),
        Color<&G::m_crNoteBk>(Own, "NOTE_BK_RGB", "ground of the note box").UnderText().When(Notes),
        TextList<&G::m_vecNoteLabels, &note_label::text>(Own, "NOTE_LABEL%d", "rows").When(Notes),
        ColorOfEach<&G::m_vecNoteLabels, &note_label::mark_color>(Own, "NOTE_MARK_RGB%d", "their marks").When(Notes),
    };
};

CGraphBase::CGraphBase(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon)
    : CGraph(window, dc, section, shared, second, balloon) {}

CGraphBase::~CGraphBase() = default;

long CGraphBase::ReadIniFile(char* path) {
    m_vecNoteLabels.clear();
    melkar::ReadKeys(KeyRows::rows, *this, path, m_strSection);
    return 0;
}

melkar::ClassKeys CGraphBase::ProfileKeys() { return {"CGraphBase", melkar::InfoOf(KeyRows::rows)}; }

CGraphBase::rect_value CGraphBase::GetRectValue(CString text) {
    float values[4] = {};
    int from = 0;
    for (int i = 0; i < 4; ++i) {
        const int comma = text.Find(',', from);
        if (comma < 0 && i < 3) {
            writeLog(kLogFile, "GetRectValuevalue[%s] Error.", text.GetString());
            return {0, 0, 0, 0};
        }
        values[i] = static_cast<float>(melkar::ToDouble(text.Mid(from)));
        from = comma + 1;
    }
    return {values[0], values[1], values[2], values[3]};
}

namespace {

/// Whether a row of this index is there; a negative one isn't.
bool HasRow(const std::vector<note_label>& rows, int index) { return static_cast<std::size_t>(index) < rows.size(); }

} // namespace

CString CGraphBase::GetNoteLabel(int index) const {
    return HasRow(m_vecNoteLabels, index) ? m_vecNoteLabels[static_cast<std::size_t>(index)].text : CString();
}

COLORREF CGraphBase::GetNoteLabelColor(int index) const {
    return HasRow(m_vecNoteLabels, index) ? m_vecNoteLabels[static_cast<std::size_t>(index)].mark_color : 0;
}

void CGraphBase::SetNoteLabel(int index, CString text) {
    if (HasRow(m_vecNoteLabels, index))
        m_vecNoteLabels[static_cast<std::size_t>(index)].text = text;
}
