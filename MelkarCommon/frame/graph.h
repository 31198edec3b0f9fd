#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/frame/cycle.h>
#include <MelkarCommon/frame/results.h>
#include <MelkarCommon/platform/arrays.h>
#include <MelkarCommon/platform/cstring.h>
#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/types.h>
#include <MelkarCommon/support/ini_reader.h>
#include <MelkarCommon/support/text.h>

#include <optional>
#include <string>
#include <vector>

/// @file
/// The frame of every graph.

namespace melkar {
struct ClassKeys;
struct Contents;
struct DataTable;
using DataTables = std::vector<DataTable>;
struct ScalePixels;
struct ScaleStep;
class ScopedTextColor;
struct Tick;
} // namespace melkar

/// The frame of every graph: its surfaces and profile, the first half of a draw cycle (working surface, background,
/// title, canvas, day statuses and their messages), and copying the picture out.
///
/// A graph is made once per view and drawn any number of times. It works on a surface of its own and copies the
/// finished picture to the shared surface at the place that `Draw` was given; with direct output it paints straight
/// onto the device context instead. One thread at a time may use a graph and its surfaces.
///
/// Results of graph operations stand in `frame/results.h`.
///
/// @code{.cpp}
/// CBarGraph week(nullptr, view, "STEPS", view, nullptr, balloon); // "STEPS": a section of the profile
/// const long result = week.Draw(CRect(0, 0, 900, 500), path);
/// if (result != melkar::kOk) {
///     std::fprintf(stderr, "%s\n", melkar::ResultText(result));
///     return;
/// }
/// BitBlt(balloon, 0, 0, 900, 500, view, 0, 0, SRCCOPY); // the clean picture, for under the balloons
/// week.OnMouseMove(CPoint(480, 340));                   // paints the balloon of that day
/// const long day = week.OnClick(CPoint(480, 340));      // -1 where no bar is
/// std::printf("%ld\n", day);
/// @endcode
class MELKAR_API CGraph {
public:
    /// Reads the graph's keys from "..\conf\graph.cnf".
    /// @param window stored only; may be null
    /// @param dc device context that the graph suits; the caller's, like the three surfaces, all of which must outlive
    ///        the graph
    /// @param section the graph's own section of the profile
    /// @param shared receives the picture @param second receives it while `m_nViewMode` is 1
    /// @param balloon holds a clean copy of the picture, which the caller keeps up to date
    CGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon);
    virtual ~CGraph();
    CGraph(const CGraph&) = delete;
    CGraph& operator=(const CGraph&) = delete;

    virtual long ClearArrays();            ///< forgets the data. @return 0
    virtual long ReadDataFile(char* path); ///< nothing here. @return 0
    virtual long ReadIniFile(char* path);  ///< reads this class's keys. @return 0
    /// First half of a draw cycle on `area` (device units); the path isn't used here.
    /// @return 0, 201 without a device context, -999 for a rectangle beyond +-2^24, without memory for the picture
    /// and after an exception.
    virtual long Draw(CRect area, char* path);
    virtual long Redraw();      ///< nothing here. @return 0
    virtual long OnClick();     ///< nothing here. @return 0
    virtual long OnMouseMove(); ///< nothing here. @return 0
    /// Binds the graph to another window and device context, and to those surfaces that aren't null. @return 0
    virtual long Initialize(HWND window, HDC dc, HDC shared, HDC second, HDC balloon);
    virtual void SetCanvasRect();        ///< lays out `m_rcCanvas`; side bar and title are set
    virtual void DrawSideBar();          ///< lays out the side bar; paints nothing
    virtual void SetSideBar();           ///< a strip one pixel wide at the left
    virtual void SetTitleRect();         ///< where the title begins
    virtual void DrawTitle();            ///< paints the title and fits `m_rcTitle` to it
    virtual CString FormatDate(int day); ///< date text of that day
    /// The message that no day has records, if none has. @return -1 if it was painted, else 0
    virtual long DrawNoRecordsMessage();
    virtual long DrawNoDataMessage();  ///< the message that no day has data, if none has. @return 0
    virtual long DrawExcludeMessage(); ///< the message that all days are left out, if they are. @return 0

    /// Copies the picture to the shared surface; nothing under direct output.
    void BitBlt();
    /// A new memory surface that suits `surface` and that the caller deletes; under direct output `surface` itself.
    HDC CreateCompatibleDC(HDC surface) const;
    /// 1: paint straight onto the device context, in its coordinates. To be set before `Draw`.
    void SetDirectOutput(int direct) { m_bDirectOutput = direct; }
    int GetDirectOutput() const { return m_bDirectOutput; } ///< 1: it paints so
    /// Where its profile, the formats of its dates and its log are: where they were when it was made.
    const melkar::HostPlace& Host() const { return m_Ini.Host(); }
    HDC GetGMemDC() const { return m_hGMemDC; }               ///< the shared surface, the caller's
    HDC GetGMemDCCir() const { return m_hGMemDCCir; }         ///< the second shared surface, the caller's
    HDC GetGMemDCBalloon() const { return m_hGMemDCBalloon; } ///< the surface of the clean picture, the caller's
    static int GetViewMode(int mode) { return mode % 100; }   ///< the view mode that a host's number holds
    static melkar::ClassKeys ProfileKeys();                   ///< the keys that this class reads, of every graph class

    /// Whether a drawing has begun since the graph was made, so that there is something to tell of.
    bool HasDrawn() const { return m_hMemDC != nullptr; }
    /// The surface that gets the picture, the caller's.
    HDC ShownOn() const { return m_bDirectOutput ? m_hDC : m_nViewMode == 1 ? m_hGMemDCCir : m_hGMemDC; }
    /// Where the picture's corner lies on the surface that shows it; (0, 0) under direct output, whose picture lies
    /// where it was drawn.
    CPoint PictureOrigin() const { return m_bDirectOutput ? CPoint(0, 0) : CPoint(m_nOriginX, m_nOriginY); }
    /// What the last drawing shows, areas counted from the picture's corner. A class that shows more has an operation
    /// of the same name, which begins with that of its base, and a row in the catalogue that names it; ask
    /// `melkar::ShownBy`.
    melkar::Contents Shown() const;

