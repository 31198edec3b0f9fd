#include "requests.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>

namespace melkar::tool {
namespace {

namespace fs = std::filesystem;

const Kind& KindOf(const Arguments& arguments) {
    const Kind* kind = FindKind(arguments.kind);
    if (kind == nullptr)
        throw UsageError{"unknown kind: " + arguments.kind + " (melkar draw --help lists them)"};
    if (arguments.data.empty() && kind->form)
        throw UsageError{"this kind draws a data file: --data FILE"};
    return *kind;
}

Size SizeOf(const Arguments& arguments) {
    const auto size = ParseSize(arguments.size);
    return size ? *size
                : throw UsageError{"--size takes width x height from 1 to 32767, as in 900x500: " + arguments.size};
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

/// Some options suit some outputs only.
void CheckOutput(const Arguments& arguments, const Request& request) {
    if (arguments.svgOutlines && request.output != Output::SvgOutlines)
        throw UsageError{"--svg-outlines needs a picture of that kind: -o NAME.svg"};
    if (request.hover && request.output != Output::Png)
        throw UsageError{"--hover needs a picture of pixels: -o NAME.png"};
}

/// Names of files count from here, those of queues and addresses stay.
std::string PrinterName(const std::string& name) {
    return fs::path(name).extension() == ".pdf" ? fs::absolute(name).string() : name;
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

} // namespace

Request DrawRequestOf(const Arguments& arguments) {
    Request request;
    request.kind = &KindOf(arguments);
    request.size = SizeOf(arguments);
    request.output = OutputOf(arguments);
    request.hover = PointOf(arguments.hover, "--hover");
    request.click = PointOf(arguments.click, "--click");
    CheckOutput(arguments, request);
    request.chart = arguments.chart;
    request.chart.figures = !arguments.noFigures;
    request.dpi = arguments.dpi;
    request.data = arguments.data.empty() ? "" : fs::absolute(arguments.data).string();
    request.toStandardOutput = arguments.out == "-";
    request.out = fs::absolute(arguments.out.empty() ? "." : arguments.out).string();
    return request;
}

ReportRequest ReportRequestOf(const Arguments& arguments) {
    ReportRequest request;
    request.printer = PrinterName(arguments.printer);
    request.paper = FindPaperCode(arguments.paper);
    if (request.paper == 0)
        throw UsageError{"--paper takes one of " + PaperNames() + ": " + arguments.paper};
    request.isLandscape = arguments.landscape;
    request.section = arguments.chart.section.empty() ? "REPORT" : arguments.chart.section;
    request.data = fs::absolute(arguments.data).string();
    request.header = fs::absolute(arguments.header).string();
    if (!fs::is_directory(request.data))
        throw UsageError{"there is no such directory: " + arguments.data};
    if (!fs::exists(request.header))
        throw UsageError{"there is no such file: " + arguments.header};
    return request;
}

void EnterBase(const std::string& base, const std::string& section) {
    std::error_code error;
    fs::current_path(base, error);
    if (error)
        throw UsageError{"the base directory can't be entered: " + base};
    std::ifstream profile("../conf/graph.cnf");
    if (!profile)
        throw UsageError{"there is no profile ../conf/graph.cnf from the base directory: " + base};
    if (!HasSection(profile, section))
        throw UsageError{"the profile has no section: " + section};
}

} // namespace melkar::tool
