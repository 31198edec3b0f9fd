#pragma once

#include "draw.h"
#include "options.h"

#include <string>

/// @file
/// The arguments of a window, as `melkar show` takes them and hands them on to the program that opens it.

namespace melkar::tool {

struct ShowOptions {
    ChartArguments chart;
    std::string size = "900x500";
};

void AddShowOptions(CLI::App& app, ShowOptions& options);

/// With all arguments checked. Throws for what makes no sense, and where base, profile or section aren't there.
Request RequestOf(const ShowOptions& options);

} // namespace melkar::tool
