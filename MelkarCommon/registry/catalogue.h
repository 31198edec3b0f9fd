#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/frame/contents.h>
#include <MelkarCommon/frame/data_table.h>
#include <MelkarCommon/frame/graph.h>
#include <MelkarCommon/frame/key_table.h>

#include <deque>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

/// @file
/// All kinds of charts and the classes behind them, each registered once: who draws, documents or checks every one of
/// them walks this table. A host adds rows for classes of its own.
///
/// @code{.cpp}
/// if (const melkar::KindRow* row = melkar::FindKind("steps")) {
///     const std::unique_ptr<CGraph> graph = row->make(nullptr, view, "STEPS", view, nullptr, balloon);
///     graph->Draw(CRect(0, 0, 900, 500), path);
/// }
/// @endcode

namespace melkar {

/// A row of the catalogue: a kind of chart, a class of graphs, or both. All texts must stay where they are.
struct KindRow {
    const char* kind = "";      ///< what the command calls it; empty for a class that is there to derive from
    const char* className = ""; ///< empty for a kind without a class of its own
    const char* base = "";      ///< the class whose keys it reads before its own: mostly its base class. Empty for none
    const char* says = "";      ///< what it draws, in a few words
    const char* starter = "";   ///< the keys that its readable chart needs, as lines "KEY=VALUE"
    ClassKeys (*keys)() = nullptr;  ///< of the class itself; null if it has only those of its base
    DataTables (*data)() = nullptr; ///< what it reads; null for the files of its base, or for none
    /// A graph that reads the kind's file and draws it; arguments as for the constructor of `CGraph`. Null where no
    /// such graph can be made.
    std::unique_ptr<CGraph> (*make)(HWND window, HDC dc, const char* section, HDC shared, HDC second,
                                    HDC balloon) = nullptr;
    const char* keysOf = ""; ///< the kind whose keys it reads, if it has no profile of its own
    /// What a graph of the class shows, `ContentsOf<Class>`; none of a graph of another class. Null for a class that
    /// shows what its base does, and for what is no `CGraph`.
    std::optional<Contents> (*shown)(const CGraph& graph) = nullptr;
};

/// A maker for a class with the usual constructor.
template <class Graph>
std::unique_ptr<CGraph> MakeGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon) {
    return std::make_unique<Graph>(window, dc, section, shared, second, balloon);
}

/// What a graph shows that is of a class, or derives from it, by the class's `Shown`; areas are those on the surface
/// that shows the picture. None of any other graph.
template <class Graph> std::optional<Contents> ContentsOf(const CGraph& graph) {
    const auto* mine = dynamic_cast<const Graph*>(&graph);
    if (!mine)
        return std::nullopt;
    Contents contents = mine->Shown();
    MoveAreas(contents, graph.PictureOrigin().x, graph.PictureOrigin().y);
    return contents;
}

/// The library's rows, then those of hosts in the order of their registration. A base stands before what derives from
/// it.
MELKAR_API const std::deque<KindRow>& Catalogue();

/// Adds a row for the whole process, to be done before threads draw: nothing guards the catalogue. Rows stay where they
/// are. @return false, with a line in the log, if kind or class is there already, or its base isn't
MELKAR_API bool Register(const KindRow& row);

/// Null if no class has that name.
MELKAR_API const KindRow* FindClass(std::string_view name);
/// Null if there is no such kind.
MELKAR_API const KindRow* FindKind(std::string_view kind);

/// The tables of keys that a graph of the row reads, those of base classes first.
MELKAR_API std::vector<ClassKeys> KeysReadBy(const KindRow& row);
/// The files that it reads: its data file, and those beside it. None if it takes no file.
MELKAR_API DataTables FilesReadBy(const KindRow& row);

} // namespace melkar
