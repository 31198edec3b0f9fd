#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/frame/graph.h>

#include <functional>
#include <optional>
#include <vector>

/// @file
/// Bars of days.

namespace melkar {
struct ScalePixels;
struct ShownAxis;
struct ShownItem;
struct ShownFigure;
struct ShownSeries;
} // namespace melkar

/// One bar per day, or a stack of up to ten series per day, on a scale from the profile.
///
/// A single series measures its bars from 0, stacked ones from the bottom of the scale. After `Draw` the bar rectangles
/// stay in `m_oaBarRects`, on which clicks and hovering work. A derived class whose days are of another kind, such as a
/// span from a lowest to a highest figure, sets `m_fnDayRect` and `m_fnDayText`.
///
/// @code{.cpp}
/// HDC page = CreatePageSurface("steps.pdf", PageFormat::Pdf, 900, 500, 96);
/// {
///     CBarGraph month(nullptr, page, "STEPS", nullptr, nullptr, nullptr);
///     month.SetDirectOutput(1); // onto the page itself
///     month.SetPrintTarget(1);
///     if (month.ReadDataFile(path) == melkar::kOk)
///         for (int day = 0; day < month.m_saDates.GetSize(); ++day)
///             month.m_saTargets.Add("8000");
///     month.Draw(CRect(0, 0, 900, 500), path);
/// }
/// DeleteDC(page); // the file appears
/// @endcode
class MELKAR_API CBarGraph : public CGraph {
public:
    /// Arguments as for `CGraph`.
    CBarGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon);
    ~CBarGraph() override;

    using CGraph::OnClick;
    using CGraph::OnMouseMove;

    long ClearArrays() override;
    /// @return 0; 101 with everything kept if the file can't be opened; 103 after an exception.
    long ReadDataFile(char* path) override;
    long ReadIniFile(char* path) override;
    /// Reads the file anew and draws. If it can't be opened the former figures stay, a line in the log names it, and
    /// the result is still 0: ask `ReadDataFile` where a missing file matters. Once a day lay above the scale, the big
    /// scale stays until `ResetGraphMeasure`. Switches (`SetPrintTarget`, ...) count from the next `Draw`.
    /// @return 0, 201 without a device context, -999 after an exception while drawing.
    long Draw(CRect area, char* path) override;
    void SetCanvasRect() override;

    // Steps of the draw cycle; a derived class changes one by overriding it.
    virtual long DrawBarChart();       ///< the bars, and their rectangles. @return 0
    virtual long DrawCanvas();         ///< frame of the canvas. @return 0
    virtual long DrawCanvasMeasure();  ///< scale lines and labels. @return 0
    virtual void DrawTargetAverage();  ///< the overlays that are switched on
    virtual void DrawTarget();         ///< target legend and line
    virtual void CalcTargetRect();     ///< places `m_rcTarget`
    virtual void DrawAverage();        ///< average legend and line
    virtual long DrawValueOnBar();     ///< figures. @return 0
    virtual long DrawDate();           ///< date strip. @return 0
    virtual long DrawDateDailyCoach(); ///< date strip by calendar, for a derived class. @return 0

    // Mouse, between draws; points are in the coordinates of the shared surface.
    virtual long OnClick(int x, int y);       ///< tests as below. @return 0: only the other form gives the day
    virtual long OnClick(CPoint point);       ///< @return day under the point, or -1
    virtual long OnMouseMove(long x, long y); ///< as below. @return 0
    /// Brings the clean picture back and paints a balloon beside the pointer if a bar is under it.
    /// @return the bar's index in `m_oaBarRects`, or -1
    virtual long OnMouseMove(CPoint point);

    virtual void DrawSecExs() {}     ///< nothing here: extras of a derived class
    virtual long DrawVAxsLabel();    ///< vertical axis label. @return 0
    virtual long DrawHAxsLabel();    ///< horizontal axis label. @return 0
    virtual int ResetGraphMeasure(); ///< back to the scale of the profile. @return 0
    virtual int GetGraphMeasure();   ///< takes the big scale, if there is one, if a day lies above the top. @return 0

    void SetPrintTarget(int print) { m_bPrintTarget = print; }   ///< 1: target legend and line from the next `Draw` on
    void SetPrintAverage(int print) { m_bPrintAverage = print; } ///< 1: average legend and line, likewise
    unsigned long GetBarColor() const { return m_crBar; }        ///< colour of bars below their target
    unsigned long GetBarColor2() const { return m_crBar2; }      ///< colour of bars at or above it
    /// The same, from the next `Draw` on.
    void SetBarColor2(unsigned long color) { m_crBar2 = static_cast<COLORREF>(color); }
    melkar::Contents Shown() const;         ///< with an item for each day, also where a message stands in for them all
    static melkar::ClassKeys ProfileKeys(); ///< the keys that this class reads
    static melkar::DataTables DataFiles();  ///< the data file that it reads
    static constexpr int kMostSeries = 10;  ///< per day

