#include "command.h"
#include "geometry.h"
#include "options.h"

#include <MelkarCommon/checker/doubts.h>

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <sstream>

namespace melkar::tool {
namespace {

struct CheckOptions {
    std::vector<std::string> files;
    ProfileUse use;
    std::string size = "900x500";
    std::string level = "warning";
    bool json = false;
    bool rules = false;
};

void AddOptions(CLI::App& app, CheckOptions& options) {
    app.add_option("PROFILE", options.files, "Profiles to look through")->type_name("")->take_all();
    app.add_option("--section", options.use.section, "This section alone, and COMMON")->type_name("NAME");
    app.add_option("--kind", options.use.kind, "What the sections are drawn as; else their keys tell")
        ->type_name("KIND");
    app.add_option("--size", options.size, "Of the picture, for boxes and scales")->type_name("WxH");
    app.add_option("--level", options.level, "The least that makes the exit code 1")
        ->check(CLI::IsMember({"error", "warning", "hint"}));
    app.add_flag("--json", options.json, "Print a list of objects");
    app.add_flag("--rules", options.rules, "Print all rules as a Markdown page");
    app.footer(
        "A line \"; melkar: allow RULE\" in a profile silences a rule on the next one, or in the section whose head "
        "that is.\nExit codes: 0 clean; 1 something of the level was found; 2 wrong usage.\n\n" +
        Examples({"melkar check samples/app/conf/graph.cnf",
                  "melkar check --section BAR_WEEK --kind bar --json samples/app/conf/graph.cnf"}));
}

/// In quotes. What isn't ASCII stands as it is.
std::string Json(std::string_view text) {
    std::ostringstream quoted;
    quoted << '"';
    for (const char c : text) {
        if (c == '"' || c == '\\')
            quoted << '\\' << c;
        else if (static_cast<unsigned char>(c) < 0x20)
            quoted << "\\u" << std::hex << std::setw(4) << std::setfill('0') << int{c};
        else
            quoted << c;
    }
    quoted << '"';
    return quoted.str();
}

std::string Json(const Doubt& doubt) {
    return "{\"file\": " + Json(doubt.file) + ", \"line\": " + std::to_string(doubt.line) +
           ", \"column\": " + std::to_string(doubt.column) + ", \"level\": " + Json(NameOf(doubt.level)) +
           ", \"text\": " + Json(doubt.text) + ", \"rule\": " + Json(doubt.rule) + "}";
}

void Print(const std::vector<Doubt>& doubts, bool asJson) {
    const char* separator = "\n  ";
    if (asJson)
        std::cout << '[';
    for (const Doubt& doubt : doubts) {
        if (asJson)
            std::cout << std::exchange(separator, ",\n  ") << Json(doubt);
        else
            std::cout << ToText(doubt) << '\n';
    }
    if (asJson)
        std::cout << (doubts.empty() ? "]\n" : "\n]\n");
}

Size SizeOf(const std::string& text) {
    const auto size = ParseSize(text);
    return size ? *size : throw UsageError{"--size takes width x height from 1 to 32767, as in 900x500: " + text};
}

bool IsAtLeast(const Doubt& doubt, std::string_view level) {
    return level == "hint" || doubt.level == DoubtLevel::Error ||
           (level == "warning" && doubt.level == DoubtLevel::Warning);
}

int RunCheck(const CheckOptions& options) {
    if (options.rules) {
        std::cout << DoubtReference();
        return kDone;
    }
    if (options.files.empty())
        throw UsageError{"nothing to check: name a profile (melkar check --help tells more)"};
    if (!options.use.kind.empty() && !FindKind(options.use.kind))
        throw UsageError{"unknown kind: " + options.use.kind + " (melkar keys --help lists them)"};
    ProfileUse use = options.use;
    use.width = SizeOf(options.size).width;
    use.height = SizeOf(options.size).height;
    std::vector<Doubt> all;
    for (const std::string& file : options.files)
        for (Doubt& doubt : Doubts(file, use))
            all.push_back(std::move(doubt));
    Print(all, options.json);
    return std::any_of(all.begin(), all.end(), [&](const Doubt& doubt) { return IsAtLeast(doubt, options.level); })
               ? kFailed
               : kDone;
}

} // namespace

Run AddCheck(CLI::App& app) { return WithOptions(app, AddOptions, RunCheck); }

} // namespace melkar::tool
