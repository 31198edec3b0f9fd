#pragma once

#include "arguments.h"
#include "draw.h"
#include "report.h"

#include <string>

/// @file
/// From arguments to what is to be done: all checked, all paths absolute.

namespace melkar::tool {

/// A sentence for the error stream.
struct UsageError {
    std::string sentence;
};

/// Throw what is wrong with the arguments.
Request DrawRequestOf(const Arguments& arguments);
ReportRequest ReportRequestOf(const Arguments& arguments);

/// Makes the base the current directory, so that relative paths mean something else from then on. Throws if there is no
/// profile from there, or no such section in it.
void EnterBase(const std::string& base, const std::string& section);

} // namespace melkar::tool
