#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/frame/graph.h>

#include <string>
#include <vector>

/// @file
/// A panel whose look is a table of profile keys.

namespace melkar {
struct ScaleLook;
}

/// One corner of a scale's range.
struct value_set {
    float x; ///< horizontal value
    float y; ///< vertical value
};

/// One row of the note box.
struct note_label {
    CString text;        ///< caption
    COLORREF mark_color; ///< of the mark beside it
};

/// A panel whose whole look is a table of profile keys: where title, graph area and note box lie, how many divisions
/// each axis has, which of the two vertical scales exist, their ranges, formats, captions, fonts and colours. It draws
/// the frame; a derived class puts its content into it.
///
/// The constructor reads no profile: the derived classes do, and who makes a bare `CGraphBase` calls `ReadIniFile`. The
/// draw cycle is its own: no day statuses, no messages. Offsets and extents are device units of the surface; a size
/// that makes no sense draws nothing.
class MELKAR_API CGraphBase : public CGraph {
public:
    /// Four numbers of one text, in the order in which they stand there.
    struct rect_value {
        float left;   ///< first number
        float top;    ///< second number
        float right;  ///< third number
        float bottom; ///< fourth number
    };

    /// Arguments as for `CGraph`.
    CGraphBase(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon);
    ~CGraphBase() override;

    /// Four numbers with commas between them; what follows a fourth comma is ignored. Fewer than three commas: four
    /// zeros, and a line in the log.
    static rect_value GetRectValue(CString text);

    /// Reads the panel's keys, all of them from its own section. Undoes `Reset...` and `SetNoteLabel`. @return 0.
    long ReadIniFile(char* path) override;
    /// Hands the path to `ReadDataFile`, draws the panel on `area` and copies it out. The working surface stays, so
    /// that more can be painted on `GetMemDC`.
    /// @return 0; 201 without a device context; -999 for a rectangle beyond +-2^24 and after an exception.
    long Draw(CRect area, char* path) override;

    using CGraph::DrawTitle;

    /// @name Values as fractions of an axis
    /// @{

    /// 0 below the range and for what is no number, 1 above it.
    virtual float RateX_L(float value);
    virtual float RateY_L(float value);
    virtual float RateX_R(float value);
    virtual float RateY_R(float value);
    /// @}

    // Steps of the draw cycle, on the working surface; a derived class changes one by overriding it.
    virtual void DrawTitle(CRect box, UINT format);     ///< ground and text; nothing at a title height of 0
    virtual void DrawGraph(CRect graph);                ///< graph area, grid, scales and captions
    virtual void DrawBackGround(CRect graph);           ///< ground of the graph area
    virtual void DrawGrid(CRect graph);                 ///< grid lines and ticks
    virtual void DrawGridEx(CRect graph);               ///< nothing: over the grid and under the scales
    virtual void DrawVScaleL(CRect scale, double step); ///< figures; `step` is the distance of two divisions
    virtual void DrawVScaleR(CRect scale, double step); ///< the same at the right, right-aligned as well
    virtual void DrawHScale(CRect scale, double step);  ///< the same below
    virtual void DrawVScaleLabelL(CRect strip);         ///< caption, reading upwards
    virtual void DrawVScaleLabelR(CRect strip);         ///< the same at the right
    virtual void DrawHScaleLabel(CRect strip);          ///< caption below
    virtual void DrawNote(CRect box);                   ///< note box; there is at least one row
    virtual void DrawNoteMark(CRect column);            ///< the coloured marks of its rows

    CRect GetTitleRect(CRect panel) const; ///< where the title stands in a panel
    CRect GetGraphRect(CRect panel) const; ///< its graph area
    CRect GetNoteRect(CRect panel) const;  ///< its note box

    /// @name What the profile says
    /// @{

