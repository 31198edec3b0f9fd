#pragma once

#include <MelkarCommon/registry/catalogue.h>

#include <span>

namespace melkar {

/// Those that the catalogue begins with: all kinds and graph classes of the library, a base before what derives from
/// it.
std::span<const KindRow> LibraryRows();

} // namespace melkar
