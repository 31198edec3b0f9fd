#pragma once

#include "units.h"

#include <MelkarCommon/registry/catalogue.h>

#include <string>
#include <vector>

/// @file
/// What an import is to make: a kind of the catalogue, and where each figure of its data file comes from.

namespace melkar::importer {

/// How figures of days become the rows of a file.
enum class Layout {
    Days,   ///< a row for each day
    Points, ///< a point for each day that has a figure
    Sums,   ///< a row for each figure: its sum
    Latest, ///< one row: the figure of the last day
    Week,   ///< a row for each day, with its levels of intensity
    Levels, ///< a row for each level: its minutes
};

/// A figure that the kind draws, as a column of its data file tells.
struct Wanted {
    std::string name;
    const char* unitName = "";  ///< as the column has it; empty: whatever the source has
    const Unit* unit = nullptr; ///< null for none, and for one that isn't converted
    bool isNeeded = false;      ///< the kind can't do without it
    bool isSeries = false;      ///< there may be several
    bool mayLack = false;       ///< a day may be drawn without it
    bool isCarried = false;     ///< a day without it has that of the day before
};

struct Plan {
    const KindRow* kind = nullptr;
    Layout layout = Layout::Days;
    DataTables files;
    std::vector<Wanted> figures;
};

/// What the kind takes; throws `WrongRequest` if nothing is imported for it.
Plan PlanOf(const std::string& kind);
/// The kinds that are imported, for a help.
std::string PlannedKinds();

/// A figure of the plan and what it is called in the source.
struct Bound {
    Wanted wanted;
    std::string source;     ///< column or code; empty where nobody told
    std::string sourceUnit; ///< as told; empty if it wasn't
    std::string unit;       ///< what it is to become, where the kind has none
};

/// Distributes "NAME=SOURCE" to the figures of that name, and each "SOURCE" to the next needed one, or the next series.
/// Units go along in the same order; one alone is that of all. Throws `WrongRequest` for a name twice, or one too many.
std::vector<Bound> Bind(const Plan& plan, const std::vector<std::string>& sources,
                        const std::vector<std::string>& sourceUnits, const std::vector<std::string>& units);
/// Throws `WrongRequest` naming the first needed figure that isn't bound. @param what a source is called: "COLUMN"
void RequireNeeded(const Plan& plan, const std::vector<Bound>& bound, const std::string& what);

/// One unit of the source in units of the file; 1 where there is nothing to convert. Throws `WrongRequest` for unknown
/// units and for those that measure something else.
double FactorOf(const Bound& bound);

} // namespace melkar::importer
