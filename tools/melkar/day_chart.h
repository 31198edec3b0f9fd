#pragma once

#include "kinds.h"

#include <memory>

namespace melkar::tool {

/// The sheet of one day of a weekly file. Reading throws if the file has no day of the date asked for.
std::unique_ptr<Chart> MakeDay(const ChartOptions& options);

} // namespace melkar::tool
