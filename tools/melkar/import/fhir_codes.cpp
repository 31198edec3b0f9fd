#include "fhir_codes.h"

#include <algorithm>

namespace melkar::importer {
namespace {

// clang-format off
constexpr FhirCode kCodes[] = {
    {"55423-8", "steps",      Measure::Steps,  false}, // of any time
    {"41950-7", "steps",      Measure::Steps,  true},
    {"41981-2", "energy",     Measure::Energy, false},
    {"41979-6", "energy",     Measure::Energy, true},
    {"55424-6", "activity",   Measure::Energy, false}, // burned by moving
    {"55411-3", "exercise",   Measure::Time,   false},
    {"77592-4", "moderate",   Measure::Time,   false},
    {"77593-2", "vigorous",   Measure::Time,   false},
    {"29463-7", "weight",     Measure::Mass,   false},
    {"39156-5", "bmi",        Measure::Index,  false},
    {"40443-4", "heart-rate", Measure::Rate,   false}, // at rest
};
// clang-format on

constexpr std::string_view kPerDay[] = {"/(24.h)", "/d"};

/// What is no unit but a count: "/d" alone, and "1".
bool IsCount(std::string_view base) { return base.empty() || base == "1"; }

} // namespace

std::span<const FhirCode> FhirCodes() { return kCodes; }

const FhirCode* FindFhirCode(std::string_view loinc) {
    const auto* const found = std::find_if(std::begin(kCodes), std::end(kCodes),
                                           [loinc](const FhirCode& code) { return loinc == code.loinc; });
    return found != std::end(kCodes) ? found : nullptr;
}

std::string FhirWords() {
    std::string words;
    for (const FhirCode& code : kCodes)
        if (words.find(code.word) == std::string::npos)
            words.append(words.empty() ? "" : ", ").append(code.word);
    return words;
}

std::optional<FhirUnit> FindFhirUnit(std::string_view code, Measure measure) {
    bool isOfDay = false;
    std::string_view base = code;
    for (const std::string_view suffix : kPerDay)
        if (base.ends_with(suffix)) {
            base.remove_suffix(suffix.size());
            isOfDay = true;
        }
    if (measure == Measure::Steps && !code.empty() && IsCount(base))
        return FhirUnit{measure, 1, isOfDay};
    const Unit* unit = FindUcumUnit(base);
    if (unit == nullptr || unit->measure != measure)
        return std::nullopt;
    return FhirUnit{measure, unit->size, isOfDay};
}

} // namespace melkar::importer
