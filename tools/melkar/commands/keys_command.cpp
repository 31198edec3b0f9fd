#include "command.h"
#include "options.h"

#include <MelkarCommon/registry/key_reference.h>

#include <iostream>

namespace melkar::tool {
namespace {

struct KeysOptions {
    std::string kind;
    std::string section = "MY_CHART";
    bool profile = false;
};

void AddOptions(CLI::App& app, KeysOptions& options) {
    app.add_option("KIND", options.kind, "The keys of this kind alone, and which of them its chart needs")
        ->type_name("");
    app.add_flag("--profile", options.profile, "Print a profile of the needed keys, to start from");
    app.add_option("--section", options.section, "The graph's section in it; MY_CHART if none")->type_name("NAME");
    app.footer(AllKinds() + "\n" + Examples({"melkar keys steps", "melkar keys bar --profile --section MY_WEEK"}));
}

std::string KeysText(const KeysOptions& options) {
    if (options.kind.empty())
        return options.profile ? throw UsageError{"--profile needs a kind"} : melkar::KeyReference();
    const std::string text =
        options.profile ? melkar::StarterProfile(options.kind, options.section) : melkar::KeyReferenceOf(options.kind);
    return !text.empty()
               ? text
               : throw UsageError{"no kind with keys of its own: " + options.kind + " (melkar keys --help lists them)"};
}

int RunKeys(const KeysOptions& options) {
    std::cout << KeysText(options);
    return kDone;
}

} // namespace

Run AddKeys(CLI::App& app) { return WithOptions(app, AddOptions, RunKeys); }

} // namespace melkar::tool
