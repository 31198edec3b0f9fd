#pragma once

#include "day_book.h"
#include "plan.h"

#include <string>
#include <vector>

/// @file
/// The data files of a kind from the figures of days.

namespace melkar::importer {

/// What is to be made.
struct DayFiles {
    const Plan* plan = nullptr;
    std::vector<Bound> figures;    ///< in the order in which the book has them
    std::string caption = "MMM D"; ///< pattern of what stands below a day
    std::string path;              ///< of the file to write
};

/// Writes the file and what belongs beside it. Days without an entry are filled. Throws `Refusal` if there is nothing
/// to write, too much to fill, or no place. @return what was written, for the summary
std::string WriteDayFiles(const DayFiles& files, const DayBook& book, Notes& notes);

/// The first and the last day: those wanted, else those of the entries. Throws `Refusal` if there is none.
template <class Entries> DayRange SpanOf(const Entries& days, const DayRange& wanted) {
    if (days.empty())
        throw Refusal("no row could be used");
    return {wanted.first.value_or(days.begin()->first), wanted.last.value_or(days.rbegin()->first)};
}

/// Tells of the days that are missing before `day`, and refuses so many that a date must be mistyped.
/// @param first of the days that are missing @param line of the row behind them; 0 if there is none
void FillDays(int first, int day, long line, Notes& notes);

/// "31 days, 20260301 to 20260331"
std::string ShowSpan(const DayRange& span);

} // namespace melkar::importer
