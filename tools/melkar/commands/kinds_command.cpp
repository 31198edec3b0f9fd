#include "command.h"
#include "options.h"

#include <MelkarCommon/registry/data_reference.h>
#include <MelkarCommon/registry/key_reference.h>

#include <iostream>

namespace melkar::tool {
namespace {

struct KindsOptions {};

void AddOptions(CLI::App& app, KindsOptions&) { app.footer(Examples({"melkar kinds", "melkar kinds | grep week"})); }

std::string Code(const std::string& text) { return "`" + text + "`"; }

/// The class that draws it, of a kind without one of its own that of its base.
std::string ClassOf(const KindRow& kind) {
    const std::string name = *kind.className ? kind.className : kind.base;
    return name.empty() ? "" : Code(name);
}

std::string KeysOf(const KindRow& kind) {
    if (*kind.keysOf)
        return "as " + Code(kind.keysOf);
    return KeyReferenceOf(kind.kind).empty() ? "none" : "its own";
}

std::string DataOf(const KindRow& kind) {
    const DataTables files = FilesReadBy(kind);
    if (files.empty())
        return "none";
    return files.front().columns.empty() ? "a picture" : "rows";
}

std::string RowOf(const KindRow& kind) {
    return "| " + Code(kind.kind) + " | " + SaysOf(kind) + " | " + ClassOf(kind) + " | " + KeysOf(kind) + " | " +
           DataOf(kind) + " |\n";
}

int RunKinds(const KindsOptions&) {
    std::cout << "# Kinds of charts\n\nWhat `melkar draw KIND` draws (`report`: `melkar report`), and the class that a "
                 "program draws it by or derives from. `melkar keys KIND` tells the keys of its profile, `melkar data "
                 "KIND` its data file, `melkar new DIR KIND` lays out a program.\n\n"
                 "| Kind | Draws | Class | Keys | Data file |\n|---|---|---|---|---|\n";
    for (const KindRow& kind : Catalogue())
        if (*kind.kind)
            std::cout << RowOf(kind);
    return kDone;
}

} // namespace

Run AddKinds(CLI::App& app) { return WithOptions(app, AddOptions, RunKinds); }

} // namespace melkar::tool
