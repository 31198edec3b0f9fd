#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/circadian/circadian_graph.h>

/// @file
/// The activity sheets of a week.

namespace melkar {
class DataFile;
class SharedProfile;
struct DayRecord;
struct WeekHead;
} // namespace melkar

/// The activity sheets of a week below each other, a `CCircadianGraph` for each weekday. It paints nothing itself: it
/// reads a weekly data file, hands each day to its graph and draws the graphs, on the screen with `Draw` and on a page
/// with `DrawWeek`, each from a file of its own.
class MELKAR_API CWeeklyCircadian {
public:
    /// @code{.cpp}
    /// CWeeklyCircadian week(nullptr, view, "WEEK", view, nullptr, balloon);
    /// week.Draw(CRect(0, 0, 900, 7 * 160), path);
    /// @endcode
    ///
    /// Arguments as for `CGraph`; all seven graphs take them, from one reading of the profile.
    CWeeklyCircadian(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon);
    virtual ~CWeeklyCircadian();
    CWeeklyCircadian(const CWeeklyCircadian&) = delete;
    CWeeklyCircadian& operator=(const CWeeklyCircadian&) = delete;

    /// Reads the screen's file up to the Sunday of its first week. Intensities and levels of all days are reset before.
    /// A header without a date leaves it at that, with a line in the log. @return 0, also after an exception; 210 if
    /// the file can't be opened.
    virtual long ReadDataFile(char* file);
    /// Binds sheet and graphs to another window and device context, and to those surfaces that aren't null. @return 0
    virtual long Initialize(HWND window, HDC dc, HDC shared, HDC second, HDC balloon);
    /// Reads the file and draws its days from the top of `area` on, each in one of `m_nRows` rows; a file that can't be
    /// opened leaves reset days. @return 0
    virtual long Draw(CRect area, char* file);
    /// Empties levels and intensities of all days; date, status and figures stay. @return 0
    virtual long ResetCircadian();
    /// Hands a day to its graph, Monday 1 to Sunday 7; the arguments are those of `CCircadianGraph::Set`. Another
    /// number does nothing. @return 0
    virtual long SetDayData(int day, double from, double to, CString date, int status, int steps, int actCal,
                            int totalCal, double time, CStringArray* events, CStringArray* levels, double* intensity,
                            int toroken, float exercise);
    /// Reads the print file and draws a week of it, page 0 being the first; each weekday has its seventh of `area`, and
    /// rows without a day are painted white on the device context. @return 0; -1 with nothing drawn as below
    virtual long DrawWeek(CRect area, char* file, int page);
    /// Reads the print file as far as the page, whose days remain. The file has to end with the page: a week that is
    /// followed by its eighth line counts as done.
    /// @return the weekday of the last line, counted on from Monday, of the page in which the file ends (the one asked
    ///         for or an earlier one); -1 if no line of it has data, if the page is done, without a first date and for
    ///         pages below 0; 0 after an exception; 210 if the file can't be opened.
    virtual long ReadWeekDataFile(char* file, int page);

    void Show2Dialog(int mode);                               ///< 1 sends the pictures to the second shared surface
    HDC GetGMemDC() const { return m_hGMemDC; }               ///< the shared surface, the caller's
    HDC GetGMemDCCir() const { return m_hGMemDCCir; }         ///< the second shared surface, the caller's
    HDC GetGMemDCBalloon() const { return m_hGMemDCBalloon; } ///< the surface of the clean picture, the caller's
    static melkar::DataTables ScreenFiles();                  ///< of `ReadDataFile`
    static melkar::DataTables PrintFiles();                   ///< of `ReadWeekDataFile`

protected:
    HWND m_hWnd;   ///< the host's window, never used
    HDC m_hDC;     ///< device context that the sheet suits; the caller's
    CRect m_rcDay; ///< handed to the graphs; what they draw in replaces it

public:
    CCircadianGraph m_Day[7]; ///< Monday to Sunday; whether they paint directly is set at each

protected:
    int m_nFirstDay = 1;        ///< weekday of the first date, Monday 1 to Sunday 7
    CString m_strFirstDate;     ///< first date of the file, YYYYMMDD
    CString m_strHeaderField1;  ///< field 1 of its header, kept for the application
    double m_dModerateFrom = 0; ///< of the file last read
    double m_dModerateTo = 0;   ///< likewise

public:
    int m_nRows = 7; ///< rows of the screen sheet

protected:
    HDC m_hGMemDC = nullptr;        ///< the surfaces that `Initialize` gave
    HDC m_hGMemDCCir = nullptr;     ///< likewise
    HDC m_hGMemDCBalloon = nullptr; ///< likewise

private:
    MELKAR_LOCAL CWeeklyCircadian(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon,
                                  const melkar::SharedProfile& profileOfAll);
    MELKAR_LOCAL long ReadScreenWeek(const char* file);
    MELKAR_LOCAL long ReadPrintWeeks(const char* file, int page);
    MELKAR_LOCAL long ReadPrintDays(melkar::DataFile& file, int page);
    MELKAR_LOCAL bool TakeHead(const melkar::WeekHead& head);
    MELKAR_LOCAL void TakeDay(int day, melkar::DayRecord& record);
};
