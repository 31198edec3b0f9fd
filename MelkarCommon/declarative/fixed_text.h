#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/declarative/graph_base.h>

/// @file
/// A text on a panel.

/// A text of the profile in the panel's graph area: one key holds it, keys named after that one hold its size, face and
/// colour. No grid, no scale, no ground of the graph area.
class MELKAR_API CFixedText : public CGraphBase {
public:
    /// Arguments as for `CGraph`; between them the key of the text, and behind them its format (flags of `DrawTextExA`)
    /// and its distance from all four edges of the graph area; below 0 it reaches beyond them.
    CFixedText(HWND window, HDC dc, const char* section, const char* key, HDC shared, HDC second, HDC balloon,
               UINT format, int margin);
    ~CFixedText() override;

    using CGraphBase::ReadIniFile;
    /// The panel's keys and those of the text under `key`. @return 0.
    long ReadIniFile(char* path, const char* key);
    void DrawGraph(CRect graph) override;

    melkar::Contents Shown() const; ///< the text

    /// The keys of a text, as suffixes of its own key, which "%s" stands for.
    static melkar::ClassKeys ProfileKeys();

protected:
    CString m_strText;     ///< the text
    CString m_strFontName; ///< its face
    int m_nFontSize = 0;   ///< cell height in device units
    UINT m_nFormat = 0;    ///< flags of `DrawTextExA`
    COLORREF m_crText = 0; ///< its colour
    int m_nMargin = 0;     ///< from all four edges of the graph area, device units

private:
    struct KeyRows;
    MELKAR_LOCAL CRect TextBox(const CRect& graph) const;
};
