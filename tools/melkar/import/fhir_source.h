#pragma once

#include "fhir_codes.h"
#include "moments.h"
#include "notes.h"

#include <functional>
#include <string>

/// @file
/// Observations of a bundle (FHIR R4).

namespace melkar::importer {

/// A figure of an observation, or the day of one that has none.
struct Observation {
    const FhirCode* code = nullptr;
    Moment moment;
    bool hasValue = false;
    double value = 0; ///< in the first unit of the code's measure
    bool isOfDay = false;
    long line = 0;
};

/// What there was beside them.
struct FhirCounts {
    long observations = 0;
    long otherCodes = 0; ///< observations of codes that nobody asked for
    long others = 0;     ///< resources that are no observations
};

using TakeObservation = std::function<void(const Observation&)>;
using IsAsked = std::function<bool(const FhirCode&)>;

/// Hands over all figures of codes that are asked for. What can't be one is told. Throws `Refusal` if the file isn't
/// JSON to its end.
FhirCounts ReadObservations(const std::string& path, const IsAsked& isAsked, const TakeObservation& take, Notes& notes);

} // namespace melkar::importer