protected:
    /// Series per day, within 1 to `kMostSeries` whatever `m_nSeriesCount` says.
    int SeriesCount() const;
    double FigureOf(int day, int series) const; ///< the figure as a number; 0 for what is none
    double SumOf(int day) const;                ///< of all series
    melkar::ScalePixels LeftScale() const;      ///< as it stands on the canvas

    // For data readers.
    void ForgetDays();     ///< days, figures and bars; not the targets
    void RepairChartMax(); ///< 10000, and a log line, in place of a top of the scale of 0 or less

    // For painters.
    /// Four rows of the surface's pen from y - 2 to y + 1; a dash or dot pattern lines up.
    void DrawThickLine(int fromX, int toX, int y);
    void DrawLegendLine(const CRect& text); ///< the sample of a line legend, left of its text
    /// The target's line over the days with a figure and a target on the scale; its pattern runs on from day to day.
    void DrawTargetLine();
    /// The average's line across the canvas, if it lies on the scale.
    void DrawAverageLine();
    CString AverageText() const; ///< label, average and unit

    int m_nDefChartMax = 0;                ///< top of the scale in the profile
    int m_nDefChartInterval = 0;           ///< its step
    int m_nDefChartMaxBig = 0;             ///< top of the big scale in the profile
    int m_nDefChartIntervalBig = 0;        ///< its step
    int m_nChartMax = 0;                   ///< top of the scale in use
    int m_nChartMin = 0;                   ///< bottom of the scale
    double m_dChartInterval = 0;           ///< step of the scale in use
    int m_nChartMaxBig = 0;                ///< top of the big scale; 0: there is none
    int m_nChartIntervalBig = 0;           ///< its step
    int m_nSeriesCount = 1;                ///< at most `kMostSeries`
    int m_bPolyline = 0;                   ///< a single series is painted as a line
    COLORREF m_crSeries[kMostSeries] = {}; ///< colours of the series, from the bottom

public:
    /// Bar rectangles of the last painting, index day x series count + series.
    CObArray m_oaBarRects;

protected:
    COLORREF m_crBar = 0;     ///< below its target, or without one
    COLORREF m_crBar2 = 0;    ///< at or above its target
    CString m_strVAxsLabel;   ///< the unit
    CString m_strHAxsLabel;   ///< label below the dates
    int m_nVAxsSize = 0;      ///< kept; no painting uses it
    int m_nHAxsSize = 0;      ///< kept; no painting uses it
    CString m_strTargetLabel; ///< legend of the target

public:
    CStringArray m_saTargets; ///< target per day; a day without an entry has none

protected:
    COLORREF m_crTarget = 0;   ///< line of the target
    int m_nTargetLeft = 0;     ///< kept; no painting uses it
    int m_nTargetTop = 0;      ///< kept; no painting uses it
    CString m_strAverageLabel; ///< legend of the average
    CString m_strAverage;      ///< the average as text, for the application or a derived class to set
    COLORREF m_crAverage = 0;  ///< line of the average
    int m_nAverageLeft = 0;    ///< kept; no painting uses it
    int m_nAverageTop = 0;     ///< kept; no painting uses it
    CRect m_rcTarget;          ///< box of the target legend
    int m_bPrintTarget = 0;    ///< 1: target legend and line are painted
    int m_bPrintAverage = 0;   ///< 1: average legend and line are painted
    int m_bValueOnBar = 1;     ///< 1: figures stand on the bars
    int m_bDateStrip = 1;      ///< 0: no dates below the canvas
    int m_nDateEscapement = 0; ///< tenths of a degree
    CString m_strHeaderField0; ///< field 0 of the header, kept for the application
    CString m_strHeaderField1; ///< field 1, likewise

