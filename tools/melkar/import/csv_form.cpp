#include "csv_source.h"
#include "day_files.h"
#include "forms.h"
#include "requests.h"

namespace melkar::importer {
namespace {

std::vector<std::string> SourcesOf(const std::vector<Bound>& bound) {
    std::vector<std::string> names;
    for (const Bound& one : bound)
        names.push_back(one.source);
    return names;
}

} // namespace

std::string ImportCsv(const Request& request, Notes& notes) {
    const Plan plan = PlanOf(request.kind);
    if (plan.layout == Layout::Week || plan.layout == Layout::Levels)
        throw WrongRequest("kind " + request.kind + " needs levels of intensity: melkar import epochs reads them");
    if (request.date.empty())
        throw WrongRequest("csv needs --date COLUMN");
    DayFiles files{&plan, Bind(plan, request.figures, request.units, request.become), CaptionOf(request),
                   request.output};
    RequireNeeded(plan, files.figures, "COLUMN");
    CsvSource source({request.path, request.date, SourcesOf(files.figures), FormatOf(request), DecimalsOf(request)},
                     notes);
    for (std::size_t i = 0; i < files.figures.size(); ++i)
        TakeUnit(files.figures[i], source.UnitOf(i));
    TellUnits(files.figures, notes);
    DayBook book(RulesOf(files.figures, request.sum), RangeOf(request), notes);
    source.Read([&](const Moment& moment, std::span<const std::optional<double>> figures, long line) {
        if (!book.See(moment, line))
            return;
        for (std::size_t i = 0; i < figures.size(); ++i)
            if (figures[i])
                book.Take(i, moment, *figures[i], line);
    });
    const std::string made = WriteDayFiles(files, book, notes);
    return made + ", from " + ShowRows(book, "row");
}

} // namespace melkar::importer
