#pragma once

#include <string>

/// @file
/// Internal. Names of fonts that this kind of machine rarely has.

namespace melkar {

/// The families to try for a name, best first, separated by commas; the name itself always comes first.
std::string FamiliesFor(const std::string& name);

/// Whether what stands in for a font of this name is there for its Japanese characters: its other letters are as wide
/// as those, or spaced like them.
bool IsJapanese(const std::string& name);

} // namespace melkar
