#pragma once

#include <MelkarCommon/platform/geometry.h>

#include <algorithm>
#include <cstdint>

/// @file
/// The rows of a weekly sheet. Days and rows count from 1: Monday is 1, Sunday 7. Device units; divisions truncate.
///
///      screen, from a Wednesday          page 0, from a Wednesday      page 1 of 4 lines
///     +------------------------+        +------------------------+        +------------------------+
///     | Wed                    |        |                        |  Mon   | Mon                    |
///     | Thu                    |        |                        |  Tue   | Tue                    |
///     | Fri                    |        | Wed                    |  Wed   | Wed                    |
///     | Sat                    |        | Thu                    |   .    |                        |
///     | Sun                    |        | Fri                    |   .    |                        |
///     |                        |        | Sat                    |        |                        |
///     |                        |        | Sun                    |  Sun   |                        |
///     +------------------------+        +------------------------+        +------------------------+

namespace melkar {

constexpr int kWeekDays = 7;

/// y of the upper edge of row `row` of `rows`, counted from 0 (the last one's lower edge is that of row `rows`).
constexpr int RowTop(const CRect& area, int row, int rows) {
    return static_cast<int>(area.top + (std::int64_t{area.bottom} - area.top) * row / rows);
}

/// The row of a day on the screen: the first date stands at the top, days before it have no height, and neither have
/// those behind the last of `rows` (at least 1).
constexpr CRect ScreenRow(const CRect& area, int day, int firstDay, int rows) {
    const int row = std::clamp(day - firstDay, 0, rows);
    const int next = std::clamp(day + 1 - firstDay, 0, rows);
    return {area.left, RowTop(area, row, rows), area.right, RowTop(area, next, rows)};
}

/// The row of a day on paper, where each weekday keeps its place.
constexpr CRect PrintRow(const CRect& area, int day) {
    return {area.left, RowTop(area, day - 1, kWeekDays), area.right, RowTop(area, day, kWeekDays)};
}

/// Whether a day is on a page: on the first one (0) from the first date on, on later ones those before the line that
/// ends the count, Monday always and Sunday never. Pages below 0 have a Monday at most, as the first date.
constexpr bool IsOnPage(int day, int page, int firstDay, long count) {
    if (page == 0 || (page < 0 && day == 1))
        return firstDay <= day;
    if (page < 0)
        return false;
    return day == 1 || (day < kWeekDays && count > day);
}

} // namespace melkar
