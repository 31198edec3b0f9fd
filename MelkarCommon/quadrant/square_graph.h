#pragma once

#include <MelkarCommon/frame/graph.h>

#include <array>
#include <functional>

/// @file
/// A canvas of four quadrants, to plot on.

/// A square canvas cut into four coloured quadrants by two dividing lines, with a scale on each axis, a legend and the
/// share of each quadrant.
///
/// It is a frame to derive from: it reads the data file and draws, but it knows neither a scale nor where a day
/// belongs. A derived class sets the scales and the four counts in `GetGraphMeasure`, which runs behind
/// the reading, and puts its marks on the canvas by `DrawPoint` in `DrawTargetAverage`. `samples/hosts` holds one.
///
/// @code{.cpp}
/// class CDays : public CSquareGraph {
/// public:
///     using CSquareGraph::CSquareGraph;
///
///     long GetGraphMeasure() override {
///         m_nHMax = m_nVMax = 100;
///         m_nHMid = m_nVMid = 50;
///         m_nHStep = m_nVStep = 10;
///         return 0;
///     }
///     long DrawTargetAverage() override {
///         for (int day = 0; day < m_saDayField5.GetSize(); ++day) {
///             const double x = melkar::ToDouble(m_saDayField5[day]) / m_nHMax * m_rcCanvas.Width();
///             DrawPoint(m_rcCanvas.left + melkar::Truncate(x), m_rcCanvas.top + 20, m_strPoint);
///         }
///         return 0;
///     }
/// };
/// @endcode
class MELKAR_API CSquareGraph : public CGraph {
public:
    /// Arguments as for `CGraph`.
    CSquareGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon);
    ~CSquareGraph() override;

    long ClearArrays() override; ///< the arrays of this class; those of the frame stay. @return 0
    /// Sets the counts to 0 and reads the days; the target pair is that of the last one. Lines hold at most 6399
    /// characters, a longer one counts as several; head lines that aren't there are empty.
    /// @return 0; 101 with the former days kept; 103 with what was read so far.
    long ReadDataFile(char* path) override;
    long ReadIniFile(char* path) override; ///< the keys of this class alone. @return 0
    /// The former days show if the file can't be opened. @return 0, or what failed in the frame
    long Draw(CRect area, char* path) override;

    /// The legend, right of the canvas from its top down; long entries wrap.
    virtual void DrawSecExs();
    /// The vertical caption, upwards along the canvas. Every "__d__" in it becomes the level number for good: a later
    /// level shows only after the keys were read again. @return 0
    virtual long DrawVAxsLabel();
    /// The horizontal caption, its own height below the canvas. Leaves black as the colour of texts. @return 0
    virtual long DrawHAxsLabel();
    /// Finds the square, which becomes the canvas, fills the quadrants and writes the figures of the scales. A scale
    /// without range is divided in the middle and has no figures, nor has one whose step isn't above 0. @return 0
    virtual long DrawCanvas();
    virtual long DrawTargetAverage(); ///< nothing here: the place for the marks of a derived class. @return 0
    /// The box with the share of each quadrant, if `m_bRatioBox` is 1; frame and cross alone if nothing was counted.
    /// @return 0
    virtual long DrawPoints();
    /// A text with its middle on a pixel, in the font and colour that the surface holds, painted twice so that it
    /// stands out. @return 0; -1 with nothing painted outside of the canvas, whose edges count as inside
    virtual long DrawPoint(int x, int y, CString text);
    virtual long GetGraphMeasure(); ///< nothing here: the place for scales and counts. @return 0

    melkar::Contents Shown() const;         ///< an item for each quadrant: its share as text, its days as value
    static melkar::ClassKeys ProfileKeys(); ///< the keys that this class reads
    static melkar::DataTables DataFiles();  ///< the data file that it reads