protected:
    static char* GraphProfile();                ///< "..\conf\graph.cnf", from which every constructor reads
    MELKAR_LOCAL static bool IsDesktopNarrow(); ///< on which some texts are smaller
    MELKAR_LOCAL void DrawTick(const melkar::Tick& tick) const; ///< with the surface's pen
    /// The first half of a cycle, without a copy of the picture: a step of most cycles. @return as `Draw`
    long BeginCycle(const CRect& area);
    /// What every cycle begins with: looks at the rectangle and makes the working surface for it.
    /// @return 0; 201 without a device context; -999, with a line in the log, for a rectangle beyond +-2^24.
    long PrepareCycle(const CRect& area);
    void FillCanvas(); ///< the canvas in its colour; a step of many cycles
    /// A font of `size` points (11 if it is 0 or negative) in the graph's face and character set, for the working
    /// surface. The caller owns it.
    HFONT ChartFont(int size, int escapement = 0) const { return ChartFontFor(m_hMemDC, size, escapement); }
    /// The same for another surface.
    HFONT ChartFontFor(HDC surface, int size, int escapement = 0) const;
    /// The same with the size taken as it is: 0 gives the height of a new surface's font.
    HFONT PlainFont(int size, int escapement = 0) const;
    /// The size of a text on the working surface in its font, from `box`'s left and top on.
    CRect MeasureText(const CString& text, UINT format, CRect box = CRect()) const;
    /// A text on what is there, in the working surface's font and colour of texts; `format` as for `DrawTextExA`. Mode
    /// and background colour of the surface are left as they were.
    void PaintText(const CString& text, CRect box, UINT format) const;
    /// The same on a ground of its own, which covers what is there.
    void PaintTextOn(COLORREF ground, const CString& text, CRect box, UINT format) const;
    /// A line from a point on, turned about it by the font's escapement, on what is there.
    void PaintTurned(const CPoint& start, const CString& text) const;
    /// The lines of a scale, from the bottom up, with their labels measured in the surface's font.
    std::vector<melkar::ScaleStep> ScaleSteps(const melkar::ScalePixels& on, int decimals) const;
    /// Labels of a scale right of the canvas, `gap` pixels from it.
    void DrawRightLabels(const std::vector<melkar::ScaleStep>& steps, int gap) const;
    /// The head of a text that fits a fixed room of `bytes`, cutting no character in two.
    CString Limited(const CString& text, int bytes) const;
    int Days() const { return m_saDates.GetSize(); } ///< how many days there are
    /// The colour of texts that the profile has for this graph, or `otherwise`, mostly black: what stands in for each
    /// colour of a text that no other key gives.
    COLORREF TextColorOr(COLORREF otherwise) const { return HasTextColor() ? m_crTexts : otherwise; }
    /// While it lives, texts on a surface have that colour, if there is one, in place of the surface's own.
    std::optional<melkar::ScopedTextColor> TextColorOn(HDC surface) const;
    bool HasTextColor() const { return m_crTexts != melkar::kNoColor; } ///< whether the profile has one
    std::string Utf8(const CString& text) const;                        ///< a text of the picture for `Shown`
    std::string ShownMessage(const CString& message) const;             ///< a message as it is painted, for `Shown`

    CString m_strNoRecordsMessage;  ///< shown if no day has records
    COLORREF m_crNoRecords = 0;     ///< its colour
    CString m_strNoDataMessage;     ///< shown if no day has data
    COLORREF m_crNoData = 0;        ///< its colour
    CString m_strExcludeMessage;    ///< shown if all days are left out
    COLORREF m_crExclude = 0;       ///< its colour
    int m_bNoRecords = 0;           ///< every day has status 4
    int m_bExclude = 0;             ///< every day has status 1, 2 or 3
    int m_bNoData = 0;              ///< every day has status 2 or 3
    HWND m_hWnd = nullptr;          ///< the host's window, never used
    HDC m_hDC = nullptr;            ///< device context that the graph suits; the caller's
    HDC m_hMemDC = nullptr;         ///< working surface: all painting goes here
    HBITMAP m_hBitmap = nullptr;    ///< bitmap of the working surface
    HBITMAP m_hOldBitmap = nullptr; ///< what the working surface held before
    CString m_strLocale;            ///< locale of dates
    CString m_strDateFormatType;    ///< key of the date format in the date profile
    CString m_strDateFormatSpan;    ///< stands between the two dates of a period
    CString m_strFont;              ///< face of all chart fonts
    int m_nCharset = 0;             ///< character set of all chart fonts

