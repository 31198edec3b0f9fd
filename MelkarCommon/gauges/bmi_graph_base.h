#pragma once

#include <MelkarCommon/frame/graph.h>

/// @file
/// What a gauge of one figure needs.

/// What a gauge of one figure needs: a scale, a table of value classes with colours and captions, and the figure from a
/// data file. On its own it shows ground and title.
class MELKAR_API CBMIGraph_Base : public CGraph {
public:
    /// Arguments as for `CGraph`. Six classes.
    CBMIGraph_Base(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon);

    /// Reads the figure and finds its class. @return 0; 101 and 103 with the former figure kept.
    long ReadDataFile(char* path) override;
    long ReadIniFile(char* path) override;
    /// The frame first, then the data file: after a failure the gauge shows the former figure. @return 0, whatever
    /// failed; the log tells.
    long Draw(CRect area, char* path) override;
    /// Nothing: a gauge has no days that could lack records. @return 0
    long DrawNoRecordsMessage() override;

    /// The ground over the whole graph, which becomes the canvas. Leaves the transparent background mode behind, in
    /// which the figure is written. @return 0
    virtual long DrawCanvas();
    virtual long DrawValue(); ///< nothing here. @return 0

    melkar::Contents Shown() const;         ///< the title; a gauge has no messages
    static melkar::ClassKeys ProfileKeys(); ///< the keys that this class reads
    static melkar::DataTables DataFiles();  ///< the data file that it reads

protected:
    static constexpr int kMostClasses = 10; ///< room of the arrays
    static constexpr int kCaptionSize = 10; ///< points
    static constexpr int kFigureSize = 12;  ///< points

    /// Colour of a class from 0 on; a class beyond the table has its last colour.
    COLORREF ClassColor(int cls) const;
    bool IsBelowScale() const { return m_nClass < 0; }              ///< whether no bar is to be shown
    bool IsAboveScale() const { return m_nClass == m_nClassCount; } ///< whether the bar fills the scale
    /// The class that the figure is shown in: above the scale the last one, below it -1.
    MELKAR_LOCAL int ShownClass() const { return IsAboveScale() ? m_nClassCount - 1 : m_nClass; }
    /// A caption with its lines broken.
    MELKAR_LOCAL static CString CaptionOf(const CStringArray& captions, int cls);
    /// The figure as the gauge's only item. @param contents takes it @param text as painted @param area of its bar or
    /// disc @param band all that a bar or disc may take
    MELKAR_LOCAL void AddFigureTo(melkar::Contents& contents, const CString& text, const CRect& area,
                                  const CRect& band) const;

    int m_nClassCount = 6; ///< classes of values; up to `kMostClasses`
    int m_nMin = 0;        ///< low end of the scale
    int m_nMax = 0;        ///< high end of the scale
    double m_dValue = 0;   ///< the figure as a number
    CString m_strValue;    ///< the figure as the file wrote it, which is what the gauge shows
    int m_nClass = -1;     ///< -1 below the scale, `m_nClassCount` at or above it, else the class of the figure
    COLORREF m_crClass[kMostClasses] = {}; ///< colour of each class
    double m_dClassMax[kMostClasses] = {}; ///< upper bounds; a figure on a bound belongs to the next class
    CStringArray m_saClassCaption;         ///< caption of each class, for a derived class

private:
    struct KeyRows;
    struct Cycle;
    struct File;
};
