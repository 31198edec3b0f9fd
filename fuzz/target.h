#pragma once

#include <functional>
#include <set>
#include <span>
#include <string>
#include <string_view>

/// @file
/// What is fuzzed: rows of one table, which the fuzzer and the replay of the corpus walk.

namespace melkar::fuzz {

/// Where a target begins: inputs that it understands, and words of which others can be made.
struct Seeds {
    /// One input. @param name tells it from the target's others
    std::function<void(const std::string& name, const std::string& bytes)> add;
    std::set<std::string> words;
};

/// A door of the library through which anything may come.
struct Target {
    const char* name;
    const char* says;                    ///< what its inputs are
    void (*run)(std::string_view input); ///< ends the process if something is wrong
    void (*seed)(Seeds& seeds);
};

std::span<const Target> Targets();

/// Null if there is no such target.
const Target* FindTarget(std::string_view name);

/// Pins what a machine could change (locale, time zone, fonts) and makes the room that targets work in.
void Begin();

/// Tells what is wrong and ends the process, if it isn't so.
void Require(bool isSo, const std::string& what);

} // namespace melkar::fuzz
