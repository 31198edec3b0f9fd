#include "command.h"
#include "options.h"

#include <MelkarCommon/registry/key_reference.h>

#include <algorithm>
#include <iostream>

namespace melkar::tool {
namespace {

struct KeysOptions {
    std::vector<std::string> kinds;
    std::string section;
    bool profile = false;
};

void AddOptions(CLI::App& app, KeysOptions& options) {
    app.add_option("KIND", options.kinds, "The keys of these kinds alone, and which of them their charts need")
        ->expected(0, -1)
        ->take_all()
        ->type_name("");
    app.add_flag("--profile", options.profile, "Print a profile of the needed keys, to start from");
    app.add_option("--section", options.section,
                   "The graph's section in it; MY_CHART, or of several kinds their names, if not told")
        ->type_name("NAME");
    app.footer(AllKinds() + "\n" + Examples({"melkar keys steps", "melkar keys bar circle --profile"}));
}

std::string ProfileText(const KeysOptions& options) {
    if (options.kinds.size() > 1 && !options.section.empty())
        throw UsageError{"--section is of one kind; several have sections of their names"};
    std::vector<StarterSection> sections;
    for (const std::string& kind : options.kinds)
        sections.push_back({kind, StarterSectionOf(kind)});
    if (sections.size() == 1)
        sections.front().section = options.section.empty() ? "MY_CHART" : options.section;
    return StarterProfile(sections);
}

void RequireKeys(const std::string& kind) {
    if (KeyReferenceOf(kind).empty())
        throw UsageError{"no kind with keys of its own: " + kind + " (melkar keys --help lists them)"};
}

std::string KeysText(const KeysOptions& options) {
    if (options.kinds.empty())
        return options.profile ? throw UsageError{"--profile needs a kind"} : KeyReference();
    std::for_each(options.kinds.begin(), options.kinds.end(), RequireKeys);
    if (options.profile)
        return ProfileText(options);
    std::string pages;
    for (const std::string& kind : options.kinds)
        pages += (pages.empty() ? "" : "\n") + KeyReferenceOf(kind);
    return pages;
}

int RunKeys(const KeysOptions& options) {
    std::cout << KeysText(options);
    return kDone;
}

} // namespace

Run AddKeys(CLI::App& app) { return WithOptions(app, AddOptions, RunKeys); }

} // namespace melkar::tool
