#pragma once

#include <span>
#include <string>
#include <string_view>

/// @file
/// Units by name, and what they measure.

namespace melkar::importer {

enum class Measure { Steps, Energy, Mass, Length, Time, Index, Rate };

/// What the day's figures of a measure make together.
constexpr bool AddsUp(Measure measure) {
    return measure != Measure::Mass && measure != Measure::Index && measure != Measure::Rate;
}

struct Unit {
    const char* name; ///< as people write it
    const char* ucum; ///< as health records do; empty where they have another
    Measure measure;
    double size; ///< in the first unit of its measure
};

std::span<const Unit> Units();
/// By its name, in any case where that leaves no doubt; null if there is none.
const Unit* FindUnit(std::string_view name);
/// By the code of health records, exactly.
const Unit* FindUcumUnit(std::string_view code);
/// "steps, kcal, kJ, ..."
std::string UnitNames();

} // namespace melkar::importer
