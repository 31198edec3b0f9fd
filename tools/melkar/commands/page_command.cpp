#include "command.h"
#include "draw.h"
#include "files.h"
#include "options.h"
#include "progress.h"

#include <MelkarCommon/platform/files.h>
#include <MelkarCommon/platform/host_directory.h>
#include <MelkarCommon/telling/html.h>

#include <algorithm>
#include <cerrno>
#include <deque>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

namespace melkar::tool {
namespace {

namespace fs = std::filesystem;

constexpr const char* kSeparator = "--and";

/// What is said of each chart.
struct PageChartOptions {
    ChartArguments chart;
    std::string size = "900x500";
};

struct PageOptions {
    const CLI::App* app = nullptr; ///< whose remaining words are further charts
    PageChartOptions first;
    std::string title;
    std::string out;
};

void AddChart(CLI::App& app, PageChartOptions& options) {
    AddChartArguments(app, options.chart);
    AddSize(app, options.size);
}

void AddOptions(CLI::App& app, PageOptions& options) {
    options.app = &app;
    app.prefix_command();
    AddChart(app, options.first);
    app.add_option("--title", options.title, "Of the page; that of the first chart if none")->type_name("TEXT");
    app.add_option("-o,--output", options.out, "Page to write; - prints it")->required()->type_name("FILE");
    app.footer(
        "Further charts stand behind --and, each with its own KIND and options of a chart; --base is that of the "
        "first.\n\n" +
        KindList() + "\n" +
        Examples({
            "melkar page bar --base samples/app/bin --section BAR_WEEK --data samples/data/bar-week.csv"
            " -o week.html",
            "melkar page bar --base samples/app/bin --section BAR_WEEK --data samples/data/bar-week.csv"
            " -o two.html --and line --section LINE --data samples/data/line-week.csv",
        }));
}

/// The words up to the next separator are those of one chart.
PageChartOptions ChartOf(std::vector<std::string> words) {
    PageChartOptions options;
    CLI::App app("", "melkar page ... --and");
    app.option_defaults()->take_last();
    AddChart(app, options);
    std::reverse(words.begin(), words.end()); // as the parser takes them
    app.parse(std::move(words));
    return options;
}

std::vector<PageChartOptions> ChartsOf(const PageOptions& options) {
    std::vector<PageChartOptions> charts{options.first};
    const std::vector<std::string> words = options.app->remaining();
    if (!words.empty() && words.front() != kSeparator)
        throw UsageError{"unknown argument: " + words.front()};
    for (auto begin = words.begin(); begin != words.end();) {
        const auto end = std::find(begin + 1, words.end(), kSeparator);
        charts.push_back(ChartOf({begin + 1, end}));
        begin = end;
    }
    return charts;
}

Request RequestOf(const PageChartOptions& options, const InputFile& data) {
    Request request;
    request.kind = &KindOf(options.chart);
    request.size = SizeOf(options.size);
    request.output = PageFormat::SvgOutlines;
    request.isWalked = true;
    request.chart = options.chart.options;
    request.data = data.Path();
    return request;
}

std::string TextOfFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// @return 0, or 1 after a message
int DrawInto(std::vector<PageChart>& page, Request request) {
    const TemporaryFile svg("picture");
    PageChart chart;
    request.out = svg.Path();
    request.shown = [&chart](const std::vector<Contents>& pictures) { chart.pictures = pictures; };
    if (const int exitCode = Draw(std::move(request)); exitCode != kDone)
        return exitCode;
    chart.svg = TextOfFile(svg.Path());
    page.push_back(std::move(chart));
    return kDone;
}

int WritePage(const std::string& html, const std::string& path) {
    FileWriter file(path.c_str());
    file.Write(html);
    errno = file.Commit();
    return errno != 0 ? FailToWrite(path) : kDone;
}

int RunPage(const PageOptions& options) {
    const std::vector<PageChartOptions> charts = ChartsOf(options);
    const std::string out = options.out == "-" ? "" : fs::absolute(options.out).string();
    std::deque<InputFile> files; // a copy of what came through a pipe lives as long as its object
    std::vector<Request> requests;
    for (const PageChartOptions& chart : charts)
        requests.push_back(RequestOf(chart, files.emplace_back(chart.chart.data)));
    for (const Request& request : requests)
        CheckBase(options.first.chart.base, request.chart.section);

    const HostDirectory host(options.first.chart.base.c_str());
    const Progress progress(out.empty() ? Progress::Text() : [] { return "drawing"; });
    std::vector<PageChart> page;
    for (Request& request : requests)
        if (const int exitCode = DrawInto(page, std::move(request)); exitCode != kDone)
            return exitCode;
    const std::string html = HtmlOf(page, options.title);
    if (!out.empty())
        return WritePage(html, out);
    std::cout << html;
    return kDone;
}

} // namespace

Run AddPage(CLI::App& app) { return WithOptions(app, AddOptions, RunPage); }

} // namespace melkar::tool
