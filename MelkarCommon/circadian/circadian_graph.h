#pragma once

#include <MelkarCommon/frame/graph.h>

#include <optional>
#include <string>

/// @file
/// The activity sheet of a day.

namespace melkar {
struct ShownItem;
struct ShownMark;
struct ShownSeries;
} // namespace melkar

/// The activity sheet of one day: a strip of intensity classes, the day's intensity as a filled profile over 24 hours
/// with the summary in it, the date above and the events below, and at the right the minutes at each of nine levels.
///
/// The sheet reads no file: `Set` hands it the whole day, and `Draw` shows that day any number of times. A sheet that
/// `Set` never reached shows an empty day. `LANG` 0 and 1 of the profile have looks of their own: 1 leaves the right
/// panel out, 0 shows the exercise amount in place of the time figure and a line for each level.
///
/// @code{.cpp}
/// CCircadianGraph sheet(nullptr, view, "DAY", view, nullptr, balloon);
/// std::vector<double> intensity(CCircadianGraph::kValues, 0.0);
/// for (int i = 8 * 30; i < 9 * 30; ++i) // a walk from eight to nine
///     intensity[i] = 4;
/// CStringArray minutes, events;
/// for (const char* level : {"210", "95", "40", "60", "0", "0", "0", "0", "0"})
///     minutes.Add(level);
/// events.Add("1230");
/// sheet.Set(nullptr, view, CRect(0, 0, 900, 160), "", "", 4, 6, &minutes, "20260302", 0, 0, &events, intensity.data(),
///           0, 8123, 240, 2100, 60, 0, 3.5F);
/// sheet.Draw(CRect(0, 0, 900, 160), nullptr);
/// @endcode
class MELKAR_API CCircadianGraph : public CGraph {
public:
    /// Intensity values of a day: one for 2 minutes, from midnight.
    static constexpr int kValues = 720;

    /// Arguments as for `CGraph`. A desktop of at most 820 pixels' width makes the summary smaller.
    CCircadianGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon);
    ~CCircadianGraph() override;

    long ReadIniFile(char* path) override;
    /// Draws the day that `Set` left; the path isn't used.
    /// @return 0, whatever happens: without a device context nothing is drawn
    long Draw(CRect area, char* path) override;
    void DrawSideBar() override; ///< nothing: the sheet has no side bar
    /// The messages judge the day's own status. @return -1 if it was painted, else 0
    long DrawNoRecordsMessage() override;
    long DrawNoDataMessage() override;
    long DrawExcludeMessage() override;

    /// Takes a day in place of the former one; everything is copied.
    /// @param window as for `Initialize` @param dc likewise @param area kept until `Draw` gives another
    /// @param extra1 kept; no painting uses it @param extra2 likewise
    /// @param from first intensity level of the moderate class @param to its last one
    /// @param levels minutes at the levels 1 to 9, as text; null counts as empty
    /// @param date of the day, YYYYMMDD @param dayIndex kept; no painting uses it @param reserved likewise
    /// @param events times as text, hours x 100 + minutes; the first ten show, "" and "0" don't; null counts as empty
    /// @param intensity 720 values, a level from 0 to 9 for each 2 minutes from midnight; null is a day at rest
    /// @param status 0 a day with figures, 1 excluded, 2 and 3 no data, 4 no records
    /// @param steps of the day @param actCal activity calories @param totalCal total calories
    /// @param time a figure of the day in the profile's `TIMEUNIT`
    /// @param toroken not 0: the `TOROKEN` text ends the summary
    /// @param exercise exercise amount; -1 or less for none
    virtual void Set(HWND window, HDC dc, CRect area, CString extra1, CString extra2, double from, double to,
                     CStringArray* levels, CString date, int dayIndex, int reserved, CStringArray* events,
                     double* intensity, int status, int steps, int actCal, int totalCal, double time, int toroken,
                     float exercise);

    // Steps of the draw cycle; a derived class changes one by overriding it.
    virtual void DrawLeftGraph();           ///< the left panel with all that belongs to it
    virtual void DrawRightGraph();          ///< minutes at the levels; nothing under `LANG` 1
    virtual void WriteMessage();            ///< the day's figures, in black on what the panel holds
    virtual void SetLeftRect();             ///< lays out `m_rcLeft`
    virtual void SetRightRect();            ///< lays out `m_rcRight`; `m_rcLeft` is set
    virtual void CalcLongestDay();          ///< finds `m_strLongestDay`
    virtual void DrawDate();                ///< date above the left panel; lays out `m_rcDate`
    virtual void DrawPolygon();             ///< hours below the left panel, and the day's profile
    virtual void DrawClasses();             ///< class strip at the left
    virtual void DrawEvent();               ///< marks below the left panel
    melkar::Contents Shown() const;         ///< levels as items, events as marks, date and summary as texts
    static melkar::ClassKeys ProfileKeys(); ///< the keys that this class reads

