#include "day_files.h"
#include "fhir_source.h"
#include "forms.h"
#include "requests.h"

#include <algorithm>

namespace melkar::importer {
namespace {

/// What a figure is, where a kind leaves no doubt.
struct UsualSource {
    const char* kind;
    const char* figure;
};
constexpr UsualSource kUsual[] = {
    {"steps", "steps=steps"},        {"expenditure", "total=energy"},   {"expenditure", "part=activity"},
    {"activity", "figure=activity"}, {"simulation", "figure=activity"}, {"simulation", "weight=weight"},
    {"bmi", "figure=bmi"},
};

std::vector<std::string> SourcesOf(const Request& request) {
    std::vector<std::string> sources = request.figures;
    for (const UsualSource& usual : kUsual)
        if (sources.empty() && request.kind == usual.kind)
            for (const UsualSource& one : kUsual)
                if (request.kind == one.kind)
                    sources.emplace_back(one.figure);
    return sources;
}

bool IsSource(const FhirCode& code, const std::string& source) { return source == code.loinc || source == code.word; }

const FhirCode& CodeOfSource(const std::string& source) {
    for (const FhirCode& code : FhirCodes())
        if (IsSource(code, source))
            return code;
    throw WrongRequest("unknown figure: " + source + "; known are the LOINC codes of " + FhirWords() +
                       ", and these words");
}

/// Figures come in the first unit of their measure.
const char* BaseUnit(Measure measure) {
    for (const Unit& unit : Units())
        if (unit.measure == measure)
            return unit.name;
    return "";
}

std::vector<FigureRule> FhirRules(const std::vector<Bound>& bound) {
    std::vector<FigureRule> rules = RulesOf(bound, true);
    for (std::size_t i = 0; i < rules.size(); ++i) {
        const Measure measure = CodeOfSource(bound[i].source).measure;
        rules[i].addsUp = AddsUp(measure);
        rules[i].mayBeNegative = false;
    }
    return rules;
}

std::string ShowCounts(const FhirCounts& counts) {
    std::string text = std::to_string(counts.observations) + " observations";
    if (counts.otherCodes > 0)
        text += ", " + std::to_string(counts.otherCodes) + " of them of other things";
    if (counts.others > 0)
        text += "; resources of other sorts: " + std::to_string(counts.others);
    return text;
}

} // namespace

std::string ImportFhir(const Request& request, Notes& notes) {
    const Plan plan = PlanOf(request.kind);
    if (plan.layout == Layout::Week || plan.layout == Layout::Levels)
        throw WrongRequest("kind " + request.kind + " needs levels of intensity: melkar import epochs reads them");
    DayFiles files{&plan, Bind(plan, SourcesOf(request), {}, request.become), CaptionOf(request), request.output};
    RequireNeeded(plan, files.figures, "CODE");
    for (Bound& one : files.figures)
        one.sourceUnit = BaseUnit(CodeOfSource(one.source).measure);
    DayBook book(FhirRules(files.figures), RangeOf(request), notes);
    const auto isAsked = [&](const FhirCode& code) {
        return std::any_of(files.figures.begin(), files.figures.end(),
                           [&](const Bound& one) { return IsSource(code, one.source); });
    };
    const auto take = [&](const Observation& one) {
        if (!book.See(one.moment, one.line) || !one.hasValue)
            return;
        for (std::size_t i = 0; i < files.figures.size(); ++i)
            if (IsSource(*one.code, files.figures[i].source))
                book.Take(i, one.moment, one.value, one.line, one.isOfDay);
    };
    const FhirCounts counts = ReadObservations(request.path, isAsked, take, notes);
    const std::string made = WriteDayFiles(files, book, notes);
    return made + ", from " + ShowCounts(counts);
}

} // namespace melkar::importer
