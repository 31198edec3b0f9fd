#include "fhir_source.h"

#include "figures.h"
#include "json_resources.h"

#include <simdjson.h>

#include <cmath>
#include <vector>

namespace melkar::importer {
namespace {

using simdjson::dom::element;

constexpr std::string_view kLoinc = "http://loinc.org";
constexpr int kLongestPeriod = 25 * 3600; ///< seconds: a day on which the clock is put back

/// The text under the key; empty if there is none.
std::string_view TextOf(const element& object, std::string_view key) {
    std::string_view text;
    return object[key].get(text) == simdjson::SUCCESS ? text : std::string_view{};
}

/// The elements of the array under the key; none if there is none.
std::vector<element> ElementsOf(const element& object, std::string_view key) {
    simdjson::dom::array array;
    if (object[key].get(array) != simdjson::SUCCESS)
        return {};
    return {array.begin(), array.end()};
}

bool HasKey(const element& object, std::string_view key) { return object[key].error() == simdjson::SUCCESS; }

/// The first code that is known and asked for.
const FhirCode* CodeOf(const element& object, const IsAsked& isAsked) {
    element what;
    if (object["code"].get(what) != simdjson::SUCCESS)
        return nullptr;
    for (const element& coding : ElementsOf(what, "coding"))
        if (const FhirCode* code = TextOf(coding, "system") == kLoinc ? FindFhirCode(TextOf(coding, "code")) : nullptr)
            if (isAsked(*code))
                return code;
    return nullptr;
}

/// Seconds from 1970 on by the clock that wrote it. An end without a time is that of its day.
std::int64_t SecondOf(const Moment& moment, bool isEnd) {
    return std::int64_t{moment.day} * kSecondsADay + (isEnd && !moment.hasTime ? kSecondsADay : moment.second);
}

/// When an observation was made, or why that is no day.
struct Time {
    std::optional<Moment> moment;
    std::string why;
};

Time TimeAt(std::string_view text) {
    const auto moment = MomentFormat::Usual().Read(text);
    return {moment, moment ? "" : "no day: " + Quoted(text)};
}

Time TimeOf(const element& observation) {
    for (const char* key : {"effectiveDateTime", "effectiveInstant"})
        if (HasKey(observation, key))
            return TimeAt(TextOf(observation, key));
    element period;
    if (observation["effectivePeriod"].get(period) != simdjson::SUCCESS)
        return {std::nullopt, "no day"};
    Time start = TimeAt(TextOf(period, "start"));
    const Time end = TimeAt(TextOf(period, "end"));
    if (!start.moment || !end.moment)
        return {std::nullopt, start.moment ? end.why : start.why};
    const std::int64_t length = SecondOf(*end.moment, true) - SecondOf(*start.moment, false);
    if (length < 0 || length > kLongestPeriod)
        return {std::nullopt, "a period that isn't one of a day: " + Quoted(TextOf(period, "start")) + " to " +
                                  Quoted(TextOf(period, "end"))};
    return start;
}

/// One file being read.
class Reader {
public:
    Reader(const IsAsked& isAsked, const TakeObservation& take, Notes& notes)
        : m_isAsked(isAsked), m_take(take), m_notes(notes) {}

    void TakeResource(const JsonResources& resources) {
        m_line = resources.Line();
        element json;
        if (const auto error = m_parser.parse(resources.Text().data(), resources.Text().size()).get(json))
            throw Refusal("line " + std::to_string(m_line) + ": no JSON: " + simdjson::error_message(error));
        element resource = json;
        if (resources.IsEntry() && json["resource"].get(resource) != simdjson::SUCCESS)
            return; // an entry without one says what was done with it
        const std::string_view type = TextOf(resource, "resourceType");
        if (type == "Observation")
            TakeObservationOf(resource);
        else if (type == "Bundle" && !resources.IsEntry())
            TellNextPage(resource);
        else
            ++m_counts.others;
    }