public:
    int m_nViewMode = 0; ///< 1 sends the picture to the second shared surface

protected:
    int m_nLang = 0;                            ///< language number of the profile
    CIniReader m_Ini;                           ///< bound to "..\conf\graph.cnf"
    CString m_strSection;                       ///< the graph's own section of the profile
    CRect m_rcGraph;                            ///< the whole graph; at (0, 0) on a working surface of its own
    CRect m_rcTitle;                            ///< the title's text
    CRect m_rcCanvas;                           ///< the plot area
    CRect m_rcSideBar;                          ///< a strip at the left
    int m_nOriginX = 0;                         ///< where the picture lands on the shared surface
    int m_nOriginY = 0;                         ///< likewise
    COLORREF m_crBase = 0;                      ///< ground of the graph
    COLORREF m_crCanvas = 0;                    ///< ground of the plot area
    COLORREF m_crPen = 0;                       ///< frames and scale lines
    COLORREF m_crSideBar = 0;                   ///< kept; no painting uses it
    COLORREF m_crTexts = melkar::kNoColor;      ///< see `TextColorOr`
    COLORREF m_crTextsOfAll = melkar::kNoColor; ///< the same of all graphs
    CText m_Title;                              ///< text and looks of the title

public:
    CStringArray m_saValues;   ///< figures as text, in the order that the class sets
    CStringArray m_saDates;    ///< one date text per day; its size is the number of days
    CStringArray m_saDateEnds; ///< last day of a slot that spans a period; for the caller or a derived class to fill
    int m_bClickEnabled = 1;   ///< 1: clicks are tested
    int m_bHoverEnabled = 1;   ///< 1: mouse moves are tested

protected:
    int m_nTargetSize = 0; ///< points: legends of target and average
    int m_nValueSize = 0;  ///< points: figures on the bars

public:
    CDWordArray m_dwaStatus; ///< per day: 0 figures, 1 excluded, 2 and 3 no data, 4 no records

protected:
    int m_nTitleSpace = 3;          ///< room above the canvas in half title heights
    int m_nMessageSize = 32;        ///< points: status messages
    int m_bCoach = 0;               ///< lighter axis labelling
    int m_bDirectOutput = 0;        ///< 1: paints straight onto the device context
    HDC m_hGMemDC = nullptr;        ///< receives the picture; the caller's, as the two below
    HDC m_hGMemDCCir = nullptr;     ///< receives it while `m_nViewMode` is 1
    HDC m_hGMemDCBalloon = nullptr; ///< holds the clean picture

private:
    struct KeyRows;
    struct Cycle;

    MELKAR_LOCAL bool PrepareSurface(const CRect& area);
    MELKAR_LOCAL void FreeSurface();
    MELKAR_LOCAL void FillGraph();
    MELKAR_LOCAL void JudgeStatuses();
    MELKAR_LOCAL bool IsTitleShown() const { return m_Title.m_crColor != m_crBase; }
    MELKAR_LOCAL bool IsExcludedShown() const { return m_bExclude && !m_bNoData && !m_bNoRecords; }
    MELKAR_LOCAL void PaintMessage(const CString& message, COLORREF color);
    MELKAR_LOCAL HFONT PlainFont(int size, int escapement, int weight, const CString& face) const;

    bool m_ownsMemDC = false; ///< the working surface is the graph's, not the caller's
};
