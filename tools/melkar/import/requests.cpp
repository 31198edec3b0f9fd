#include "requests.h"

namespace melkar::importer {
namespace {

std::optional<int> DayOf(const std::string& text, const char* option) {
    if (text.empty())
        return std::nullopt;
    const auto moment = MomentFormat::Usual().Read(text);
    if (!moment)
        throw WrongRequest(std::string(option) + " takes a day, as in 20260331: " + text);
    return moment->day;
}

} // namespace

MomentFormat FormatOf(const Request& request) {
    if (request.dateFormat.empty())
        return MomentFormat::Usual();
    const auto format = MomentFormat::Parse(request.dateFormat);
    if (!format)
        throw WrongRequest("--date-format needs YYYY or YY, MM and DD: " + request.dateFormat);
    return *format;
}

std::optional<Decimals> DecimalsOf(const Request& request) {
    if (request.decimals.empty())
        return std::nullopt;
    if (request.decimals != "point" && request.decimals != "comma")
        throw WrongRequest("--decimal takes point or comma: " + request.decimals);
    return request.decimals == "point" ? Decimals::Point : Decimals::Comma;
}

DayRange RangeOf(const Request& request) {
    const DayRange range{DayOf(request.from, "--from"), DayOf(request.to, "--to")};
    if (range.first && range.last && *range.first > *range.last)
        throw WrongRequest("--from is behind --to: " + request.from + ", " + request.to);
    return range;
}

std::string CaptionOf(const Request& request) {
    if (request.caption.find_first_of(",\"\r\n") != std::string::npos)
        throw WrongRequest("--caption takes no commas, quotes or line breaks: they part fields");
    return request.caption.empty() ? "MMM D" : request.caption;
}

std::vector<FigureRule> RulesOf(const std::vector<Bound>& bound, bool addsUp) {
    std::vector<FigureRule> rules;
    for (const Bound& one : bound) {
        const Unit* unit = one.wanted.unit != nullptr ? one.wanted.unit : FindUnit(one.sourceUnit);
        rules.push_back(
            {one.wanted.name, FactorOf(one), addsUp && (unit == nullptr || AddsUp(unit->measure)), unit == nullptr});
    }
    return rules;
}

void TakeUnit(Bound& bound, const std::string& unit) {
    if (bound.sourceUnit.empty() && FindUnit(unit) != nullptr)
        bound.sourceUnit = unit;
}

void TellUnits(const std::vector<Bound>& bound, Notes& notes) {
    for (const Bound& one : bound)
        if (one.wanted.unit != nullptr && one.sourceUnit.empty())
            notes.Chosen(Quoted(one.source) + " has no unit: taken for " + one.wanted.unitName);
}

std::string ShowRows(const DayBook& book, const char* row) {
    std::string text = std::to_string(book.Rows()) + " " + row + (book.Rows() == 1 ? "" : "s");
    if (book.Outside() > 0)
        text += ", " + std::to_string(book.Outside()) + " of them left out by --from and --to";
    return text;
}

} // namespace melkar::importer
