#pragma once

#include <MelkarCommon/bars/bar_graph.h>

/// @file
/// Bars of days with lines over them.

/// Line series over the bars, on a scale of their own at the right: a dot for each day and line, and a stroke to the
/// dot of the day before. A day whose status isn't 0 breaks the line on both sides.
///
/// No reader fills `m_saLineValues`; the application or a derived class does. A day without an entry, or with an empty
/// one, has neither dot nor stroke.
class MELKAR_API CLineGraph : public CBarGraph {
public:
    /// Arguments as for `CGraph`.
    CLineGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon);
    ~CLineGraph() override;

    long ClearArrays() override;
    long ReadIniFile(char* path) override;
    void SetCanvasRect() override;
    long DrawBarChart() override;
    long DrawCanvasMeasure() override;
    int ResetGraphMeasure() override;       ///< both scales; the bottom of the right one stays
    virtual long DrawVLineAxsLabel();       ///< label of the right scale, reading downwards. @return 0
    melkar::Contents Shown() const;         ///< the lines as series behind the bars
    static melkar::ClassKeys ProfileKeys(); ///< the keys that this class reads
    static constexpr int kMostLines = 10;   ///< per day

protected:
    int LineCount() const; ///< lines per day, within 0 to `kMostLines` whatever `m_nLineCount` says
    /// A text turned to read downwards, centred along the canvas, `gap` pixels and `share` of its height left of the
    /// graph's right edge.
    void DrawDownwardLabel(const CString& text, double share, double gap);

    int m_bLines = 1; ///< 0 turns every line feature off

public:
    int m_nLineCount = 1; ///< lines per day
    /// Values as text, index day x line count + line.
    CStringArray m_saLineValues;

protected:
    COLORREF m_crLine[kMostLines] = {};       ///< strokes and dots of each line
    COLORREF m_crLineTarget[kMostLines] = {}; ///< kept; no painting uses it
    int m_nDefLineMax = 0;                    ///< top of the right scale in the profile
    int m_nDefLineInterval = 0;               ///< its step
    int m_nDefLineMaxBig = 0;                 ///< top of its big scale in the profile
    int m_nDefLineIntervalBig = 0;            ///< its step

public:
    /// One rectangle per day and line from the last drawing; its y is the value's, its middle the dot's.
    CObArray m_oaLineRects;

protected:
    int m_bLineMeasure = 1;          ///< 0 turns the right scale off
    CString m_strVLineAxsLabel;      ///< label of the right scale
    int m_nVLineAxsSize = 0;         ///< kept; no painting uses it
    double m_dChartLineMax = 0;      ///< top of the right scale
    double m_dChartLineMin = 0;      ///< its bottom
    double m_dChartLineInterval = 0; ///< its step
    int m_nLineDecimals = 0;         ///< of its labels
    int m_nChartLineMaxBig = 0;      ///< top of its big scale
    int m_nChartLineIntervalBig = 0; ///< step of that

private:
    struct KeyRows;
    MELKAR_LOCAL melkar::ScalePixels RightScale() const;
    MELKAR_LOCAL const CString& LineValue(int day, int line) const;
    MELKAR_LOCAL bool HasDot(int day, int line) const;
    MELKAR_LOCAL void DrawDot(int day, int line);
    MELKAR_LOCAL void AddLineTo(melkar::Contents& contents, int line) const;
};