    /// The member of that name.
    int IsVScaleL() const { return m_bVScaleL; }
    int IsVScaleR() const { return m_bVScaleR; }
    value_set GetvsMinR() const { return m_vsMinR; }
    value_set GetvsMaxR() const { return m_vsMaxR; }
    int GetGraphHDivide() const { return m_nGraphHDivide; }
    int GetGraphVDivideL() const { return m_nGraphVDivideL; }
    int GetGraphVDivideR() const { return m_nGraphVDivideR; }
    int GetHScaleFont() const { return m_nHScaleFont; }
    int GetVScaleFontL() const { return m_nVScaleFontL; }
    int GetVScaleFontR() const { return m_nVScaleFontR; }
    CString GetHScaleFormat() const { return m_strHScaleFormat; }
    CString GetVScaleFormatL() const { return m_strVScaleFormatL; }
    CString GetVScaleFormatR() const { return m_strVScaleFormatR; }
    int GetVScaleLabelFontL() const { return m_nVLabelFontL; }
    int GetVScaleLabelFontR() const { return m_nVLabelFontR; }
    CString GetVScaleLabelL() const { return m_strVLabelL; }
    CString GetVScaleLabelR() const { return m_strVLabelR; }
    COLORREF GetNoteBkColor() const { return m_crNoteBk; }
    int GetNoteMarkWidth() const { return m_nNoteMarkWidth; }
    int GetNoteFont() const { return m_nNoteFont; }
    COLORREF GetBaseColor() const { return m_crBaseBk; }
    COLORREF GetGraphBkColor() const { return m_crGraphBk; }
    /// @}

    HDC GetMemDC() const { return m_hMemDC; } ///< the graph's; until the next `Draw`

    /// @name Overrides
    /// @{

    /// Takes the place of what the profile says, from the next `Draw` to the next `ReadIniFile`.
    void ResetMaxLY(float top) { m_vsMaxL.y = top; }
    void ResetMaxRY(float top) { m_vsMaxR.y = top; }
    void ResetGraphVDivideL(int divisions) { m_nGraphVDivideL = divisions; }
    void ResetGraphVDivideR(int divisions) { m_nGraphVDivideR = divisions; }
    void ResetGraphHDivide(int divisions) { m_nGraphHDivide = divisions; }
    void ResetBaseColor(COLORREF color) { m_crBaseBk = color; }
    /// @}

    /// @name Rows of the note box
    /// @{

    /// From 0; an index out of range gives an empty text or 0 and changes nothing.
    int GetNoteLabelCount() const { return static_cast<int>(m_vecNoteLabels.size()); }
    CString GetNoteLabel(int index) const;
    COLORREF GetNoteLabelColor(int index) const;
    void SetNoteLabel(int index, CString text); ///< the row keeps its colour
    /// @}

