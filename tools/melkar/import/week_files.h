#pragma once

#include "day_book.h"
#include "epoch_book.h"
#include "plan.h"

#include <string>
#include <vector>

/// @file
/// Weekly files, and minutes at levels, from epochs.

namespace melkar::importer {

/// What is to be made.
struct WeekFiles {
    const Plan* plan = nullptr;
    std::vector<Bound> figures; ///< beside the levels, in the order in which the book has them
    std::string path;           ///< of the file to write
};

/// As `WriteDayFiles`, of a kind whose rows hold levels.
std::string WriteWeekFile(const WeekFiles& files, const EpochBook& epochs, const DayBook& book, Notes& notes);

} // namespace melkar::importer
