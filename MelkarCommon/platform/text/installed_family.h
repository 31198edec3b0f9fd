#pragma once

#include <string>

/// @file
/// Internal. What a face of a profile is on this machine.

namespace melkar {

/// The family that texts in a font of that name are set in: the name itself if the machine has it, as "sans" always is;
/// empty if it has no font at all.
std::string InstalledFamily(const std::string& name);

} // namespace melkar
