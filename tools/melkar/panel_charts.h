#pragma once

#include "kinds.h"

#include <memory>

/// @file
/// The declarative panels as a host uses them: it pushes points and values in; the library knows no file of them.

namespace melkar::tool {

/// A bare panel. No data file.
std::unique_ptr<Chart> MakePanel(const ChartOptions& options);
/// A panel with points. Data file: a head row, then x, y, size, colour (#RRGGBB) and 1 to join the
/// point to the one before.
std::unique_ptr<Chart> MakePlot(const ChartOptions& options);
/// A pie. Data file: a value a line, in the order of the profile's colours.
std::unique_ptr<Chart> MakePie(const ChartOptions& options);
/// The text under the option's key. No data file.
std::unique_ptr<Chart> MakeText(const ChartOptions& options);

} // namespace melkar::tool
