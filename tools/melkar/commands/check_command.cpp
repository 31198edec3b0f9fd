#include "command.h"
#include "geometry.h"
#include "options.h"
#include "progress.h"

#include <MelkarCommon/checker/doubts.h>

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <sstream>

namespace melkar::tool {
namespace {

constexpr int kMaxSeries = 10;

struct CheckOptions {
    std::vector<std::string> files;
    ProfileUse use;
    DataFileUse data;
    std::string size = "900x500";
    std::string level = "warning";
    bool json = false;
    bool rules = false;
};

/// What else a host decides about its data.
void AddDataOptions(CLI::App& app, DataFileUse& data) {
    app.add_option("--series", data.series, "Figures per day in data files")->check(CLI::Range(1, kMaxSeries));
    app.add_option("--page", data.page, "Week that is drawn of data files, from 0");
}

void AddOptions(CLI::App& app, CheckOptions& options) {
    app.add_option("FILE", options.files, "Profiles to look through, or data files")->type_name("")->take_all();
    app.add_option("--data", options.data.kind, "The files are data files of this kind")->type_name("KIND");
    app.add_option("--section", options.use.section, "This section alone, and COMMON")->type_name("NAME");
    app.add_option("--profile", options.data.profile, "Hold data against the section of this profile")
        ->type_name("FILE");
    AddDataOptions(app, options.data);
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

/// A kind that is typed has to be there.
void RequireKind(const std::string& kind) {
    if (!kind.empty() && !FindKind(kind))
        throw UsageError{"unknown kind: " + kind + " (melkar keys --help lists them)"};
}

/// As for a picture that is drawn as the options tell.
std::vector<Doubt> DoubtsOf(const CheckOptions& options, const std::string& file) {
    if (!options.data.kind.empty()) {
        DataFileUse use = options.data;
        use.section = options.use.section;
        return DataDoubts(file, use);
    }
    ProfileUse use = options.use;
    use.width = SizeOf(options.size).width;
    use.height = SizeOf(options.size).height;
    return Doubts(file, use);
}

int RunCheck(const CheckOptions& options) {
    if (options.rules) {
        std::cout << DoubtReference();
        return kDone;
    }
    if (options.files.empty())
        throw UsageError{"nothing to check: name a profile (melkar check --help tells more)"};
    RequireKind(options.use.kind);
    RequireKind(options.data.kind);
    if (options.data.profile.empty() != (options.data.kind.empty() || options.use.section.empty()))
        throw UsageError{"data is held against --profile FILE and --section NAME, both of them"};
    std::vector<Doubt> all;
    {
        const Progress progress([] { return "checking"; });
        for (const std::string& file : options.files)
            for (Doubt& doubt : DoubtsOf(options, file))
                all.push_back(std::move(doubt));
    }
    Print(all, options.json);
    const bool isClean =
        std::none_of(all.begin(), all.end(), [&](const Doubt& doubt) { return IsAtLeast(doubt, options.level); });
    return isClean ? kDone : kFailed;
}

} // namespace

Run AddCheck(CLI::App& app) { return WithOptions(app, AddOptions, RunCheck); }

} // namespace melkar::tool
