#include "command.h"
#include "draw.h"
#include "files.h"
#include "options.h"

#include <MelkarCommon/platform/host_directory.h>
#include <MelkarCommon/telling/describe.h>
#include <MelkarCommon/telling/json.h>
#include <MelkarCommon/telling/table.h>

#include <iostream>

namespace melkar::tool {
namespace {

struct DescribeOptions {
    ChartArguments chart;
    std::string size = "900x500";
    bool json = false;
    bool csv = false;
};

void AddOptions(CLI::App& app, DescribeOptions& options) {
    AddChartArguments(app, options.chart);
    AddSize(app, options.size);
    CLI::Option* json = app.add_flag("--json", options.json, "All that it shows, as an object for programs");
    app.add_flag("--csv", options.csv, "The table alone, as comma-separated values")->excludes(json);
    app.footer(
        KindList() + "\n" +
        Examples({
            "melkar describe bar --base samples/app/bin --section BAR_WEEK --data samples/data/bar-week.csv",
            "melkar describe bar --base samples/app/bin --section BAR_WEEK --data samples/data/bar-week.csv --json",
        }));
}

/// A paragraph and a table for each part, in the words of the profile.
std::string InWords(const std::vector<Contents>& parts) {
    const DescriptionWords words;
    std::string text;
    for (const Contents& part : parts) {
        const std::string table = TextOf(TableOf(part, words));
        text += (text.empty() ? "" : "\n") + Describe(part, words) + "\n" + (table.empty() ? "" : "\n" + table);
    }
    return text;
}

std::string AsJson(const char* kind, const std::vector<Contents>& parts) {
    return parts.size() == 1 ? JsonOf(parts.front()) : JsonOf(kind, parts);
}

int RunDescribe(const DescribeOptions& options) {
    Request request;
    request.kind = &KindOf(options.chart);
    request.size = SizeOf(options.size);
    request.shown = [&](const std::vector<Contents>& parts) {
        std::cout << (options.json  ? AsJson(request.kind->kind, parts)
                      : options.csv ? CsvOf(TableOf(parts, DescriptionWords()))
                                    : InWords(parts));
    };
    request.chart = options.chart.options;
    const InputFile data(options.chart.data);
    request.data = data.Path();
    CheckBase(options.chart.base, request.chart.section);
    const HostDirectory host(options.chart.base.c_str());
    return Draw(request);
}

} // namespace

Run AddDescribe(CLI::App& app) { return WithOptions(app, AddOptions, RunDescribe); }

} // namespace melkar::tool
