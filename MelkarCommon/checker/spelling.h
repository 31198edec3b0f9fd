#pragma once

#include <string>
#include <string_view>
#include <vector>

/// @file
/// Internal. What a mistyped name was meant to be.

namespace melkar {

/// Letters to put in, leave out, change or swap with their neighbours to make one of the other, in any case.
int StepsBetween(std::string_view a, std::string_view b);

/// The closest of the names; empty if none is close enough to be meant.
std::string ClosestName(std::string_view word, const std::vector<std::string>& names);

} // namespace melkar
