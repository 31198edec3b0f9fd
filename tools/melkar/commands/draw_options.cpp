#include "draw_options.h"

#include "command.h"

#include <MelkarCommon/hosts.h>

#include <filesystem>
#include <utility>

namespace melkar::tool {
namespace {

namespace fs = std::filesystem;

constexpr int kMaxDpi = 4800;
constexpr double kMostScale = 8;

} // namespace

void AddDrawOptions(CLI::App& app, DrawOptions& options) {
    AddChartArguments(app, options.chart);
    AddSize(app, options.size);
    app.add_option("--dpi", options.dpi, "Device units per inch")->check(CLI::Range(1, kMaxDpi));
    app.add_option("--scale", options.scale,
                   "Pixels a device unit, for screens of fine pixels: the same picture, sharper")
        ->check(CLI::Range(1.0, kMostScale));
    app.add_option("--hover", options.hover, "Paint the balloon of this point into the picture (of pixels only)")
        ->type_name("X,Y");
    app.add_option("--click", options.click, "Print the day at this point")->type_name("X,Y");
    app.add_flag("--record", options.record, "Print the drawing operations instead of writing a file");
    app.add_flag("--strict", options.strict, "Draw nothing if there are doubts about profile or data file");
    app.add_flag("--svg-outlines", options.svgOutlines,
                 "Texts of an .svg as outlines, with unseen texts on top: it looks the same with any fonts");
    app.add_flag("--svg-interactive", options.svgInteractive,
                 "An .svg whose days, slices, ... have names, and can be walked with the arrow keys");
    app.add_option("-o,--output", options.out, "Picture to write: " + FormatNames(".") + "; - prints it")
        ->type_name("FILE");
    app.add_option("--format", options.format, "Of the picture, whatever its name; -o - needs it")
        ->type_name(FormatNames("", "|", "|"));
}

namespace {

Output FormatOf(const DrawOptions& options) {
    const bool isTold = !options.format.empty();
    if (!isTold && options.out == "-")
        throw UsageError{"-o - needs --format " + FormatNames()};
    if (const Format* format = isTold ? FindFormat(options.format) : FindFormatOfName(options.out))
        return format->output;
    throw UsageError{isTold
                         ? "--format takes " + FormatNames() + ": " + options.format
                         : "the picture's name must end in " + FormatNames(".") + ", or --format tell: " + options.out};
}

bool IsPage(const Output& output, PageFormat format) {
    const auto* page = std::get_if<PageFormat>(&output);
    return page != nullptr && *page == format;
}

bool IsSvg(const Output& output) { return IsPage(output, PageFormat::Svg) || IsPage(output, PageFormat::SvgOutlines); }

Output OutputOf(const DrawOptions& options) {
    if (options.record && !options.out.empty())
        throw UsageError{"--record prints to the standard output and takes no -o"};
    if (options.record)
        return RecordOutput{};
    if (options.out.empty()) {
        if (options.click.empty())
            throw UsageError{"nothing to do: give -o, --record or --click"};
        return NoOutput{};
    }
    if (options.out == "-" && !options.click.empty())
        throw UsageError{"--click and -o - would print into each other"};
    const Output output = FormatOf(options);
    if (options.out == "-" && !IsPage(output, PageFormat::Svg))
        RequireNoTerminal();
    return IsPage(output, PageFormat::Svg) && options.svgOutlines ? PageFormat::SvgOutlines : output;
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
void CheckOutput(const DrawOptions& options, const Request& request) {
    if (options.svgOutlines && !IsPage(request.output, PageFormat::SvgOutlines))
        throw UsageError{"--svg-outlines needs a picture of that kind: -o NAME.svg"};
    if (options.svgInteractive && !IsSvg(request.output))
        throw UsageError{"--svg-interactive needs a picture of that kind: -o NAME.svg"};
    if (options.scale != 1 && !std::holds_alternative<PixelOutput>(request.output))
        throw UsageError{"--scale needs a picture of pixels: -o NAME.png"};
    if (options.scale != 1 && options.dpi != kScreenDpi)
        throw UsageError{"--scale is of pictures at 96 dpi: it takes no --dpi"};
    if (request.hover && !std::holds_alternative<PixelOutput>(request.output))
        throw UsageError{"--hover needs a picture of pixels: -o NAME.png"};
}

} // namespace

Request RequestOf(const ChartArguments& chart, const std::string& size) {
    Request request;
    request.kind = &KindOf(chart);
    request.size = SizeOf(size);
    request.chart = chart.options;
    request.base = fs::absolute(chart.base).string();
    request.data = chart.data.empty() ? "" : fs::absolute(chart.data).string();
    return request;
}

Request RequestOf(const DrawOptions& options) {
    Request request = RequestOf(options.chart, options.size);
    request.output = OutputOf(options);
    request.hover = PointOf(options.hover, "--hover");
    request.click = PointOf(options.click, "--click");
    CheckOutput(options, request);
    request.dpi = options.dpi;
    request.isStrict = options.strict;
    request.scale = options.scale;
    request.isWalked = options.svgInteractive;
    request.toStandardOutput = options.out == "-";
    request.out = fs::absolute(options.out.empty() ? "." : options.out).string();
    return request;
}

int DrawFromBase(Request request) {
    CheckBase(request.base, request.chart.section);
    const HostDirectory host(request.base.c_str());
    return Draw(std::move(request));
}

} // namespace melkar::tool
