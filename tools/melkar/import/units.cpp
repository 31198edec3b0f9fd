#include "units.h"

#include <algorithm>
#include <cctype>

namespace melkar::importer {
namespace {

constexpr double kKilojoule = 1 / 4.184; ///< kilocalories
constexpr double kPound = 0.45359237;    ///< kilograms
constexpr double kMile = 1609.344;       ///< metres

constexpr Unit kUnits[] = {
    {"steps", "{steps}", Measure::Steps, 1},
    {"step", "{step}", Measure::Steps, 1},
    {"kcal", "kcal", Measure::Energy, 1},
    {"Cal", "[Cal]", Measure::Energy, 1},
    {"cal", "cal", Measure::Energy, 0.001},
    {"kJ", "kJ", Measure::Energy, kKilojoule},
    {"MJ", "MJ", Measure::Energy, 1000 * kKilojoule},
    {"kg", "kg", Measure::Mass, 1},
    {"g", "g", Measure::Mass, 0.001},
    {"lb", "[lb_av]", Measure::Mass, kPound},
    {"lbs", "", Measure::Mass, kPound},
    {"st", "[stone_av]", Measure::Mass, 14 * kPound},
    {"m", "m", Measure::Length, 1},
    {"km", "km", Measure::Length, 1000},
    {"mi", "[mi_i]", Measure::Length, kMile},
    {"ft", "[ft_i]", Measure::Length, 0.3048},
    {"min", "min", Measure::Time, 1},
    {"h", "h", Measure::Time, 60},
    {"s", "s", Measure::Time, 1.0 / 60},
    {"kg/m2", "kg/m2", Measure::Index, 1},
    {"/min", "/min", Measure::Rate, 1},
    {"bpm", "{beats}/min", Measure::Rate, 1},
};

bool SameLetters(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

} // namespace

std::span<const Unit> Units() { return kUnits; }

const Unit* FindUnit(std::string_view name) {
    const Unit* found = nullptr;
    for (const Unit& unit : kUnits) {
        if (name == unit.name)
            return &unit;
        if (!SameLetters(name, unit.name))
            continue;
        if (found != nullptr) // a calorie is a thousand calories
            return nullptr;
        found = &unit;
    }
    return found;
}

const Unit* FindUcumUnit(std::string_view code) {
    const auto* const found =
        std::find_if(std::begin(kUnits), std::end(kUnits), [code](const Unit& unit) { return code == unit.ucum; });
    return code.empty() || found == std::end(kUnits) ? nullptr : found;
}

std::string UnitNames() {
    std::string names;
    for (const Unit& unit : kUnits)
        names.append(names.empty() ? "" : ", ").append(unit.name);
    return names;
}

} // namespace melkar::importer
