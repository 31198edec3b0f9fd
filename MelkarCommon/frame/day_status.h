#pragma once

#include <MelkarCommon/platform/types.h>

/// @file
/// What a data file says of a day, and the questions that painters and readers ask of it. Any other number counts as
/// a day with figures that no reader takes.

namespace melkar {

/// The status of a day.
enum class DayStatus : DWORD {
    Figures = 0,   ///< the day has figures
    Excluded = 1,  ///< the person left it out
    NoData = 2,    ///< nothing was measured
    NoDataToo = 3, ///< a second reason of the host's; treated alike
    NoRecords = 4, ///< nothing is known of the day
};

/// The status that a number of a data file stands for.
constexpr DayStatus ToDayStatus(long status) { return static_cast<DayStatus>(static_cast<DWORD>(status)); }

/// @name Questions
/// @{

/// Whether a day is of that kind.
constexpr bool HasFigures(DayStatus status) { return status == DayStatus::Figures; }
constexpr bool IsExcluded(DayStatus status) { return status == DayStatus::Excluded; }
constexpr bool HasNoData(DayStatus status) { return status == DayStatus::NoData || status == DayStatus::NoDataToo; }
constexpr bool HasNoRecords(DayStatus status) { return status == DayStatus::NoRecords; }
/// @}

} // namespace melkar
