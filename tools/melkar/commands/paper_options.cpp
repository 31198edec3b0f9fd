#include "paper_options.h"

#include "command.h"

#include <MelkarCommon/platform/printing.h>

#include <strings.h>

namespace melkar::tool {
namespace {

constexpr int kPortrait = 0;
constexpr int kLandscape = 90;

struct PaperName {
    const char* name;
    short code;
};
constexpr PaperName kPapers[] = {
    {"A3", DMPAPER_A3}, {"A4", DMPAPER_A4},         {"A5", DMPAPER_A5},
    {"B5", DMPAPER_B5}, {"Letter", DMPAPER_LETTER}, {"Legal", DMPAPER_LEGAL},
};

std::string PaperNames(const char* between) {
    std::string names;
    for (const PaperName& paper : kPapers)
        names += (names.empty() ? "" : between) + std::string(paper.name);
    return names;
}

} // namespace

void AddPaper(CLI::App& app, PaperOptions& options) {
    app.add_option("--paper", options.paper, "Of the pages; A4 if none")->type_name(PaperNames("|"));
    app.add_flag("--landscape", options.landscape, "Pages that are wider than high");
}

short PaperCode(const PaperOptions& options) {
    for (const PaperName& paper : kPapers)
        if (strcasecmp(paper.name, options.paper.c_str()) == 0)
            return paper.code;
    throw UsageError{"--paper takes one of " + PaperNames(", ") + ": " + options.paper};
}

int Orientation(const PaperOptions& options) { return options.landscape ? kLandscape : kPortrait; }

} // namespace melkar::tool
