#pragma once

#include <string>

/// @file
/// What is said on the error stream: "melkar: ..." a line. On a terminal the first word is coloured, unless the
/// environment has a NO_COLOR that isn't empty, or a TERM that is dumb.

namespace melkar::tool {

void Warn(const std::string& what);
void Complain(const std::string& what);

} // namespace melkar::tool
