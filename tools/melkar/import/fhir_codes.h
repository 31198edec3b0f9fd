#pragma once

#include "units.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

/// @file
/// Codes and units of observations, as health records exchange them.

namespace melkar::importer {

/// A code of LOINC and what it means to an import.
struct FhirCode {
    const char* loinc;
    const char* word; ///< what people call it here; codes of one word are one figure
    Measure measure;
    bool isOfDay; ///< the figure of 24 hours, to which nothing is to be added
};

std::span<const FhirCode> FhirCodes();
/// Null if it is none that is imported.
const FhirCode* FindFhirCode(std::string_view loinc);
/// "steps, energy, ..."
std::string FhirWords();

/// A unit by its code of UCUM.
struct FhirUnit {
    Measure measure;
    double size; ///< in the first unit of its measure
    bool isOfDay;
};
/// None for a code that isn't known, or that spreads a figure over more than a day.
std::optional<FhirUnit> FindFhirUnit(std::string_view code, Measure measure);

} // namespace melkar::importer
