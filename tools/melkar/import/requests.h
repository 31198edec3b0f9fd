#pragma once

#include "day_book.h"
#include "figures.h"
#include "import.h"
#include "plan.h"

#include <optional>
#include <vector>

/// @file
/// What the forms read of a request alike. All throw `WrongRequest`.

namespace melkar::importer {

MomentFormat FormatOf(const Request& request);
std::optional<Decimals> DecimalsOf(const Request& request);
DayRange RangeOf(const Request& request);
std::string CaptionOf(const Request& request);

/// What becomes of each bound figure.
std::vector<FigureRule> RulesOf(const std::vector<Bound>& bound, bool addsUp);
/// The unit that a column names, if it is one and nobody told another.
void TakeUnit(Bound& bound, const std::string& unit);
/// Tells of figures whose unit nobody told.
void TellUnits(const std::vector<Bound>& bound, Notes& notes);
/// "31 rows, 2 of them outside of the days asked for"
std::string ShowRows(const DayBook& book, const char* row);

} // namespace melkar::importer
