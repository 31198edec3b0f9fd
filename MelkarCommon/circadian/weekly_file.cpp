#include <MelkarCommon/circadian/weekly_file.h>

#include <MelkarCommon/circadian/circadian_layout.h>
#include <MelkarCommon/platform/datetime.h>
#include <MelkarCommon/support/numbers.h>

namespace melkar {

namespace {

constexpr int kLevelDecimals = 3;

/// What is no level of intensity is rest.
void TakeIntensity(DayRecord& day, const CsvRow& line, const ColumnInfo& column) {
    line.DoubleFields(column.index, kDayValues, day.intensity.data());
    for (double& level : day.intensity)
        if (!(level >= 0.0 && level <= kLevels))
            level = 0.0;
}

void TakeTime(DayRecord& day, const CsvRow& line, const ColumnInfo& column) {
    day.time = line.DoubleField(column.index) * kMinutesPerCount;
}

/// The screen's file has counts.
void TakeCounts(DayRecord& day, const CsvRow& line, const ColumnInfo& column) {
    day.levels.SetSize(kLevels);
    for (int i = 0; i < kLevels; ++i) {
        const double minutes = line.DoubleField(column.index + i) * kMinutesPerCount;
        day.levels.SetAt(i, minutes < 0 ? CString("0") : FormatFixed(minutes, kLevelDecimals));
    }
}

/// The printed sheet's file has minutes, which stay as they are written.
void TakeMinutes(DayRecord& day, const CsvRow& line, const ColumnInfo& column) {
    day.levels.SetSize(kLevels);
    for (int i = 0; i < kLevels; ++i) {
        const int at = column.index + i;
        day.levels.SetAt(i, line.IntField(at) < 0 ? CString("0") : line.Field(at));
    }
}

/// The head row that both files have.
struct WeekColumns : Columns<WeekHead> {
    static constexpr Row firstDate = Date<&G::firstDate>(0, "first date").Means("of the first day").InHead(1);
    static constexpr Row kept = Text<&G::kept>(1, "field 1").Means("kept for a host").InHead(1);
};

/// What a day has in both files, in different columns.
struct DayColumns : Columns<DayRecord> {
    static constexpr Row Steps(int index) { return Whole<&G::steps>(index, "steps").Example("11929|8088|14248|5017"); }
    static constexpr Row ActCal(int index) {
        return Whole<&G::actCal>(index, "activity calories", "kcal").Example("691|540|813|320");
    }
    static constexpr Row TotalCal(int index) {
        return Whole<&G::totalCal>(index, "total calories", "kcal").Example("2265|2030|2303|1890");
    }
    static constexpr Row TimeFigure(int index) {
        return Figure<&G::time>(index, "time", "min")
            .Means("figure in the summary")
            .PerUnit(kCountsPerMinute)
            .By(TakeTime);
    }
    static constexpr Row Events(int index) {
        return Time<&G::events>(index, "event").Means("mark below the day; empty for none").Each(kMostEvents);
    }
    static constexpr Row Intensity(int index) {
        return Figure<&G::intensity>(index, "intensity")
            .Means("level, one for 2 minutes from midnight; rest if it is none")
            .Each(kDayValues)
            .Within(0, kLevels)
            .By(TakeIntensity)
            .Needed()
            .Example("0|0|0|0|0|0|1.2|3.4|1.5|1.1|1.3|1.8|2.5|1.4|1.2|1.1|1.6|2.2|4.6|6.8|1.9|1.2|0.8|0");
    }
    static constexpr Row Toroken(int index) {
        return Whole<&G::toroken>(index, "toroken").Means("not 0: the text TOROKEN in the summary").Example("0");
    }
    static constexpr Row Exercise(int index) {
        return Figure<&G::exercise>(index, "exercise", "MET h").Means("-1 or less for none").Example("2.5");
    }
};

} // namespace

struct ScreenWeekHead : WeekColumns {
    static constexpr Form form = Form{3, "day"}
                                     .Limit(kScreenLineLimit)
                                     .Note("Days begin with that of the first date. A sheet of the week ends with "
                                           "its Sunday.");
    static constexpr Row rows[] = {firstDate, kept};
};

struct ScreenDay : DayColumns {
    static constexpr Row rows[] = {
        DayStatus<&G::status>(0),
        Date<&G::date>(1, "date"),
        Steps(5),
        TimeFigure(8).Example("660"),
        ActCal(11),
        TotalCal(12),
        Figure<&G::levels>(15, "level", "min")
            .Means("time at the levels 1 to 9")
            .PerUnit(kCountsPerMinute)
            .Each(kLevels)
            .NotBelow(0)
            .By(TakeCounts)
            .Example("4560|1770|900|240|90|240|330|0|0"),
        Events(54).Example("0630|0830||||||||"),
        Intensity(64),
        Toroken(784),
        Exercise(785),
    };
};

/// The minutes of level 4 are the time figure as well; the exercise amount stands as far behind as in the screen's
/// file.
struct PrintWeekHead : WeekColumns {
    static constexpr Form form =
        Form{2, "day"}.Limit(kPrintLineLimit).WithWeeks().Note("Days begin with that of the first date.");
    static constexpr Row rows[] = {
        firstDate,
        kept,
        Figure<&G::from>(3, "from")
            .Means("level at which the moderate class begins; 4 if it is 0")
            .InHead(1)
            .Example("4"),
        Figure<&G::to>(4, "to").Means("level at which it ends; 6 if it is 0").InHead(1).Example("6"),
    };
};

struct PrintDay : DayColumns {
    static constexpr Row rows[] = {
        Date<&G::date>(0, "date"),
        DayStatus<&G::status>(1),
        Steps(2),
        ActCal(3),
        TotalCal(4),
        Figure<&G::levels>(5, "level", "min")
            .Means("time at the levels 1 to 9")
            .Each(kLevels)
            .NotBelow(0)
            .By(TakeMinutes)
            .Example("724|82|32|64|14|0|10|28|0"),
        TimeFigure(8),
        Events(14).Example("0630|0830||||||||"),
        Intensity(24),
        Toroken(744),
        Exercise(785),
    };
};

void ReadScreenHead(DataFile& file, WeekHead& head) { ReadHeads<ScreenWeekHead>(head, file); }
void ReadScreenDay(const CsvRow& line, DayRecord& day) { TakeRow<ScreenDay>(day, line); }
DataTable ScreenWeekTable() { return TableOf<ScreenWeekHead, ScreenDay>(); }

void ReadPrintHead(DataFile& file, WeekHead& head) { ReadHeads<PrintWeekHead>(head, file); }
void ReadPrintDay(const CsvRow& line, DayRecord& day) { TakeRow<PrintDay>(day, line); }
DataTable PrintWeekTable() { return TableOf<PrintWeekHead, PrintDay>(); }

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
