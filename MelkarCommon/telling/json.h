#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/frame/report_contents.h>

#include <string>
#include <vector>

/// @file
/// What a picture shows, for programs.

namespace melkar {

/// All of it as one JSON object, as `docs/contents.schema.json` tells: texts as they are, colours as "#RRGGBB", and
/// null for a number that isn't finite.
MELKAR_API std::string JsonOf(const Contents& contents);

/// The same of a picture of several parts, such as the sheets of a week: an object with its kind and its parts.
MELKAR_API std::string JsonOf(const std::string& kind, const std::vector<Contents>& parts);

/// The same of a report: its title and its pages.
MELKAR_API std::string JsonOf(const ShownReport& report);

} // namespace melkar
