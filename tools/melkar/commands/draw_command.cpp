#include "command.h"
#include "draw.h"
#include "options.h"

#include <filesystem>

namespace melkar::tool {
namespace {

namespace fs = std::filesystem;

constexpr int kMaxDpi = 4800;

struct DrawOptions {
    ChartArguments chart;
    std::string size = "900x500";
    int dpi = 96;
    std::string hover;
    std::string click;
    bool record = false;
    bool svgOutlines = false;
    std::string out;
    std::string format;
};

void AddOptions(CLI::App& app, DrawOptions& options) {
    AddChartArguments(app, options.chart);
    app.add_option("--size", options.size, "Width x height in device units, such as 900x500");
    app.add_option("--dpi", options.dpi, "Device units per inch")->check(CLI::Range(1, kMaxDpi));
    app.add_option("--hover", options.hover, "X,Y: paint the balloon of this point into the picture (.png only)");
    app.add_option("--click", options.click, "X,Y: print the day at this point");
    app.add_flag("--record", options.record, "Print the drawing operations instead of writing a file");
    app.add_flag("--svg-outlines", options.svgOutlines,
                 "Texts of an .svg as outlines, with unseen texts on top: it looks the same with any fonts");
    app.add_option("-o,--output", options.out, "Picture to write: .png, .svg or .pdf; - prints it");
    app.add_option("--format", options.format, "png, svg or pdf, whatever the picture's name; -o - needs it");
    app.footer(
        KindList() + "\n" +
        Examples({
            "melkar draw bar --base samples/app/bin --section BAR_WEEK --data samples/data/bar-week.csv -o week.png",
            "melkar draw bar --base samples/app/bin --section BAR_WEEK --data samples/data/bar-week.csv"
            " --click 373,420",
        }));
}

Size SizeOf(const std::string& text) {
    const auto size = ParseSize(text);
    return size ? *size : throw UsageError{"--size takes width x height from 1 to 32767, as in 900x500: " + text};
}

Output PictureFormat(const DrawOptions& options) {
    if (!options.format.empty()) {
        const Output format = FormatOf(options.format);
        return format != Output::None ? format : throw UsageError{"--format takes png, svg or pdf: " + options.format};
    }
    if (options.out == "-")
        throw UsageError{"-o - needs --format png, svg or pdf"};
    const Output format = FormatOfName(options.out);
    return format != Output::None
               ? format
               : throw UsageError{"the picture's name must end in .png, .svg or .pdf, or --format tell: " +
                                  options.out};
}

Output OutputOf(const DrawOptions& options) {
    if (options.record && !options.out.empty())
        throw UsageError{"--record prints to the standard output and takes no -o"};
    if (options.record)
        return Output::Record;
    if (options.out.empty()) {
        if (options.click.empty())
            throw UsageError{"nothing to do: give -o, --record or --click"};
        return Output::None;
    }
    if (options.out == "-" && !options.click.empty())
        throw UsageError{"--click and -o - would print into each other"};
    const Output format = PictureFormat(options);
    return format == Output::Svg && options.svgOutlines ? Output::SvgOutlines : format;
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
    if (options.svgOutlines && request.output != Output::SvgOutlines)
        throw UsageError{"--svg-outlines needs a picture of that kind: -o NAME.svg"};
    if (request.hover && request.output != Output::Png)
        throw UsageError{"--hover needs a picture of pixels: -o NAME.png"};
}

Request RequestOf(const DrawOptions& options) {
    Request request;
    request.kind = &KindOf(options.chart);
    request.size = SizeOf(options.size);
    request.output = OutputOf(options);
    request.hover = PointOf(options.hover, "--hover");
    request.click = PointOf(options.click, "--click");
    CheckOutput(options, request);
    request.chart = options.chart.options;
    request.dpi = options.dpi;
    request.data = options.chart.data.empty() ? "" : fs::absolute(options.chart.data).string();
    request.toStandardOutput = options.out == "-";
    request.out = fs::absolute(options.out.empty() ? "." : options.out).string();
    return request;
}

int RunDraw(const DrawOptions& options) {
    Request request = RequestOf(options);
    EnterBase(options.chart.base, request.chart.section);
    return Draw(std::move(request));
}

} // namespace

Run AddDraw(CLI::App& app) { return WithOptions(app, AddOptions, RunDraw); }

} // namespace melkar::tool
