#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/frame/key_table.h>

#include <string>
#include <string_view>
#include <vector>

/// @file
/// Profiles explained, from the tables that the constructors read by. A kind is one of the catalogue.
///
/// @code{.cpp}
/// std::fputs(melkar::StarterProfile("steps", "STEPS").c_str(), stdout); // a profile to begin with
/// @endcode

namespace melkar {

/// The profile keys of every class, base classes first: what profile checkers and references are made from.
MELKAR_API std::vector<ClassKeys> AllProfileKeys();

/// The same as a Markdown page, with the kinds that can't do without a key.
MELKAR_API std::string KeyReference();

/// The keys that one kind reads, as such a page; empty if there is no kind of that name.
MELKAR_API std::string KeyReferenceOf(std::string_view kind);

/// A profile of the keys alone without which a chart of the kind isn't readable, with values that suit. The graph's
/// own keys stand in `section`. Empty if there is no kind of that name.
MELKAR_API std::string StarterProfile(std::string_view kind, const std::string& section);

/// The section of a kind in a profile of several: its name in capitals, as in CIRCLE_SEPARATE.
MELKAR_API std::string StarterSectionOf(std::string_view kind);

/// A section of a profile, and the kind that is drawn by it.
struct StarterSection {
    std::string kind;    ///< as the command calls it
    std::string section; ///< its name
};

/// Such a profile for several kinds, whose common keys stand in one section COMMON. Empty if there is no kind of one of
/// the names.
MELKAR_API std::string StarterProfile(const std::vector<StarterSection>& sections);

} // namespace melkar
