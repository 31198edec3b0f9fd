#include "options.h"

#include "command.h"
#include "messages.h"

#include <MelkarCommon/support/ring_log.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <sstream>
#include <unistd.h>

namespace melkar::tool {
namespace {

constexpr int kMaxSeries = 10;

/// What a host decides beside the profile and the data file.
void AddHostOptions(CLI::App& app, ChartOptions& options) {
    app.add_option("--series", options.series, "Figures per day")->check(CLI::Range(1, kMaxSeries));
    app.add_option("--target", options.target, "Target of every day")->check(CLI::Number);
    app.add_option("--date", options.date, "The day of a weekly file to draw; its first one if none")
        ->type_name("YYYYMMDD");
    app.add_option("--page", options.page, "Week of the printed sheet, from 0");
    app.add_option("--from", options.moderateFrom, "First intensity level of the circle's moderate class");
    app.add_option("--to", options.moderateTo, "Its last level");
    app.add_option("--key", options.key, "Key of the text that kind `text` shows")->type_name("NAME");
    app.add_flag_callback(
        "--no-figures", [&options] { options.figures = false; }, "No figures above the bars");
}

bool SameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

/// Sections match in any case, as the library reads them.
bool HasSection(std::istream& profile, std::string_view section) {
    for (std::string line; std::getline(profile, line);) {
        const auto open = line.find('[');
        const auto close = line.find(']');
        if (open != std::string::npos && close != std::string::npos && open < close &&
            line.find_first_not_of(" \t\xEF\xBB\xBF") == open &&
            SameName(std::string_view(line).substr(open + 1, close - open - 1), section))
            return true;
    }
    return false;
}

std::string ListOf(bool (*belongs)(const KindRow& kind)) {
    std::ostringstream list;
    list << "Kinds:\n" << std::left;
    for (const KindRow& kind : Catalogue())
        if (belongs(kind))
            list << "  " << std::setw(17) << kind.kind << SaysOf(kind) << '\n';
    return list.str();
}

} // namespace

void AddChartArguments(CLI::App& app, ChartArguments& chart) {
    app.add_option("KIND", chart.kind, "What to draw; the list stands below")->required()->type_name("");
    app.add_option("--section", chart.options.section, "Section of the profile")->required()->type_name("NAME");
    app.add_option("--data", chart.data, "Data file; - reads the standard input")->type_name("FILE");
    app.add_option("--base", chart.base,
                   "Directory of the host, such as app/bin: the profile is ..\\conf\\graph.cnf from there")
        ->type_name("DIR");
    AddHostOptions(app, chart.options);
}

void AddSize(CLI::App& app, std::string& size) {
    app.add_option("--size", size, "Width x height in device units, such as 900x500")->type_name("WxH");
}

Size SizeOf(const std::string& text) {
    const auto size = ParseSize(text);
    return size ? *size : throw UsageError{"--size takes width x height from 1 to 32767, as in 900x500: " + text};
}

const KindRow& KindOf(const ChartArguments& chart) {
    const KindRow* kind = FindKind(chart.kind);
    if (kind == nullptr || !IsDrawn(*kind))
        throw UsageError{"unknown kind: " + chart.kind + " (melkar draw --help lists them)"};
    if (chart.data.empty() && !FilesReadBy(*kind).empty())
        throw UsageError{"this kind draws a data file: --data FILE"};
    return *kind;
}

void CheckBase(const std::string& base, const std::string& section) {
    if (!std::filesystem::is_directory(base))
        throw UsageError{"there is no such base directory: " + base};
    std::ifstream profile(base + "/../conf/graph.cnf");
    if (!profile)
        throw UsageError{"there is no profile ../conf/graph.cnf from the base directory: " + base};
    if (!HasSection(profile, section))
        throw UsageError{"the profile has no section: " + section};
    if (!HasLogFolder((base + "/../log/graph.log").c_str()))
        Warn("there is no folder ../log from the base directory: nothing is logged");
}

void RequireNoTerminal() {
    if (isatty(STDOUT_FILENO) != 0)
        throw UsageError{"a picture is nothing to read on a terminal: let it go into a pipe or a file"};
}

std::string KindList() { return ListOf(IsDrawn); }
std::string AllKinds() {
    return ListOf([](const KindRow& kind) { return *kind.kind != '\0'; });
}

std::string Examples(std::initializer_list<const char*> lines) {
    std::string text = "Examples:\n";
    for (const char* line : lines)
        text.append("  ").append(line).append("\n");
    return text;
}

} // namespace melkar::tool
