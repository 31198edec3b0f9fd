#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/frame/graph.h>
#include <MelkarCommon/frame/key_table.h>

#include <memory>
#include <string_view>
#include <vector>

/// @file
/// All graph classes, each registered once: who draws, documents or checks every one of them walks this table.

namespace melkar {

struct GraphClass {
    const char* name;
    const char* base;    ///< empty for the root
    const char* kind;    ///< what the command calls it; empty for a class that is there to derive from
    const char* says;    ///< what it draws, in a few words
    const char* starter; ///< the keys that its readable chart needs, as `starters.h` has them; empty as `kind` is
    ClassKeys (*keys)(); ///< the keys of the class itself; null if it has only those of its base classes
    /// A graph of the class; arguments as for the constructor of `CGraph`. Null as `kind` is empty.
    std::unique_ptr<CGraph> (*make)(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon);
};

/// A base class stands before what derives from it.
MELKAR_API const std::vector<GraphClass>& Catalogue();

/// Null if no class has that name.
MELKAR_API const GraphClass* FindClass(std::string_view name);
/// Null if no class is of that kind.
MELKAR_API const GraphClass* FindClassOfKind(std::string_view kind);

/// The tables of keys that a graph of the class reads, those of base classes first.
MELKAR_API std::vector<ClassKeys> KeysReadBy(const GraphClass& graph);

} // namespace melkar
