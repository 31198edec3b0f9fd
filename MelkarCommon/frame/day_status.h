#pragma once

#include <MelkarCommon/platform/types.h>

/// @file
/// What a data file says of a day, and the questions that painters and readers ask of it. Any other number counts as
/// a day with figures that no reader takes.

namespace melkar {

enum class DayStatus : DWORD {
    Figures = 0,
    Excluded = 1,
    NoData = 2,
    NoDataToo = 3, ///< a second reason of the host's; treated alike
    NoRecords = 4,
};

constexpr DayStatus ToDayStatus(long status) { return static_cast<DayStatus>(static_cast<DWORD>(status)); }

constexpr bool HasFigures(DayStatus status) { return status == DayStatus::Figures; }
constexpr bool IsExcluded(DayStatus status) { return status == DayStatus::Excluded; }
constexpr bool HasNoData(DayStatus status) { return status == DayStatus::NoData || status == DayStatus::NoDataToo; }
constexpr bool HasNoRecords(DayStatus status) { return status == DayStatus::NoRecords; }

} // namespace melkar