public:
    int m_nFirstWeekday = 0; ///< weekday number of the first day, for the strip by calendar

protected:
    int m_nDecimals = 0;          ///< of scale labels and figures
    int m_nScaleFlag = 0;         ///< 1: the data file set the scale; kept
    int m_bValueTransparent = 0;  ///< 0: figures stand on the canvas colour
    int m_nVMeasureSize = 0;      ///< points: scale labels
    int m_nVMeasureLabelSize = 0; ///< points: vertical axis label
    int m_nHMeasureSize = 0;      ///< kept; no painting uses it
    int m_nHMeasureLabelSize = 0; ///< points: horizontal axis label
    int m_nDateSize = 0;          ///< points: dates
    int m_nBalloonSize = 20;      ///< points: balloons
    COLORREF m_crBalloon = 0;     ///< ground of balloons

    /// Where a day stands on the canvas, in the working surface's units, for a derived class to set; empty here. With
    /// it a day is one bar however many figures it has, painted there and answering there alone, not below it; the
    /// highest of the figures, not their sum, decides on the big scale. It is asked once per painting of a day, and
    /// `m_oaBarRects` holds the answer for each of the figures.
    ///
    /// @code{.cpp}
    /// class CPressure : public CBarGraph { // two series: systolic, diastolic
    /// public:
    ///     CPressure(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon)
    ///         : CBarGraph(window, dc, section, shared, second, balloon) {
    ///         m_nSeriesCount = 2;
    ///         m_fnDayRect = [this](int day) {
    ///             const melkar::BarSpan span = melkar::BarOf(m_rcCanvas, day, Days());
    ///             return CRect(span.left, melkar::FigureY(LeftScale(), FigureOf(day, 0)), span.right,
    ///                          melkar::FigureY(LeftScale(), FigureOf(day, 1)));
    ///         };
    ///         m_fnDayText = [this](int day) { return m_saValues[2 * day] + "/" + m_saValues[2 * day + 1]; };
    ///     }
    /// };
    /// @endcode
    std::function<CRect(int day)> m_fnDayRect;
    /// What a day says, on its bar and below the date in its balloon, as in "142/93"; for a derived class to set. Empty
    /// here: the sum of its figures on the bar, the figure of the series in the balloon.
    std::function<CString(int day)> m_fnDayText;

private:
    struct KeyRows;
    struct File;
    struct Cycle;
    MELKAR_LOCAL double ReachOf(int day) const;
    MELKAR_LOCAL void DrawStackedBars();
    MELKAR_LOCAL void DrawSingleBars();
    MELKAR_LOCAL void DrawPlacedBars();
    MELKAR_LOCAL void PaintBar(int day, const CRect& bar);
    MELKAR_LOCAL void DrawPolyline(int day);
    MELKAR_LOCAL bool HasReachedTarget(int day) const;
    MELKAR_LOCAL COLORREF BarColorOf(int day) const;
    MELKAR_LOCAL CString FigureText(int day) const;
    MELKAR_LOCAL CString BalloonText(int bar) const;
    MELKAR_LOCAL CString BalloonLines(int bar) const;
    MELKAR_LOCAL bool IsFigureWritten(int day) const;
    MELKAR_LOCAL std::vector<std::optional<int>> TargetHeights() const;
    MELKAR_LOCAL std::vector<melkar::ShownSeries> SeriesShown() const;
    MELKAR_LOCAL melkar::ShownItem DayShown(int day) const;
    MELKAR_LOCAL melkar::ShownFigure FigureShown(int day, int series) const;
    MELKAR_LOCAL void AddTargetsTo(melkar::Contents& contents) const;
    MELKAR_LOCAL void AddAverageTo(melkar::Contents& contents) const;
    MELKAR_LOCAL void DrawFigure(const CString& figure, const RECT& bar);
    MELKAR_LOCAL int HitTest(CPoint point, int enabled) const;
    MELKAR_LOCAL void DrawBalloon(CPoint pointer, int bar);
    MELKAR_LOCAL int MiddleOf(int day) const; ///< x of the middle of its bar
    template <class PaintDay> long DrawStrip(PaintDay paintDay);
    MELKAR_LOCAL void DrawTurnedCaption(int day, const CString& caption);
    MELKAR_LOCAL CString PeriodCaption(int day) const;
    MELKAR_LOCAL bool IsCaptionedByCalendar(int day) const;
};
