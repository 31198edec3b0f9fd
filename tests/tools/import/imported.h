#pragma once

#include "tools/melkar/import/import.h"

#include <MelkarCommon/platform/tests/temp_workdir.h>

#include <string>

namespace melkar::importer {

/// What came of an import.
struct Imported {
    std::string file; ///< the data file; empty if there is none
    std::string said; ///< notes, a line each, or why it was refused
};

/// Imports the text as a file of that form. What the request lacks it gets: paths, and a kind.
inline Imported Import(const char* form, const std::string& text, Request request) {
    const TempWorkdir work;
    work.Write("conf/source", text);
    request.path = work.Path("conf/source");
    request.output = work.Path("conf/made");
    Imported made;
    Notes notes("in", false, [&](const std::string& line) { made.said += line + "\n"; });
    try {
        notes.Finish(FindForm(form)->run(request, notes));
    } catch (const std::exception& refused) {
        made.said += refused.what();
        return made;
    }
    made.file = work.Read("conf/made");
    return made;
}

} // namespace melkar::importer