protected:
    int m_nReserved = 0;               ///< kept; no painting uses it
    CString m_strDate;                 ///< YYYYMMDD
    int m_nDayStatus = 0;              ///< 0 a day with figures, 1 excluded, 2 and 3 no data, 4 no records
    CRect m_rcLeft;                    ///< left panel: the day's profile
    CRect m_rcDate;                    ///< the date above it
    double m_dModerateFrom;            ///< level at which the moderate class begins
    double m_dModerateTo;              ///< level at which it ends
    CString m_strExtra1;               ///< kept; no painting uses it
    CString m_strExtra2;               ///< likewise
    CStringArray m_saEvents;           ///< hours x 100 + minutes, as text
    int m_nDayIndex = 0;               ///< kept; no painting uses it
    COLORREF m_crDate = 0;             ///< kept; no painting uses it
    COLORREF m_crDateBack = 0;         ///< likewise
    COLORREF m_crVigorous = 0;         ///< vigorous class: strip and bars
    COLORREF m_crModerate = 0;         ///< moderate class
    COLORREF m_crLight = 0;            ///< light class
    COLORREF m_crEvent = 0;            ///< event marks
    CString m_strVigorousLabel;        ///< vigorous class, reading upwards
    CString m_strModerateLabel;        ///< moderate class
    CString m_strLightLabel;           ///< light class
    CString m_strCalmLabel;            ///< kept; no painting uses it
    COLORREF m_crPolygon = 0;          ///< fill of the profile
    double m_dIntensity[kValues] = {}; ///< a level, 0 to 9, for each 2 minutes from midnight
    int m_nSteps = 0;                  ///< steps
    int m_nActCal = 0;                 ///< activity calories
    int m_nTotalCal = 0;               ///< total calories
    double m_dTime = 0;                ///< a figure in `TIMEUNIT`
    float m_fExercise = -1;            ///< -1 or less: none
    CString m_strStepUnit;             ///< stands behind the steps
    /// Stands behind the activity calories. Two blanks become a line break when the summary is first written, except
    /// under `LANG` 0.
    CString m_strActCalUnit;
    CString m_strTotalCalUnit;     ///< stands behind the total calories
    CString m_strTimeUnit;         ///< stands behind the time figure
    CString m_strExerciseUnit;     ///< stands behind the exercise amount
    CString m_strExerciseLabel;    ///< stands before it
    int m_bToroken = 0;            ///< not 0: `m_strToroken` ends the summary
    CString m_strToroken;          ///< last line of the summary of a flagged day
    CString m_strDayNames[7];      ///< abbreviated, Monday first
    CString m_strLongestDay;       ///< the widest of them
    CRect m_rcRight;               ///< right panel: minutes at the levels
    CStringArray m_saLevelMinutes; ///< at the levels 1 to 9, as text
    CString m_strIntensityLabel;   ///< stands above the minutes
    CString m_strMinLabel;         ///< their unit
    int m_nRightMax = 40;          ///< end of the scale of minutes
    int m_nRightStep = 20;         ///< step of its lines
    int m_nDateFontSize = 14;      ///< points: date; also the top margin
    int m_nClassFontSize = 12;     ///< points: class labels
    int m_nAxisFontSize = 12;      ///< points: figures of both panels; also the bottom margin
    int m_nSummaryFontSize = 12;   ///< points; 10 on a narrow desktop

private:
    friend class CWeeklyCircadian; // resets its days and asks for their language
    struct KeyRows;
    struct Cycle;

    MELKAR_LOCAL CRect MeasureClassLabel(const CString& label) const;
    MELKAR_LOCAL void DrawGridLines();
    MELKAR_LOCAL void DrawHours();
    MELKAR_LOCAL void DrawHour(int hour);
    MELKAR_LOCAL CString SummaryText() const;
    MELKAR_LOCAL CString ExerciseText() const;
    MELKAR_LOCAL void DrawLevelFigures();
    MELKAR_LOCAL void DrawMinuteScale();
    MELKAR_LOCAL CRect DrawMinute(int minutes, int x);
    MELKAR_LOCAL void DrawScaleCaptions(const CRect& lastFigure);
    MELKAR_LOCAL void DrawLevelBar(int level);
    MELKAR_LOCAL COLORREF ClassColorOf(int level) const;
    MELKAR_LOCAL CString DateCaption() const;
    MELKAR_LOCAL double MinutesAt(int level) const;
    MELKAR_LOCAL int EventCount() const;
    MELKAR_LOCAL std::optional<CRect> EventBox(int event) const;
    MELKAR_LOCAL melkar::ShownSeries ClassShown(const CString& label, COLORREF color) const;
    MELKAR_LOCAL melkar::ShownItem LevelShown(int level) const;
    MELKAR_LOCAL melkar::ShownMark BorderShown(const std::string& label, double level, int y) const;
    MELKAR_LOCAL void AddLevelsTo(melkar::Contents& contents) const;
    MELKAR_LOCAL void AddBordersTo(melkar::Contents& contents) const;
    MELKAR_LOCAL void AddEventsTo(melkar::Contents& contents) const;

    int m_nEventSize = 0; ///< width and height of the event marks last painted
};
