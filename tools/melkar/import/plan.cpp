#include "plan.h"

#include "notes.h"

#include <algorithm>
#include <string_view>

namespace melkar::importer {
namespace {

struct KindLayout {
    const char* kind;
    Layout layout;
};

/// Kinds that aren't here have no figures of days: panels, texts and pictures; or what figures mean there is for a
/// class of the host to say (quadrant), or they are a person's particulars (report).
constexpr KindLayout kLayouts[] = {
    {"bar", Layout::Days},         {"line", Layout::Days},     {"steps", Layout::Days},
    {"expenditure", Layout::Days}, {"activity", Layout::Days}, {"simulation", Layout::Days},
    {"plot", Layout::Points},      {"pie", Layout::Sums},      {"bmi", Layout::Latest},
    {"himand", Layout::Latest},    {"day", Layout::Week},      {"week", Layout::Week},
    {"week-print", Layout::Week},  {"circle", Layout::Levels}, {"circle-separate", Layout::Levels},
};

/// Of figures that a day may be without, by the names of their columns.
constexpr std::string_view kMayLack[] = {"line", "weight"};
constexpr std::string_view kCarried[] = {"target", "plan"};

template <class Names> bool Has(const Names& names, std::string_view name) {
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

/// Columns of the rows that hold one figure, or one for each series. A point has its size beside its figure.
bool IsFigure(const ColumnInfo& column, Layout layout) {
    const bool isNumber = column.kind == ColumnKind::Figure || column.kind == ColumnKind::Whole;
    const bool isAsked = layout != Layout::Points || std::string_view(column.name) == "y";
    return isNumber && isAsked && column.head == kEachRow && column.count == 1 && column.perUnit == 1;
}

Wanted WantedOf(const ColumnInfo& column, Layout layout) {
    Wanted wanted;
    wanted.name = column.name;
    wanted.unitName = column.unit;
    wanted.unit = FindUnit(column.unit);
    wanted.mayLack = Has(kMayLack, wanted.name);
    wanted.isCarried = Has(kCarried, wanted.name);
    wanted.isNeeded = column.isNeeded && layout != Layout::Levels && layout != Layout::Week;
    wanted.isSeries = column.isSeries || layout == Layout::Sums;
    return wanted;
}

bool HasSource(const std::vector<Bound>& bound, const Wanted& wanted) {
    return std::any_of(bound.begin(), bound.end(), [&](const Bound& one) { return one.wanted.name == wanted.name; });
}

/// Where a source without a name goes.
const Wanted* NextFree(const Plan& plan, const std::vector<Bound>& bound) {
    const auto isFree = [&](const Wanted& wanted) { return wanted.isNeeded && !HasSource(bound, wanted); };
    const auto free = std::find_if(plan.figures.begin(), plan.figures.end(), isFree);
    const auto series =
        std::find_if(plan.figures.begin(), plan.figures.end(), [](const Wanted& one) { return one.isSeries; });
    if (series != plan.figures.end())
        return &*series;
    return free != plan.figures.end() ? &*free : nullptr;
}

const Wanted* FindFigure(const Plan& plan, std::string_view name) {
    const auto found = std::find_if(plan.figures.begin(), plan.figures.end(),
                                    [name](const Wanted& wanted) { return wanted.name == name; });
    return found != plan.figures.end() ? &*found : nullptr;
}

Bound BindOne(const Plan& plan, const std::vector<Bound>& bound, const std::string& source) {
    const std::size_t equals = source.find('=');
    const Wanted* named = equals == std::string::npos ? nullptr : FindFigure(plan, source.substr(0, equals));
    const Wanted* wanted = named != nullptr ? named : NextFree(plan, bound);
    if (wanted == nullptr)
        throw WrongRequest(std::string("kind ") + plan.kind->kind + " takes no further figure: " + source);
    if (!wanted->isSeries && HasSource(bound, *wanted))
        throw WrongRequest("two sources of one figure: " + source);
    return {*wanted, named != nullptr ? source.substr(equals + 1) : source, "", ""};
}

/// The unit of figure `i`, if it was told.
std::string UnitFor(const std::vector<std::string>& units, std::size_t i) {
    return units.size() == 1 ? units.front() : i < units.size() ? units[i] : "";
}

const Unit* KnownUnit(const std::string& name) {
    const Unit* unit = FindUnit(name);
    if (unit == nullptr)
        throw WrongRequest("unknown unit: " + name + "; known are " + UnitNames());
    return unit;
}

} // namespace

Plan PlanOf(const std::string& kind) {
    const auto* const found =
        std::find_if(std::begin(kLayouts), std::end(kLayouts), [&](const KindLayout& one) { return kind == one.kind; });
    Plan plan;
    plan.kind = found != std::end(kLayouts) ? FindKind(kind) : nullptr;
    if (plan.kind == nullptr)
        throw WrongRequest("nothing is imported for this kind: " + kind + "; it is for " + PlannedKinds());
    plan.layout = found->layout;
    plan.files = FilesReadBy(*plan.kind);
    for (const DataTable& file : plan.files)
        for (const ColumnInfo& column : file.columns)
            if (IsFigure(column, plan.layout))
                plan.figures.push_back(WantedOf(column, plan.layout));
    return plan;
}

std::string PlannedKinds() {
    std::string names;
    for (const KindLayout& one : kLayouts)
        names.append(names.empty() ? "" : ", ").append(one.kind);
    return names;
}

std::vector<Bound> Bind(const Plan& plan, const std::vector<std::string>& sources,
                        const std::vector<std::string>& sourceUnits, const std::vector<std::string>& units) {
    std::vector<Bound> bound;
    for (std::size_t i = 0; i < sources.size(); ++i) {
        bound.push_back(BindOne(plan, bound, sources[i]));
        bound.back().sourceUnit = UnitFor(sourceUnits, i);
        bound.back().unit = UnitFor(units, i);
    }
    return bound;
}

void RequireNeeded(const Plan& plan, const std::vector<Bound>& bound, const std::string& what) {
    for (const Wanted& wanted : plan.figures)
        if (wanted.isNeeded && !HasSource(bound, wanted))
            throw WrongRequest(std::string("kind ") + plan.kind->kind + " needs --figure " + wanted.name + "=" + what +
                               (*wanted.unitName != '\0' ? std::string(" (") + wanted.unitName + ")" : ""));
}

double FactorOf(const Bound& bound) {
    const Unit* from = bound.sourceUnit.empty() ? nullptr : KnownUnit(bound.sourceUnit);
    const Unit* to = bound.wanted.unit;
    if (to == nullptr && !bound.unit.empty())
        to = KnownUnit(bound.unit);
    if (from == nullptr || to == nullptr)
        return 1;
    if (from->measure != to->measure)
        throw WrongRequest(bound.source + ": " + from->name + " can't be converted to " + to->name);
    return from->size / to->size;
}

} // namespace melkar::importer
