#pragma once

#include "draw.h"

#include <cstddef>

namespace melkar::tool {

/// Tells what is doubted in the profile and the data file of a picture, but for hints: of each file some, and how many
/// more. Within a `HostDirectory`, from which the profile is found. @return how many there are
std::size_t WarnOfDoubts(const Request& request);

} // namespace melkar::tool
