#pragma once

#include <MelkarCommon/frame/data_file.h>

/// @file
/// The data files of the bar family: head rows, then one row per day.

namespace melkar {

constexpr std::size_t kHeadLimit = 1278; ///< characters of a head row, line end included; a longer one goes on below
constexpr std::size_t kRowLimit = 1279;  ///< the same of a day row

/// Hands each of the remaining day rows to `take`. @return 0, or 102 if there was none.
template <class Take> long ReadDays(DataFile& file, Take take) {
    long result = kNoDays;
    while (const CsvRow* row = file.Next(kRowLimit)) {
        take(*row);
        result = kOk;
    }
    return result;
}

} // namespace melkar
