#include <MelkarCommon/reports/graph_header.h>

#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/reports/report_header_layout.h>
#include <MelkarCommon/support/bounds.h>
#include <MelkarCommon/support/support.h>
#include <MelkarCommon/support/text_measure.h>
#include <MelkarCommon/support/utf8.h>

#include <utility>

using namespace melkar; // NOLINT(google-build-using-namespace): cells by their names

namespace {

constexpr int kMeasuredSize = 10; ///< points; texts are painted at the size of the profile

void PaintIn(HDC surface, const CRect& cell, const char* text, COLORREF color, UINT format) {
    const ScopedTextColor scoped(surface, color);
    PaintText(surface, text, cell, format);
}

} // namespace

CGraphHeader::CGraphHeader(const char* section) : CReportHeader(section) {
    m_strSection = section;
    CGraphHeader::ReadIniFile(GraphProfile());
}

int CGraphHeader::CalcRect(HDC surface, CRect block, CString dataFile) {
    m_hDC = surface;
    GetData(dataFile);
    LayOutGraphHeader(m_rcCells, block, MeasureSamples(kMeasuredSize));
    return BelowHeader(m_rcCells[B6]);
}

int CGraphHeader::Draw(HDC, CRect block, CString) {
    if (!MakesSense(block))
        return BelowHeader(m_rcCells[B6]);
    const ScopedFont font(m_hDC, HeaderFont(m_hDC, m_nHeaderSize));
    DrawRectangle(m_hDC, block, kWhite, kBlack, 1);
    for (const HeaderCell cell : {A0, A3, G0, C3, E3})
        DrawRectangle(m_hDC, m_rcCells[cell], kBlack, kBlack, 0);
    const int middle = m_rcCells[B3].top;
    DrawLine(m_hDC, CPoint(block.left, middle), CPoint(block.right, middle), nullptr);
    DrawPairs();
    return BelowHeader(m_rcCells[B6]);
}

/// A label and what stands beside it.
struct CGraphHeader::Pair {
    const TextSlot &label, &text;
    HeaderCell labelCell, textCell;
};

std::array<CGraphHeader::Pair, 7> CGraphHeader::Pairs() const {
    return {{
        {m_szNameLabel, m_szName, A0, B0},
        {m_szGroupLabel, m_szGroup, A1, B1},
        {m_szDateLabel, m_szDate, G0, H0},
        {m_szCommentLabel, m_szComment, A2, B2},
        {m_szAgeLabel, m_szAge, A3, B3},
        {m_szHeightLabel, m_szHeight, C3, D3},
        {m_szWeightLabel, m_szWeight, E3, F3},
    }};
}

/// Labels stand white in their cells; those of group and comment have no black one and so don't show.
void CGraphHeader::DrawPairs() const {
    SetBkMode(m_hDC, TRANSPARENT); // stays, for whoever paints on below the block
    for (const Pair& pair : Pairs()) {
        PaintIn(m_hDC, m_rcCells[pair.labelCell], pair.label, kWhite, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
        PaintIn(m_hDC, m_rcCells[pair.textCell], pair.text, kBlack, DT_VCENTER | DT_SINGLELINE);
    }
}

melkar::Contents CGraphHeader::Shown() const {
    Contents contents;
    contents.kind = "report";
    contents.area = {m_rcCells[A0].left, m_rcCells[A0].top, m_rcCells[B1].right, m_rcCells[A3].bottom};
    for (const Pair& pair : Pairs()) {
        ShownItem item;
        item.caption = Utf8Of(CString(pair.label), m_nCharset);
        item.text = Utf8Of(CString(pair.text), m_nCharset);
        const CRect &label = m_rcCells[pair.labelCell], &text = m_rcCells[pair.textCell];
        item.area = {label.left, label.top, text.right, text.bottom};
        if (!item.text.empty())
            contents.items.push_back(std::move(item));
    }
    return contents;
}
