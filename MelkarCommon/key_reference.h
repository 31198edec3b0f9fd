#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/frame/key_table.h>

#include <string>
#include <vector>

namespace melkar {

/// The profile keys of every class, base classes first: what profile checkers and references are made from.
MELKAR_API std::vector<ClassKeys> AllProfileKeys();

/// The same as a Markdown page.
MELKAR_API std::string KeyReference();

} // namespace melkar
