#include "command.h"
#include "draw.h"
#include "files.h"
#include "messages.h"
#include "options.h"
#include "paper_options.h"

#include <month_report.h>

#include <MelkarCommon/platform/host_directory.h>
#include <MelkarCommon/telling/describe.h>
#include <MelkarCommon/telling/json.h>
#include <MelkarCommon/telling/table.h>

#include <filesystem>
#include <iostream>

namespace melkar::tool {
namespace {

struct DescribeOptions {
    ChartArguments chart;
    std::string size = "900x500";
    std::string header;
    PaperOptions paper;
    bool json = false;
    bool csv = false;
    bool record = false;
};

void AddOptions(CLI::App& app, DescribeOptions& options) {
    AddChartArguments(app, options.chart);
    AddSize(app, options.size);
    app.add_option("--header", options.header,
                   "Of a report, whose data are a directory: the header data file; report-header.csv there if none")
        ->type_name("FILE");
    AddPaper(app, options.paper);
    CLI::Option* json = app.add_flag("--json", options.json, "All that it shows, as an object for programs");
    app.add_flag("--csv", options.csv, "The table alone, as comma-separated values")->excludes(json);
    app.add_flag("--record", options.record, "Areas as in the record of the chart, the same on every machine");
    app.footer(KindList() + "  report           pages of a month, by samples/hosts/month_report.h\n\n" +
               Examples({
                   "melkar describe bar --base samples/app/bin --section BAR_WEEK --data samples/data/bar-week.csv",
                   "melkar describe report --base samples/app/bin --section REPORT --data samples/data --json",
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

/// A heading that is repeated is told once.
std::string InWords(ShownReport report) {
    const DescriptionWords words;
    std::string text = words.Say(words.m_strSentence, {{"text", report.title}}) + "\n";
    for (ShownPage& page : report.pages) {
        if (&page != &report.pages.front())
            page.heading.items.clear();
        text += "\n" + Describe(page, words) + "\n\n" + InWords(page.pictures);
    }
    return text;
}

std::vector<Contents> PicturesOf(const ShownReport& report) {
    std::vector<Contents> pictures;
    for (const ShownPage& page : report.pages)
        pictures.insert(pictures.end(), page.pictures.begin(), page.pictures.end());
    return pictures;
}

/// It is printed to a file that nobody keeps.
int DescribeReport(const DescribeOptions& options) {
    namespace fs = std::filesystem;
    const TemporaryFile paper("report.pdf", TemporaryFile::InMemory());
    std::string printer = paper.Path();
    std::string section = options.chart.options.section;
    if (!fs::is_directory(options.chart.data))
        throw UsageError{"a report has a directory of data files: --data DIR"};
    const std::string data = fs::absolute(options.chart.data).string();
    const std::string header =
        options.header.empty() ? data + "/report-header.csv" : fs::absolute(options.header).string();
    if (!fs::exists(header))
        throw UsageError{"there is no such file: " + header};
    CheckBase(options.chart.base, section);
    const HostDirectory host(options.chart.base.c_str());
    ShownReport report;
    CMonthReport pages(printer.data(), PaperCode(options.paper), Orientation(options.paper), section.data(),
                       data.c_str(), header.c_str());
    if (pages.Print(&report) == 0) {
        Complain("nothing can be told; ../log/graph.log says why");
        return kFailed;
    }
    std::cout << (options.json  ? JsonOf(report)
                  : options.csv ? CsvOf(TableOf(PicturesOf(report), DescriptionWords()))
                                : InWords(std::move(report)));
    return kDone;
}

std::string AsJson(const char* kind, const std::vector<Contents>& parts) {
    return parts.size() == 1 ? JsonOf(parts.front()) : JsonOf(kind, parts);
}

int RunDescribe(const DescribeOptions& options) {
    if (options.chart.kind == "report")
        return DescribeReport(options);
    Request request;
    request.kind = &KindOf(options.chart);
    request.size = SizeOf(options.size);
    request.isRecorded = options.record;
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
