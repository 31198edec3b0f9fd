#pragma once

#include "kinds.h"

namespace melkar::tool {

/// A picture file, as large as fits, in the middle of a ground of the canvas's colour. If a file of the same name with
/// "-mask" before its suffix stands beside it, the picture shows where that is white.
std::unique_ptr<Chart> MakeImageChart(const ChartOptions& options);

std::string MaskBeside(const std::string& picture); ///< whether it is there or not

} // namespace melkar::tool
