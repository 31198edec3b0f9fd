#include <MelkarCommon/circadian/weekly_circadian.h>

#include <MelkarCommon/circadian/circadian_layout.h>
#include <MelkarCommon/circadian/weekly_file.h>
#include <MelkarCommon/circadian/weekly_layout.h>
#include <MelkarCommon/frame/day_status.h>
#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/frame/results.h>
#include <MelkarCommon/support/dates.h>
#include <MelkarCommon/support/ring_log.h>
#include <MelkarCommon/support/support.h>

#include <algorithm>
#include <iterator>

using melkar::DataFile;
using melkar::DayRecord;
using melkar::kWeekDays;
using melkar::kWhite;

namespace {

constexpr int kEighthLine = kWeekDays + 1; ///< of a week in the print file: behind its Sunday

} // namespace

CWeeklyCircadian::CWeeklyCircadian(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon)
    : CWeeklyCircadian(window, dc, section, shared, second, balloon, melkar::SharedProfile()) {}

CWeeklyCircadian::CWeeklyCircadian(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon,
                                   const melkar::SharedProfile&)
    : m_hWnd(window),
      m_hDC(dc), m_Day{{window, dc, section, shared, second, balloon}, {window, dc, section, shared, second, balloon},
                       {window, dc, section, shared, second, balloon}, {window, dc, section, shared, second, balloon},
                       {window, dc, section, shared, second, balloon}, {window, dc, section, shared, second, balloon},
                       {window, dc, section, shared, second, balloon}} {}

CWeeklyCircadian::~CWeeklyCircadian() = default;

long CWeeklyCircadian::Initialize(HWND window, HDC dc, HDC shared, HDC second, HDC balloon) {
    for (CCircadianGraph& day : m_Day)
        day.Initialize(window, dc, shared, second, balloon);
    m_hWnd = window;
    m_hDC = dc;
    if (shared)
        m_hGMemDC = shared;
    if (second)
        m_hGMemDCCir = second;
    if (balloon)
        m_hGMemDCBalloon = balloon;
    return 0;
}

void CWeeklyCircadian::Show2Dialog(int mode) {
    for (CCircadianGraph& day : m_Day)
        day.m_nViewMode = mode;
}

long CWeeklyCircadian::ResetCircadian() {
    for (CCircadianGraph& day : m_Day) {
        day.m_saLevelMinutes.RemoveAll();
        day.m_saLevelMinutes.SetSize(melkar::kLevels);
        std::fill(std::begin(day.m_dIntensity), std::end(day.m_dIntensity), 0.0);
    }
    return 0;
}

long CWeeklyCircadian::SetDayData(int day, double from, double to, CString date, int status, int steps, int actCal,
                                  int totalCal, double time, CStringArray* events, CStringArray* levels,
                                  double* intensity, int toroken, float exercise) {
    if (day >= 1 && day <= kWeekDays)
        m_Day[day - 1].Set(m_hWnd, m_hDC, m_rcDay, "", "", from, to, levels, date, day, 0, events, intensity, status,
                           steps, actCal, totalCal, time, toroken, exercise);
    return 0;
}

void CWeeklyCircadian::TakeDay(int day, DayRecord& record) {
    SetDayData(day, m_dModerateFrom, m_dModerateTo, record.date, record.status, record.steps, record.actCal,
               record.totalCal, record.time, &record.events, &record.levels, record.intensity.data(), record.toroken,
               record.exercise);
}

/// @return whether the head has a date; the weekday stays as it was if not.
bool CWeeklyCircadian::TakeHead(const melkar::WeekHead& head) {
    m_strFirstDate = head.firstDate;
    m_strHeaderField1 = head.kept;
    const int weekday = melkar::WeekdayOf(m_strFirstDate);
    if (weekday == 0) {
        melkar::LogText("CWeeklyCircadian: the first date is none [" + m_strFirstDate + "]");
        return false;
    }
    m_nFirstDay = weekday;
    return true;
}

melkar::DataTables CWeeklyCircadian::ScreenFiles() { return {melkar::ScreenWeekTable()}; }
melkar::DataTables CWeeklyCircadian::PrintFiles() { return {melkar::PrintWeekTable()}; }