    melkar::Contents Shown() const;         ///< title and axes, and a series for each row of the note box
    static melkar::ClassKeys ProfileKeys(); ///< the keys that this class reads

protected:
    /// The series in a colour, by the note box; one of that name is added if there is none. @return its index
    MELKAR_LOCAL static int SeriesOf(melkar::Contents& contents, COLORREF color, const std::string& name);
    COLORREF m_crBaseBk = 0xFFFFFF;          ///< ground of the panel
    COLORREF m_crBaseBorder = 0xFFFFFF;      ///< its border
    int m_nBaseBorderWidth = 0;              ///< width of that
    CString m_strTitleLabel;                 ///< title
    POINT m_ptTitleOffsetLT{0, 0};           ///< from the panel's left and top
    int m_nTitleOffsetR = 0;                 ///< from the panel's right
    int m_nTitleHeight = 0;                  ///< 0: no title at all
    int m_nTitleFont = 0;                    ///< this and the other `Font` heights: cell height in device units
    COLORREF m_crTitleLabel = 0;             ///< colour of the title
    COLORREF m_crTitleBk = 0;                ///< its ground
    POINT m_ptGraphOffsetLT{0, 0};           ///< from the panel's left and top
    POINT m_ptGraphOffsetRB{0, 0};           ///< from the panel's right and bottom
    int m_nGraphVDivideL = 0;                ///< divisions of the left axis
    int m_nGraphVDivideR = 0;                ///< divisions of the right axis
    int m_nGraphHDivide = 0;                 ///< divisions of the horizontal axis
    int m_nGraphVDivideWidthL = 0;           ///< length of a tick on the left edge
    int m_nGraphVDivideWidthR = 0;           ///< length of a tick on the right edge
    int m_nGraphHDivideHeight = 0;           ///< length of a tick on the bottom edge
    BOOL m_bGraphVGridL = 0;                 ///< 1: grid lines at the left divisions
    BOOL m_bGraphVGridR = 0;                 ///< 1: grid lines at the right ones
    BOOL m_bGraphHGrid = 0;                  ///< 1: grid lines at the horizontal ones
    COLORREF m_crGraphBk = 0;                ///< ground of the graph area
    COLORREF m_crGraphGrid = 0;              ///< grid lines
    BOOL m_bVScaleL = 0;                     ///< 1: there is a left scale
    BOOL m_bVScaleR = 0;                     ///< 1: there is a right scale
    value_set m_vsMaxL{0, 0};                ///< upper ends: of the horizontal axis, and of the left one
    value_set m_vsMinL{0, 0};                ///< lower ends
    value_set m_vsMaxR{0, 0};                ///< upper ends: of the horizontal axis, and of the right one
    value_set m_vsMinR{0, 0};                ///< lower ends
    int m_nVScaleOffsetL = 0;                ///< gap between graph area and scale
    int m_nVScaleOffsetR = 0;                ///< likewise at the right
    int m_nHScaleOffset = 0;                 ///< likewise below
    int m_nVScaleWidthL = 0;                 ///< 0 hides the figures
    int m_nVScaleWidthR = 0;                 ///< likewise
    int m_nHScaleHeight = 0;                 ///< likewise
    int m_nVScaleFontL = 0;                  ///< cell height of the left figures
    int m_nVScaleFontR = 0;                  ///< cell height of the right figures
    int m_nHScaleFont = 0;                   ///< cell height of the horizontal figures
    CString m_strVScaleFormatL;              ///< of one double; empty shows no figures
    CString m_strVScaleFormatR;              ///< likewise
    CString m_strHScaleFormat;               ///< likewise
    int m_nVLabelWidthL = 0;                 ///< 0 hides the caption
    int m_nVLabelWidthR = 0;                 ///< likewise
    int m_nHLabelHeight = 0;                 ///< likewise
    int m_nVLabelFontL = 0;                  ///< cell height of the left caption
    int m_nVLabelFontR = 0;                  ///< cell height of the right caption
    int m_nHLabelFont = 0;                   ///< cell height of the caption below
    CString m_strVLabelL;                    ///< left caption
    CString m_strVLabelR;                    ///< right caption
    CString m_strHLabel;                     ///< caption below
    BOOL m_bNoteShow = 0;                    ///< 1: there is a note box
    POINT m_ptNoteOffsetLT{0, 0};            ///< from the panel's left and top
    POINT m_ptNoteOffsetRB{0, 0};            ///< from the panel's right and bottom
    COLORREF m_crNoteBk = 0;                 ///< its ground
    int m_nNoteFont = 0;                     ///< cell height of its rows
    std::vector<note_label> m_vecNoteLabels; ///< its rows, from the top
    int m_nNoteMarkWidth = 0;                ///< room of its marks

private:
    struct KeyRows;
    struct Cycle;
    MELKAR_LOCAL void DrawPanel();
    MELKAR_LOCAL void FillPanel();
    MELKAR_LOCAL void DrawPanelTitle();
    MELKAR_LOCAL bool HasTitleIn(const CRect& box) const;
    MELKAR_LOCAL void AddAxesTo(melkar::Contents& contents) const;
    MELKAR_LOCAL void DrawGraphArea();
    MELKAR_LOCAL void DrawNotes();
    MELKAR_LOCAL void DrawLeftScale(const CRect& graph);
    MELKAR_LOCAL void DrawRightScale(const CRect& graph);
    MELKAR_LOCAL void DrawBottomScale(const CRect& graph);
    MELKAR_LOCAL void DrawVFigures(const CRect& scale, double step, const melkar::ScaleLook& look);
    MELKAR_LOCAL void DrawUpwardCaption(const CRect& strip, const CString& caption, int fontHeight);
};
