#include "printed_weeks.h"

#include "level_minutes.h"

#include <utility>

namespace {

constexpr int kDaysOfWeek = 7;
constexpr int kEighthLine = 8; // ends a week
constexpr long kNothingToPrint = -1;

} // namespace

long CPrintedWeeks::ReadWeekDataFile(char* file, int page) {
    m_weeksRead = 0;
    const long count = CWeeklyCircadian::ReadWeekDataFile(file, page);
    const bool isWhole = m_weeksRead > page && page >= 0;
    return count == kNothingToPrint && isWhole ? kDaysOfWeek : count;
}

long CPrintedWeeks::SetDayData(int day, double from, double to, CString date, int status, int steps, int actCal,
                               int totalCal, double, CStringArray* events, CStringArray* levels, double* intensity,
                               int toroken, float exercise) {
    m_weeksRead += day == kEighthLine;
    return CWeeklyCircadian::SetDayData(day, from, to, std::move(date), status, steps, actCal, totalCal,
                                        MinutesFromLevel(*levels, from), events, levels, intensity, toroken, exercise);
}