protected:
    int m_bRatioBox = 1;          ///< 1: the box with the shares is painted
    int m_nLevel = 0;             ///< first level of the sum; replaces "__d__" in the vertical caption
    CString m_strLevelName;       ///< of the first level, from the file
    CString m_strTarget1;         ///< target across, from the file
    CString m_strTarget2;         ///< target upwards, from the file
    CString m_strAverage1;        ///< average across, from the file
    CString m_strAverage2;        ///< average upwards, from the file
    CString m_strAverage3;        ///< a third average, from the file
    CString m_strAveragePoint;    ///< mark of the average, for `DrawPoint`
    CString m_strPoint;           ///< mark of a day, likewise
    int m_nPointSize = 0;         ///< of the marks, points
    CStringArray m_saDayField5;   ///< field 5 of each day
    CStringArray m_saDayField11;  ///< field 11 of each day
    CStringArray m_saDayLevelSum; ///< counts at `m_nLevel` and above, in units of 15, one decimal
    int m_nVMax = 0;              ///< vertical scale: set by a derived class, as the seven that follow
    int m_nVMin = 0;              ///< low end
    int m_nVMid = 0;              ///< dividing line
    int m_nVStep = 0;             ///< from figure to figure
    int m_nHMax = 0;              ///< horizontal scale, likewise
    int m_nHMin = 0;              ///< low end
    int m_nHMid = 0;              ///< dividing line
    int m_nHStep = 0;             ///< from figure to figure
    CString m_strVAxsLabel;       ///< caption along the canvas
    CString m_strHAxsLabel;       ///< caption below it
    int m_nVAxsSize = 0;          ///< points: all texts but the marks
    int m_nHAxsSize = 0;          ///< kept; no painting uses it
    CString m_strLeftUpperLabel;  ///< legend of the quadrant
    CString m_strRightUpperLabel; ///< likewise
    CString m_strLeftLowerLabel;  ///< likewise
    CString m_strRightLowerLabel; ///< likewise
    COLORREF m_crLeftUpper = 0;   ///< colour of the quadrant
    COLORREF m_crRightUpper = 0;  ///< likewise
    COLORREF m_crLeftLower = 0;   ///< likewise
    COLORREF m_crRightLower = 0;  ///< likewise
    CRect m_rcLeftUpper;          ///< quadrants as last drawn
    CRect m_rcRightUpper;         ///< likewise
    CRect m_rcLeftLower;          ///< likewise
    CRect m_rcRightLower;         ///< likewise
    CString m_strTargetLabel;     ///< legend of the target
    CString m_strAverageLabel;    ///< legend of the average
    COLORREF m_crTarget = 0;      ///< colour of the target
    COLORREF m_crAverage = 0;     ///< colour of the average, for a derived class
    CString m_strLeftSpace;       ///< its width is the room left of the canvas, its height the step of the side
    CString m_strRightSpace;      ///< its width is the room right of the canvas
    int m_nLeftUpperCount = 0;    ///< days in the quadrant: set by a derived class, as the three that follow
    int m_nLeftLowerCount = 0;    ///< likewise
    int m_nRightUpperCount = 0;   ///< likewise
    int m_nRightLowerCount = 0;   ///< likewise

private:
    struct KeyRows;
    struct Cycle;
    struct Head;
    struct HeadColumns;
    struct Day;
    struct DayColumns;
    struct File;

    MELKAR_LOCAL void TakeHead(const Head& head);
    MELKAR_LOCAL void TakeDay(const Day& day, const Head& head);
    MELKAR_LOCAL CString LevelSum(const Day& day) const;
    MELKAR_LOCAL void LayOutCanvas();
    MELKAR_LOCAL void DrawFigures(int min, int max, int step,
                                  const std::function<CPoint(int value, const CRect& size)>& place);
    MELKAR_LOCAL void DrawVFigures();
    MELKAR_LOCAL void DrawHFigures();
    MELKAR_LOCAL void DrawShares(const CRect& box, int xm, int ym);
    MELKAR_LOCAL std::array<CString, 4> Shares() const;
    MELKAR_LOCAL void AddQuadrantTo(melkar::Contents& contents, const CString& label, COLORREF color, int count,
                                    const CString& share, const CRect& area) const;
};
