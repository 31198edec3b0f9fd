#pragma once

#include "kinds.h"

#include <memory>

/// @file
/// The circadian family as a host uses it: weeks of sheets from a file, and the circle, whose minutes a host hands
/// over.

namespace melkar::tool {

/// The sheet of a week on the screen.
std::unique_ptr<Chart> MakeWeek(const ChartOptions& options);
/// One page of the printed sheet.
std::unique_ptr<Chart> MakePrintedWeek(const ChartOptions& options);
/// The intensity circle with its legend below it; the data file has a line of minutes for each level.
std::unique_ptr<Chart> MakeCircle(const ChartOptions& options);
/// The same with the legend beside it.
std::unique_ptr<Chart> MakeSeparateCircle(const ChartOptions& options);

} // namespace melkar::tool
