#pragma once

#include "kinds.h"

#include <memory>

/// @file
/// Weeks of sheets, which aren't graphs but hold seven of them.

namespace melkar::tool {

/// The sheet of a week on the screen.
std::unique_ptr<Chart> MakeWeek(const ChartOptions& options);
/// One page of the printed sheet.
std::unique_ptr<Chart> MakePrintedWeek(const ChartOptions& options);

} // namespace melkar::tool
