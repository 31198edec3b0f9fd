#pragma once

#include <MelkarCommon/circadian/circadian_graph.h>
#include <MelkarCommon/frame/data_table.h>
#include <MelkarCommon/platform/arrays.h>
#include <MelkarCommon/platform/cstring.h>

#include <array>
#include <cstddef>

/// @file
/// The lines of the two weekly data files. They carry the same things in different columns: one file is that of the
/// screen, the other that of the printed sheet.

namespace melkar {

/// A line of these files has 786 columns; what goes on behind so many characters is taken for a further line.
constexpr std::size_t kScreenLineLimit = 4999;
constexpr std::size_t kPrintLineLimit = 5119;

/// One day as its line gives it.
struct DayRecord {
    CString date; ///< YYYYMMDD
    int status = 0;
    int steps = 0;
    int actCal = 0;
    int totalCal = 0;
    double time = 0;                                          ///< minutes
    CStringArray levels;                                      ///< minutes at the levels 1 to 9
    CStringArray events;                                      ///< ten times, hours x 100 + minutes; "" for none
    std::array<double, CCircadianGraph::kValues> intensity{}; ///< one level for 2 minutes
    int toroken = 0;
    float exercise = 0;
};

/// What the head rows say.
struct WeekHead {
    CString firstDate; ///< YYYYMMDD
    CString kept;
    double from = 0; ///< bounds of the moderate class; in the print file alone
    double to = 0;
};

void ReadScreenHead(DataFile& file, WeekHead& head);
/// Takes a day from a line of the screen's file into `day`, whose memory is used again. A column that isn't there is
/// 0 or empty.
void ReadScreenDay(const CsvRow& line, DayRecord& day);
DataTable ScreenWeekTable();

/// The same of the printed sheet's file.
void ReadPrintHead(DataFile& file, WeekHead& head);
void ReadPrintDay(const CsvRow& line, DayRecord& day);
DataTable PrintWeekTable();

/// The weekday of a date, Monday 1 to Sunday 7: its year in the first four characters, its month in the two behind
/// them, its day in the last two. 0 if there is no such day.
int WeekdayOf(const CString& date);

} // namespace melkar
