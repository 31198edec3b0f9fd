// melkar: draws one chart from a profile and a data file, or prints a report. Exit codes: 0 drawn, 1 failed, 2 wrong
// usage.

#include "draw.h"
#include "report.h"

#include <MelkarCommon/key_reference.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <sstream>

namespace {

using namespace melkar::tool;
namespace fs = std::filesystem;

constexpr int kUsageError = 2;
constexpr int kMaxSeries = 10;
constexpr int kMaxDpi = 4800;

/// The arguments as they were typed.
struct Arguments {
    std::string kind;
    std::string base = ".";
    std::string data;
    std::string out;
    std::string format;
    std::string size = "900x500";
    std::string hover;
    std::string click;
    int dpi = 96;
    bool record = false;
    bool noFigures = false;
    bool svgOutlines = false;
    ChartOptions chart;
    std::string printer;
    std::string paper = "A4";
    std::string header;
    bool landscape = false;
    bool profile = false;
};

/// A sentence for the error stream.
struct UsageError {
    std::string sentence;
};

std::string KindList() {
    std::ostringstream list;
    list << "Kinds:\n" << std::left;
    for (const Kind& kind : Kinds())
        list << "  " << std::setw(17) << kind.name << DescriptionOf(kind) << '\n';
    return list.str();
}

void AddDrawOptions(CLI::App& draw, Arguments& arguments) {
    draw.footer(KindList());
    draw.option_defaults()->take_last();
    draw.add_option("KIND", arguments.kind, "What to draw; the list stands below")->required();
    draw.add_option("--section", arguments.chart.section, "Section of the profile")->required();
    draw.add_option("--data", arguments.data, "Data file");
    draw.add_option(
        "--base", arguments.base,
        "Directory that plays the current directory of the host: the profile is ..\\conf\\graph.cnf from here");
    draw.add_option("--size", arguments.size, "Width x height in device units, such as 900x500");
    draw.add_option("--dpi", arguments.dpi, "Device units per inch")->check(CLI::Range(1, kMaxDpi));
    draw.add_option("--series", arguments.chart.series, "Figures per day")->check(CLI::Range(1, kMaxSeries));
    draw.add_option("--target", arguments.chart.target, "Target of every day")->check(CLI::Number);
    draw.add_option("--date", arguments.chart.date,
                    "YYYYMMDD: the day of a weekly file to draw; its first one if none");
    draw.add_option("--page", arguments.chart.page, "Week of the printed sheet, from 0");
    draw.add_option("--from", arguments.chart.moderateFrom, "First intensity level of the circle's moderate class");
    draw.add_option("--to", arguments.chart.moderateTo, "Its last level");
    draw.add_option("--key", arguments.chart.key, "Key of the text that kind `text` shows");
    draw.add_flag("--no-figures", arguments.noFigures, "No figures above the bars");
    draw.add_option("--hover", arguments.hover, "X,Y: paint the balloon of this point into the picture (.png only)");
    draw.add_option("--click", arguments.click, "X,Y: print the day at this point");
    draw.add_flag("--record", arguments.record, "Print the drawing operations instead of writing a file");
    draw.add_flag("--svg-outlines", arguments.svgOutlines,
                  "Texts of an .svg as outlines, with unseen texts on top: it looks the same with any fonts");
    draw.add_option("-o,--output", arguments.out, "Picture to write: .png, .svg or .pdf; - prints it");
    draw.add_option("--format", arguments.format, "png, svg or pdf, whatever the picture's name; -o - needs it");
}

Output PictureFormat(const Arguments& arguments) {
    if (!arguments.format.empty()) {
        const Output format = FormatOf(arguments.format);
        return format != Output::None ? format
                                      : throw UsageError{"--format takes png, svg or pdf: " + arguments.format};
    }
    if (arguments.out == "-")
        throw UsageError{"-o - needs --format png, svg or pdf"};
    const Output format = FormatOfName(arguments.out);
    return format != Output::None
               ? format
               : throw UsageError{"the picture's name must end in .png, .svg or .pdf, or --format tell: " +
                                  arguments.out};
}

void AddReportOptions(CLI::App& report, Arguments& arguments) {
    report.option_defaults()->take_last();
    report
        .add_option("--printer", arguments.printer,
                    "A file NAME.pdf, an address ipp://HOST/..., or a queue of the print server")
        ->required();
    report.add_option("--paper", arguments.paper, "One of " + PaperNames());
    report.add_flag("--landscape", arguments.landscape, "Pages that are wider than high");
    report.add_option("--header", arguments.header, "Report header data file")->required();
    report.add_option("--data", arguments.data, "Directory of the data files")->required();
    report.add_option("--base", arguments.base, "Directory that plays the current directory of the host");
    report.add_option("--section", arguments.chart.section, "Section of the profile; REPORT if none");
}

void AddKeysOptions(CLI::App& keys, Arguments& arguments) {
    keys.footer(KindList() + "  report           the heading block of a report\n");
    keys.add_option("KIND", arguments.kind, "The keys of this kind alone, and which of them its chart needs");
    keys.add_flag("--profile", arguments.profile, "Print a profile of the needed keys, to start from");
    keys.add_option("--section", arguments.chart.section, "The graph's section in it; MY_CHART if none");
}

Output OutputOf(const Arguments& arguments) {
    if (arguments.record && !arguments.out.empty())
        throw UsageError{"--record prints to the standard output and takes no -o"};
    if (arguments.record)
        return Output::Record;
    if (arguments.out.empty()) {
        if (arguments.click.empty())
            throw UsageError{"nothing to do: give -o, --record or --click"};
        return Output::None;
    }
    if (arguments.out == "-" && !arguments.click.empty())
        throw UsageError{"--click and -o - would print into each other"};
    const Output format = PictureFormat(arguments);
    return format == Output::Svg && arguments.svgOutlines ? Output::SvgOutlines : format;
}

std::optional<CPoint> PointOf(const std::string& text, const char* option) {
    if (text.empty())
        return std::nullopt;
    const auto point = ParsePoint(text);
    if (!point)
        throw UsageError{std::string(option) + " takes two whole numbers, as in 120,300: " + text};
    return point;
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

void EnterBase(const Arguments& arguments) {
    std::error_code error;
    fs::current_path(arguments.base, error);
    if (error)
        throw UsageError{"the base directory can't be entered: " + arguments.base};
    std::ifstream profile("../conf/graph.cnf");
    if (!profile)
        throw UsageError{"there is no profile ../conf/graph.cnf from the base directory: " + arguments.base};
    if (!HasSection(profile, arguments.chart.section))
        throw UsageError{"the profile has no section: " + arguments.chart.section};
}

Request RequestOf(const Arguments& arguments) {
    Request request;
    request.kind = FindKind(arguments.kind);
    if (request.kind == nullptr)
        throw UsageError{"unknown kind: " + arguments.kind + " (melkar draw --help lists them)"};
    if (arguments.data.empty() && request.kind->form)
        throw UsageError{"this kind draws a data file: --data FILE"};
    const auto size = ParseSize(arguments.size);
    if (!size)
        throw UsageError{"--size takes width x height from 1 to 32767, as in 900x500: " + arguments.size};
    request.size = *size;
    request.output = OutputOf(arguments);
    request.hover = PointOf(arguments.hover, "--hover");
    request.click = PointOf(arguments.click, "--click");
    if (arguments.svgOutlines && request.output != Output::SvgOutlines)
        throw UsageError{"--svg-outlines needs a picture of that kind: -o NAME.svg"};
    if (request.hover && request.output != Output::Png)
        throw UsageError{"--hover needs a picture of pixels: -o NAME.png"};
    request.chart = arguments.chart;
    request.chart.figures = !arguments.noFigures;
    request.dpi = arguments.dpi;
    request.data = arguments.data.empty() ? "" : fs::absolute(arguments.data).string();
    request.toStandardOutput = arguments.out == "-";
    request.out = fs::absolute(arguments.out.empty() ? "." : arguments.out).string();
    return request;
}

int RunDraw(const Arguments& arguments) {
    Request request = RequestOf(arguments);
    EnterBase(arguments); // from here on relative paths mean something else
    return Draw(std::move(request));
}

/// Names of files count from here, those of queues and addresses stay.
std::string PrinterName(const std::string& name) {
    return fs::path(name).extension() == ".pdf" ? fs::absolute(name).string() : name;
}

int RunReport(Arguments arguments) {
    if (arguments.chart.section.empty())
        arguments.chart.section = "REPORT";
    ReportRequest request;
    request.printer = PrinterName(arguments.printer);
    request.paper = FindPaperCode(arguments.paper);
    if (request.paper == 0)
        throw UsageError{"--paper takes one of " + PaperNames() + ": " + arguments.paper};
    request.isLandscape = arguments.landscape;
    request.section = arguments.chart.section;
    request.data = fs::absolute(arguments.data).string();
    request.header = fs::absolute(arguments.header).string();
    if (!fs::is_directory(request.data))
        throw UsageError{"there is no such directory: " + arguments.data};
    if (!fs::exists(request.header))
        throw UsageError{"there is no such file: " + arguments.header};
    EnterBase(arguments);
    return PrintReport(std::move(request));
}

std::string KeysText(const Arguments& arguments) {
    if (arguments.kind.empty())
        return arguments.profile ? throw UsageError{"--profile needs a kind"} : melkar::KeyReference();
    const Kind* kind = FindKind(arguments.kind);
    const std::string name = kind != nullptr ? KeysOf(*kind) : arguments.kind; // a report isn't drawn, but has keys
    const std::string section = arguments.chart.section.empty() ? "MY_CHART" : arguments.chart.section;
    const std::string text = arguments.profile ? melkar::StarterProfile(name, section) : melkar::KeyReferenceOf(name);
    return !text.empty() ? text
                         : throw UsageError{"no kind with keys of its own: " + arguments.kind +
                                            " (melkar keys --help lists them)"};
}

/// A mistyped command is named; the parser would only tell that one is missing.
void RequireCommand(const CLI::App& app, int argc, char** argv) {
    const std::string word = argc > 1 ? argv[1] : "-";
    const auto isNamed = [&word](const CLI::App* command) { return command->check_name(word); };
    if (word.rfind('-', 0) != 0 && app.get_subcommands(isNamed).empty())
        throw UsageError{"unknown command: " + word + " (melkar --help lists them)"};
}

int Run(int argc, char** argv) {
    CLI::App app{"Draws health charts from a profile and a data file"};
    app.require_subcommand(1);
    app.set_version_flag("--version", "melkar " MELKAR_VERSION);
    Arguments arguments;
    CLI::App* draw = app.add_subcommand("draw", "Draw one chart into a picture");
    AddDrawOptions(*draw, arguments);
    CLI::App* report = app.add_subcommand("report", "Print a report of a month");
    AddReportOptions(*report, arguments);
    CLI::App* keys = app.add_subcommand("keys", "Print the keys of a profile as a Markdown page");
    AddKeysOptions(*keys, arguments);
    RequireCommand(app, argc, argv);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& asked) { // help or version
        app.exit(asked);
        return FlushStandardOutput();
    }
    if (keys->parsed()) {
        std::cout << KeysText(arguments);
        return FlushStandardOutput();
    }
    return report->parsed() ? RunReport(std::move(arguments)) : RunDraw(arguments);
}

} // namespace

int main(int argc, char** argv) {
    try {
        return Run(argc, argv);
    } catch (const CLI::ParseError& error) {
        std::cerr << "melkar: " << error.what() << '\n';
        return kUsageError;
    } catch (const UsageError& error) {
        std::cerr << "melkar: " << error.sentence << '\n';
        return kUsageError;
    } catch (const std::exception& error) {
        std::cerr << "melkar: " << error.what() << '\n';
        return 1;
    }
}
