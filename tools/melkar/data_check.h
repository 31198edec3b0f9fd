#pragma once

#include "kinds.h"

#include <string>
#include <vector>

/// @file
/// Whether a data file suits the kind it is drawn as. The library takes any file and makes the best of it, so that a
/// wrong one shows as a chart of nothing.

namespace melkar::tool {

/// Sentences, each with the file's name, a line and mostly a column, both from 1; at most five, and a last one that
/// counts the others. None if the file suits, can't be read or isn't text in columns.
std::vector<std::string> DataWarnings(const Kind& kind, const ChartOptions& options, const std::string& path);

} // namespace melkar::tool