long CWeeklyCircadian::ReadDataFile(char* file) {
    const melkar::HostDirectory here(m_Day[0].Host());
    try {
        melkar::LogText("CWeeklyCircadian::ReadDataFile");
        return ReadScreenWeek(file);
    } catch (...) {
        melkar::LogText("CWeeklyCircadian::ReadDataFile catch exception");
        return melkar::kOk;
    }
}

long CWeeklyCircadian::ReadScreenWeek(const char* path) {
    ResetCircadian();
    DataFile file(path);
    if (!file.IsOpen()) {
        writeLogCode(kLogFile, melkar::kNoWeekFile);
        return melkar::kNoWeekFile;
    }
    melkar::WeekHead head;
    melkar::ReadScreenHead(file, head);
    if (!TakeHead(head))
        return melkar::kOk;
    const melkar::ClassBounds bounds = melkar::UsualBounds(m_Day[0].m_nLang);
    m_dModerateFrom = bounds.from;
    m_dModerateTo = bounds.to;
    DayRecord record;
    for (int day = m_nFirstDay; day <= kWeekDays; ++day) {
        const melkar::CsvRow* line = file.Next(melkar::kScreenLineLimit);
        if (!line)
            break;
        melkar::ReadScreenDay(*line, record);
        TakeDay(day, record);
    }
    return melkar::kOk;
}

long CWeeklyCircadian::ReadWeekDataFile(char* file, int page) {
    const melkar::HostDirectory here(m_Day[0].Host());
    try {
        return ReadPrintWeeks(file, page);
    } catch (...) {
        return melkar::kOk;
    }
}

long CWeeklyCircadian::ReadPrintWeeks(const char* path, int page) {
    ResetCircadian();
    DataFile file(path);
    if (!file.IsOpen()) {
        writeLogCode(kLogFile, melkar::kNoWeekFile);
        return melkar::kNoWeekFile;
    }
    melkar::WeekHead head;
    melkar::ReadPrintHead(file, head);
    if (!TakeHead(head))
        return melkar::kNothingToDraw;
    constexpr melkar::ClassBounds kUsual = melkar::UsualBounds(melkar::kLangExercise); // where the file says none
    m_dModerateFrom = head.from == 0 ? kUsual.from : head.from;
    m_dModerateTo = head.to == 0 ? kUsual.to : head.to;
    return ReadPrintDays(file, page);
}

/// @return the days of the week in which the page or the file ends, -1 if none of them has data
long CWeeklyCircadian::ReadPrintDays(DataFile& file, int page) {
    int day = m_nFirstDay - 1;
    int withoutData = day; // days before the first date count as such
    int pagesDone = 0;
    DayRecord record;
    while (const melkar::CsvRow* line = file.Next(melkar::kPrintLineLimit)) {
        if (pagesDone > page)
            break;
        ++day;
        melkar::ReadPrintDay(*line, record);
        if (melkar::HasNoData(melkar::ToDayStatus(record.status)))
            ++withoutData;
        TakeDay(day, record);
        if (day == kEighthLine) {
            ++pagesDone;
            day = withoutData = 0;
        }
    }
    return day == withoutData ? melkar::kNothingToDraw : day;
}

long CWeeklyCircadian::Draw(CRect area, char* file) {
    const melkar::HostDirectory here(m_Day[0].Host());
    const melkar::SharedDateFormats formatsOfAll;
    ReadDataFile(file);
    m_nRows = std::max(m_nRows, 1);
    char none[] = "";
    for (int day = 1; day <= kWeekDays; ++day) {
        const CRect row = melkar::ScreenRow(area, day, m_nFirstDay, m_nRows);
        if (row.top != row.bottom)
            m_Day[day - 1].Draw(row, none);
    }
    return 0;
}

long CWeeklyCircadian::DrawWeek(CRect area, char* file, int page) {
    const melkar::HostDirectory here(m_Day[0].Host());
    const melkar::SharedDateFormats formatsOfAll;
    const long count = ReadWeekDataFile(file, page);
    if (count == melkar::kNothingToDraw)
        return melkar::kNothingToDraw;
    char none[] = "";
    for (int day = 1; day <= kWeekDays; ++day) {
        const CRect row = melkar::PrintRow(area, day);
        if (melkar::IsOnPage(day, page, m_nFirstDay, count))
            m_Day[day - 1].Draw(row, none);
        else
            DrawRectangle(m_hDC, row, kWhite, kWhite, 0);
    }
    return 0;
}
