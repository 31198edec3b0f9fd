#include "csv_source.h"
#include "forms.h"
#include "requests.h"
#include "week_files.h"

#include <algorithm>
#include <map>

namespace melkar::importer {
namespace {

constexpr int kLongestEpoch = kCellSeconds;

/// Columns of an epoch: its level, and figures that come with it.
struct EpochColumns {
    std::string level = "level";
    std::vector<Bound> figures;

    std::vector<std::string> Names() const {
        std::vector<std::string> names = {level};
        for (const Bound& one : figures)
            names.push_back(one.source);
        return names;
    }
};

bool IsNamed(const Plan& plan, const std::string& source) {
    return std::any_of(plan.figures.begin(), plan.figures.end(),
                       [&](const Wanted& wanted) { return source.starts_with(wanted.name + "="); });
}

/// One source without the name of a figure is that of the level.
EpochColumns ColumnsOf(const Request& request, const Plan& plan) {
    EpochColumns columns;
    std::vector<std::string> named;
    std::vector<std::string> others;
    for (const std::string& source : request.figures)
        (IsNamed(plan, source) ? named : others).push_back(source);
    if (others.size() > 1)
        throw WrongRequest("two columns of levels: " + others[0] + ", " + others[1]);
    if (!others.empty())
        columns.level = others.front();
    columns.figures = Bind(plan, named, request.units, {});
    return columns;
}

CsvReading ReadingOf(const Request& request, const EpochColumns& columns) {
    return {request.path, request.date.empty() ? "time" : request.date, columns.Names(), FormatOf(request),
            DecimalsOf(request)};
}

/// Seconds from an epoch to the next, as they mostly are.
int EpochSeconds(const CsvReading& reading) {
    Notes unheard("", false, [](const std::string&) {});
    std::map<std::int64_t, long> counts;
    std::int64_t former = -1;
    CsvSource(reading, unheard).Read([&](const Moment& moment, std::span<const std::optional<double>>, long) {
        const std::int64_t second = std::int64_t{moment.day} * kSecondsADay + moment.second;
        if (const std::int64_t step = second - former; former >= 0 && step > 0 && step <= kSecondsADay)
            ++counts[step];
        former = second;
    });
    const auto most = std::max_element(counts.begin(), counts.end(),
                                       [](const auto& a, const auto& b) { return a.second < b.second; });
    if (most == counts.end())
        throw Refusal("no two epochs that follow each other");
    if (most->first > kLongestEpoch)
        throw Refusal("epochs of " + std::to_string(most->first) + " seconds; up to " + std::to_string(kLongestEpoch) +
                      " are taken");
    return static_cast<int>(most->first);
}

} // namespace

std::string ImportEpochs(const Request& request, Notes& notes) {
    const Plan plan = PlanOf(request.kind);
    if (plan.layout != Layout::Week && plan.layout != Layout::Levels)
        throw WrongRequest("kind " + request.kind +
                           " draws no levels of intensity: melkar import csv reads its figures");
    EpochColumns columns = ColumnsOf(request, plan);
    const CsvReading reading = ReadingOf(request, columns);
    CsvSource source(reading, notes);
    for (std::size_t i = 0; i < columns.figures.size(); ++i)
        TakeUnit(columns.figures[i], source.UnitOf(i + 1));
    TellUnits(columns.figures, notes);
    const int seconds = EpochSeconds(reading);
    notes.Chosen("epochs of " + std::to_string(seconds) + " seconds");
    DayBook book(RulesOf(columns.figures, true), RangeOf(request), notes);
    EpochBook epochs(seconds, notes);
    source.Read([&](const Moment& moment, std::span<const std::optional<double>> figures, long line) {
        if (!book.See(moment, line))
            return;
        if (figures[0] && !epochs.Take(moment, *figures[0], line))
            return;
        for (std::size_t i = 1; i < figures.size(); ++i)
            if (figures[i])
                book.Take(i - 1, moment, *figures[i], line);
    });
    epochs.Close();
    const std::string made = WriteWeekFile({&plan, columns.figures, request.output}, epochs, book, notes);
    return made + ", from " + ShowRows(book, "epoch");
}

} // namespace melkar::importer
