#pragma once

#include <MelkarCommon/api.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// @file
/// What is doubted in a profile or a data file. The library takes any file and makes the best of it; a doubt tells what
/// its author will hardly have meant.

namespace melkar {

/// How sure it is that the chart comes out otherwise than meant.
enum class DoubtLevel : std::uint8_t {
    Error,   ///< it does
    Warning, ///< it most likely does
    Hint,    ///< the file is as it may be, and may be meant so
};
/// "error", "warning" or "hint".
MELKAR_API const char* NameOf(DoubtLevel level);

/// One of the things that are looked for.
struct DoubtRule {
    const char* id;   ///< a word or two, joined by hyphens
    DoubtLevel level; ///< of all its doubts
    const char* says; ///< what it is about, in a sentence or two
};
/// All of them, those of profiles first.
MELKAR_API const std::vector<DoubtRule>& DoubtRules();
/// Null if there is no such rule.
MELKAR_API const DoubtRule* FindDoubtRule(std::string_view id);
/// All of them as a Markdown page, with what is to be known of the check.
MELKAR_API std::string DoubtReference();

/// A doubt, told in words.
struct Doubt {
    std::string file; ///< its path
    int line = 0;     ///< from 1; 0: it is about the whole file
    int column = 0;   ///< from 1; 0: it is about the whole line. In a profile a byte, in a data file a column
    DoubtLevel level = DoubtLevel::Warning; ///< that of its rule
    std::string text;                       ///< the words, without a full stop
    const char* rule = "";                  ///< the id of its rule
};

/// "file:line:column"; what is 0 is left out.
MELKAR_API std::string PlaceOf(const Doubt& doubt);
/// "file:line:column: level: text [rule]"; what is 0 is left out.
MELKAR_API std::string ToText(const Doubt& doubt);

} // namespace melkar
