#include "command.h"
#include "explain/causes.h"
#include "explain/shown_place.h"
#include "files.h"
#include "messages.h"
#include "options.h"
#include "progress.h"

#include <MelkarCommon/frame/results.h>
#include <MelkarCommon/platform/host_directory.h>

#include <algorithm>
#include <filesystem>
#include <iostream>

namespace melkar::tool {
namespace {

struct ExplainOptions {
    ChartArguments chart;
    std::string size = "900x500";
    std::string at;
    bool operations = false;
};

void AddOptions(CLI::App& app, ExplainOptions& options) {
    AddChartArguments(app, options.chart);
    AddSize(app, options.size);
    CLI::Option* at = app.add_option("--at", options.at, "The pixel to explain")->type_name("X,Y");
    app.add_flag("--operations", options.operations, "Print all operations with their numbers and steps instead")
        ->excludes(at);
    app.footer("Keys and cells are found by drawing the picture again with other values, so that what is told is so; "
               "what only another value than those would show isn't.\n\n" +
               KindList() + "\n" +
               Examples({
                   "melkar explain bar --base samples/app/bin --section BAR_WEEK --data samples/data/bar-week.csv"
                   " --at 373,420",
                   "melkar explain bar --base samples/app/bin --section BAR_WEEK --data samples/data/bar-week.csv"
                   " --operations",
               }));
}

/// What came of another value: the new colour, the new operation, or both.
std::string ChangeOf(const PixelStory& before, const PixelStory& now) {
    if (now.result != kOk)
        return "nothing is drawn: " + std::string(ResultText(now.result));
    const Layer* top = now.Top();
    const std::string color = HexOf(now.Color());
    if (top == nullptr)
        return color + ", by nothing";
    std::string text = color;
    if (before.Top() == nullptr || before.Top()->owner + before.Top()->step != top->owner + top->step)
        text += ", by " + NameOfStep(top->owner, top->step) + " " + top->text;
    else if (before.Color() == now.Color())
        text = top->text;
    return text;
}

std::string PlaceOf(const Cause& cause) {
    std::string place = std::filesystem::path(cause.file).filename().string();
    for (const int part : {cause.line, cause.column})
        if (part > 0)
            place += ":" + std::to_string(part);
    return place;
}

/// Those that change the colour first.
void PrintCauses(const char* heading, std::vector<Cause> causes, const PixelStory& story) {
    std::cout << heading << (causes.empty() ? ": none\n" : ":\n");
    std::stable_partition(causes.begin(), causes.end(),
                          [&](const Cause& cause) { return cause.story.Color() != story.Color(); });
    for (const Cause& cause : causes) {
        std::cout << "  " << PlaceOf(cause) << ": " << (cause.section.empty() ? "" : "[" + cause.section + "] ")
                  << cause.name << '=' << cause.value << (cause.line > 0 ? "" : " (not there)")
                  << (cause.meaning.empty() ? "" : " (" + cause.meaning + ")") << "; with " << cause.otherValue << ": "
                  << ChangeOf(story, cause.story) << '\n';
    }
}

void PrintStory(const PixelStory& story, CPoint at) {
    std::cout << "pixel " << at.x << ',' << at.y << ": " << HexOf(story.Color()) << '\n';
    if (const std::string item = ShownAt(story.shown, at); !item.empty())
        std::cout << "shows: " << item << '\n';
    if (story.Top() == nullptr)
        std::cout << "operation: none\n";
    for (auto layer = story.layers.rbegin(); layer != story.layers.rend(); ++layer)
        std::cout << (layer == story.layers.rbegin() ? "operation " : "  on operation ") << layer->number << ", "
                  << NameOfStep(layer->owner, layer->step) << ": " << layer->text << '\n';
}

int FailWith(long code, const std::string& data) {
    Complain(std::to_string(code) + ": " + ResultText(code) + ": " + data);
    return kFailed;
}

int PrintOperations(const Request& request) {
    std::string list;
    if (const long code = ListOperations(request, list); code != kOk)
        return FailWith(code, request.data);
    std::cout << list;
    return kDone;
}

int Explain(const Request& request, CPoint at) {
    const PixelStory story = StoryOf(request, at);
    if (story.result != kOk)
        return FailWith(story.result, request.data);
    PrintStory(story, at);
    const Progress progress([] { return "trying other values"; });
    CauseSearch search(request, request.base, at, story);
    PrintCauses("keys", search.Keys(), story);
    PrintCauses("cells", search.Cells(), story);
    if (!search.IsWhole())
        std::cout << "not everything was tried: at most " << kMostTrials << " pictures are drawn, of " << kMostCells
                  << " cells\n";
    return kDone;
}

CPoint PixelOf(const std::string& text, Size size) {
    const auto point = ParsePoint(text);
    if (!point)
        throw UsageError{"--at takes two whole numbers, as in 120,300: " + text};
    if (!CRect(0, 0, size.width, size.height).PtInRect(*point))
        throw UsageError{"--at " + text + " is no pixel of the picture: give --size, too"};
    return *point;
}

int RunExplain(const ExplainOptions& options) {
    if (options.at.empty() && !options.operations)
        throw UsageError{"nothing to explain: give --at or --operations"};
    Request request;
    request.kind = &KindOf(options.chart);
    request.size = SizeOf(options.size);
    request.chart = options.chart.options;
    request.base = std::filesystem::absolute(options.chart.base).string();
    const InputFile data(options.chart.data);
    request.data = data.Path();
    const CPoint at = options.operations ? CPoint() : PixelOf(options.at, request.size);
    CheckBase(options.chart.base, request.chart.section);
    const HostDirectory host(request.base.c_str());
    return options.operations ? PrintOperations(request) : Explain(request, at);
}

} // namespace

Run AddExplain(CLI::App& app) { return WithOptions(app, AddOptions, RunExplain); }

} // namespace melkar::tool