    const FhirCounts& Counts() const { return m_counts; }

private:
    /// A search gives page by page.
    void TellNextPage(const element& bundle) {
        for (const element& link : ElementsOf(bundle, "link"))
            if (TextOf(link, "relation") == "next")
                m_notes.Skipped(m_line,
                                "the bundle goes on at " + Quoted(TextOf(link, "url")) + ", which isn't in the file");
    }

    void TakeObservationOf(const element& observation) {
        ++m_counts.observations;
        std::vector<std::pair<const FhirCode*, element>> parts;
        if (const FhirCode* code = CodeOf(observation, m_isAsked))
            parts.emplace_back(code, observation);
        for (const element& component : ElementsOf(observation, "component"))
            if (const FhirCode* code = CodeOf(component, m_isAsked))
                parts.emplace_back(code, component);
        if (parts.empty()) {
            ++m_counts.otherCodes;
            return;
        }
        const std::string_view status = TextOf(observation, "status");
        if (status == "entered-in-error" || status == "cancelled")
            return m_notes.Skipped(m_line, "status " + std::string(status));
        const Time time = TimeOf(observation);
        if (!time.moment)
            return m_notes.Skipped(m_line, time.why);
        for (const auto& [code, part] : parts)
            TakePart(*code, part, *time.moment);
    }

    void TakePart(const FhirCode& code, const element& part, const Moment& moment) {
        Observation one{&code, moment, false, 0, code.isOfDay, m_line};
        std::int64_t count = 0;
        element quantity;
        if (part["valueInteger"].get(count) == simdjson::SUCCESS && code.measure == Measure::Steps) {
            one.hasValue = true;
            one.value = static_cast<double>(count);
        } else if (part["valueQuantity"].get(quantity) == simdjson::SUCCESS) {
            if (!TakeQuantity(code, quantity, one))
                return;
        } else if (!HasKey(part, "dataAbsentReason")) {
            return m_notes.Skipped(m_line, std::string(code.word) + " without a quantity");
        }
        if (std::abs(one.value) > kMostFigure)
            return m_notes.Skipped(m_line, std::string(code.word) + " beyond a thousand millions");
        TellZone(moment);
        m_take(one);
    }

    /// @return false, told, if it is none of the code's
    bool TakeQuantity(const FhirCode& code, const element& quantity, Observation& one) {
        double value = 0;
        if (quantity["value"].get(value) != simdjson::SUCCESS) {
            m_notes.Skipped(m_line, std::string(code.word) + " without a number");
            return false;
        }
        if (const std::string_view than = TextOf(quantity, "comparator"); !than.empty()) {
            m_notes.Skipped(m_line, std::string(code.word) + " not known exactly: " + std::string(than) + " " +
                                        ShowFigure(value));
            return false;
        }
        const std::string_view name = TextOf(quantity, "code");
        const std::optional<FhirUnit> unit = FindFhirUnit(name, code.measure);
        if (!unit) {
            m_notes.Skipped(m_line, name.empty() ? std::string(code.word) + " without the code of a unit"
                                                 : "no unit of " + std::string(code.word) + ": " + Quoted(name));
            return false;
        }
        one.hasValue = true;
        one.value = value * unit->size;
        one.isOfDay |= unit->isOfDay;
        return true;
    }

    void TellZone(const Moment& moment) {
        if (moment.isUtc && !m_hasToldOfUtc)
            m_notes.Chosen("times in UTC: the days are those of UTC", m_line);
        m_hasToldOfUtc |= moment.isUtc;
    }

    const IsAsked& m_isAsked;
    const TakeObservation& m_take;
    Notes& m_notes;
    simdjson::dom::parser m_parser;
    FhirCounts m_counts;
    long m_line = 0;
    bool m_hasToldOfUtc = false;
};

} // namespace

FhirCounts ReadObservations(const std::string& path, const IsAsked& isAsked, const TakeObservation& take,
                            Notes& notes) {
    JsonResources resources(path);
    Reader reader(isAsked, take, notes);
    while (resources.Next())
        reader.TakeResource(resources);
    return reader.Counts();
}

} // namespace melkar::importer
