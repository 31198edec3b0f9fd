#include <MelkarCommon/declarative/fixed_text.h>

#include <MelkarCommon/declarative/panel_layout.h>
#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/support/text_box.h>

using melkar::ScopedTextColor;

namespace {

constexpr int kPlainSize = 20;

} // namespace

struct CFixedText::KeyRows : melkar::Keys<CFixedText> {
    static constexpr Row rows[] = {
        Text<&G::m_strText>(Own, "%s", "the text; `__YN__` breaks the line"),
        Number<&G::m_nFontSize>(Own, "%s_FONT", kPlainSize, "cell height of the font"),
        Text<&G::m_strFontName>(Own, "%s_FONTNAME", "face").Face().Else<&G::m_strFont>("FONT").Example("DejaVu Serif"),
        Color<&G::m_crText>(Own, "%s_RGB", "colour").TextOn("BASE_RGB"),
    };
};

CFixedText::CFixedText(HWND window, HDC dc, const char* section, const char* key, HDC shared, HDC second, HDC balloon,
                       UINT format, int margin)
    : CGraphBase(window, dc, section, shared, second, balloon), m_nFormat(format), m_nMargin(margin) {
    ReadIniFile(GraphProfile(), key);
}

CFixedText::~CFixedText() = default;

long CFixedText::ReadIniFile(char* path, const char* key) {
    CGraphBase::ReadIniFile(path);
    const melkar::HostDirectory here(Host());
    melkar::ReadKeys(KeyRows::rows, *this, melkar::KeyReader(path, m_strSection, key ? key : ""));
    return 0;
}

melkar::ClassKeys CFixedText::ProfileKeys() { return {"CFixedText", melkar::InfoOf(KeyRows::rows)}; }

CRect CFixedText::TextBox(const CRect& graph) const {
    return melkar::Inside(graph, {m_nMargin, m_nMargin, m_nMargin, m_nMargin});
}

/// Vertical centring wins over the bottom. Painting into a box without area shows nothing.
void CFixedText::DrawGraph(CRect graph) {
    const CRect box = TextBox(graph);
    const ScopedTextColor color(m_hMemDC, m_crText);
    if (m_nFormat & DT_VCENTER)
        DrawTextVCenterEx(m_hMemDC, box, m_strText, m_nFormat, m_nFontSize, m_strFontName);
    else if (m_nFormat & DT_BOTTOM)
        DrawTextBottom(m_hMemDC, box, m_strText, m_nFormat, m_nFontSize, m_strFontName);
    else
        DrawTextTop(m_hMemDC, box, m_strText, m_nFormat, m_nFontSize, m_strFontName);
}
