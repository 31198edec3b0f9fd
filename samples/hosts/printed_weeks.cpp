#include "printed_weeks.h"

#include <utility>

namespace {

constexpr int kDaysOfWeek = 7;
constexpr int kEighthLine = 8; // ends a week
constexpr long kNothingToPrint = -1;

} // namespace

std::vector<CPrintedWeeks::Sheet> CPrintedWeeks::Sheets(char* file) {
    std::vector<Sheet> sheets;
    for (int week = 0;; ++week) {
        const long count = ReadWeekDataFile(file, week);
        const bool isThere = m_weeksRead >= week && count > 0 && count <= kDaysOfWeek;
        if (!isThere)
            return sheets;
        for (int day = week == 0 ? m_nFirstDay : 1; day <= count; ++day)
            sheets.push_back({week, day});
    }
}

void CPrintedWeeks::DrawSheet(const CRect& area, char* file, const Sheet& sheet) {
    char none[] = "";
    if (m_weekAtHand != sheet.week)
        ReadWeekDataFile(file, sheet.week);
    m_Day[sheet.day - 1].Draw(area, none);
}

long CPrintedWeeks::ReadWeekDataFile(char* file, int page) {
    m_weeksRead = 0;
    m_weekAtHand = page;
    const long count = CWeeklyCircadian::ReadWeekDataFile(file, page);
    const bool isWhole = m_weeksRead > page && page >= 0;
    return count == kNothingToPrint && isWhole ? kDaysOfWeek : count;
}

long CPrintedWeeks::SetDayData(int day, double from, double to, CString date, int status, int steps, int actCal,
                               int totalCal, double time, CStringArray* events, CStringArray* levels, double* intensity,
                               int toroken, float exercise) {
    m_weeksRead += day == kEighthLine;
    return CWeeklyCircadian::SetDayData(day, from, to, std::move(date), status, steps, actCal, totalCal, time, events,
                                        levels, intensity, toroken, exercise);
}
