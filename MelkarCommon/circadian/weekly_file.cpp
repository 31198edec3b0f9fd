#include <MelkarCommon/circadian/weekly_file.h>

#include <MelkarCommon/circadian/circadian_layout.h>
#include <MelkarCommon/platform/datetime.h>
#include <MelkarCommon/support/numbers.h>

#include <algorithm>
#include <limits>

namespace melkar {

namespace {

constexpr double kTopLevel = 9.0;
constexpr int kLevelDecimals = 3;
/// Times are counted in units of which 15 make a minute.
constexpr double kMinutesPerUnit = 0.06666666666666667;

/// The screen's file counts units.
CString ScreenMinutes(const CsvRow& line, int column) {
    const double minutes = line.DoubleField(column) * kMinutesPerUnit;
    return minutes < 0 ? CString("0") : FormatFixed(minutes, kLevelDecimals);
}

/// The printed sheet's file has minutes, which stay as they are written.
CString PrintMinutes(const CsvRow& line, int column) {
    return line.IntField(column) < 0 ? CString("0") : line.Field(column);
}

/// Where a file keeps what, columns counted from 0.
struct Columns {
    int status;
    int date;
    int steps;
    int time;
    int actCal;
    int totalCal;
    int levels; ///< the first of nine
    CString (*minutes)(const CsvRow&, int column);
    int events;    ///< the first of ten
    int intensity; ///< the first of 720
    int toroken;
    int exercise;
};
constexpr Columns kScreenColumns = {.status = 0,
                                    .date = 1,
                                    .steps = 5,
                                    .time = 8,
                                    .actCal = 11,
                                    .totalCal = 12,
                                    .levels = 15,
                                    .minutes = ScreenMinutes,
                                    .events = 54,
                                    .intensity = 64,
                                    .toroken = 784,
                                    .exercise = 785};
/// The minutes of level 4 are the time figure as well; the exercise amount stands as far behind as in the screen's
/// file.
constexpr Columns kPrintColumns = {.status = 1,
                                   .date = 0,
                                   .steps = 2,
                                   .time = 8,
                                   .actCal = 3,
                                   .totalCal = 4,
                                   .levels = 5,
                                   .minutes = PrintMinutes,
                                   .events = 14,
                                   .intensity = 24,
                                   .toroken = 744,
                                   .exercise = 785};

/// What is no level of intensity is rest.
double IntensityIn(const CsvRow& line, int column) {
    const double level = line.DoubleField(column);
    return level >= 0.0 && level <= kTopLevel ? level : 0.0;
}

float ToFloat(double value) {
    constexpr double kMost = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(value, -kMost, kMost));
}

void ReadDay(const CsvRow& line, const Columns& at, DayRecord& day) {
    day.status = line.IntField(at.status);
    day.date = line.Field(at.date);
    day.steps = line.IntField(at.steps);
    day.time = line.DoubleField(at.time) * kMinutesPerUnit;
    day.actCal = line.IntField(at.actCal);
    day.totalCal = line.IntField(at.totalCal);
    day.levels.SetSize(kLevels);
    for (int level = 0; level < kLevels; ++level)
        day.levels.SetAt(level, at.minutes(line, at.levels + level));
    day.events.SetSize(kMostEvents);
    for (int event = 0; event < kMostEvents; ++event)
        day.events.SetAt(event, line.Field(at.events + event));
    for (int i = 0; i < kDayValues; ++i)
        day.intensity[static_cast<std::size_t>(i)] = IntensityIn(line, at.intensity + i);
    day.toroken = line.IntField(at.toroken);
    day.exercise = ToFloat(line.DoubleField(at.exercise));
}

} // namespace

void ReadScreenDay(const CsvRow& line, DayRecord& day) { ReadDay(line, kScreenColumns, day); }

void ReadPrintDay(const CsvRow& line, DayRecord& day) { ReadDay(line, kPrintColumns, day); }

int WeekdayOf(const CString& date) {
    constexpr int kSunday = 1;
    COleDateTime day;
    day.SetDateTime(ToInt(date.Left(4)), ToInt(date.Mid(4, 2)), ToInt(date.Right(2)), 0, 0, 0);
    if (!day.IsValid())
        return 0;
    const int weekday = day.GetDayOfWeek();
    return weekday == kSunday ? 7 : weekday - 1;
}

} // namespace melkar
