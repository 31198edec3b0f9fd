#include "arguments.h"

#include "report.h"

#include <iomanip>
#include <sstream>

namespace melkar::tool {
namespace {

constexpr int kMaxSeries = 10;
constexpr int kMaxDpi = 4800;

std::string KindList() {
    std::ostringstream list;
    list << "Kinds:\n" << std::left;
    for (const Kind& kind : Kinds())
        list << "  " << std::setw(17) << kind.name << DescriptionOf(kind) << '\n';
    return list.str();
}

/// What a host decides beside the profile and the data file.
void AddHostOptions(CLI::App& draw, Arguments& arguments) {
    draw.add_option("--series", arguments.chart.series, "Figures per day")->check(CLI::Range(1, kMaxSeries));
    draw.add_option("--target", arguments.chart.target, "Target of every day")->check(CLI::Number);
    draw.add_option("--date", arguments.chart.date,
                    "YYYYMMDD: the day of a weekly file to draw; its first one if none");
    draw.add_option("--page", arguments.chart.page, "Week of the printed sheet, from 0");
    draw.add_option("--from", arguments.chart.moderateFrom, "First intensity level of the circle's moderate class");
    draw.add_option("--to", arguments.chart.moderateTo, "Its last level");
    draw.add_option("--key", arguments.chart.key, "Key of the text that kind `text` shows");
    draw.add_flag("--no-figures", arguments.noFigures, "No figures above the bars");
}

void AddOutputOptions(CLI::App& draw, Arguments& arguments) {
    draw.add_option("--size", arguments.size, "Width x height in device units, such as 900x500");
    draw.add_option("--dpi", arguments.dpi, "Device units per inch")->check(CLI::Range(1, kMaxDpi));
    draw.add_option("--hover", arguments.hover, "X,Y: paint the balloon of this point into the picture (.png only)");
    draw.add_option("--click", arguments.click, "X,Y: print the day at this point");
    draw.add_flag("--record", arguments.record, "Print the drawing operations instead of writing a file");
    draw.add_flag("--svg-outlines", arguments.svgOutlines,
                  "Texts of an .svg as outlines, with unseen texts on top: it looks the same with any fonts");
    draw.add_option("-o,--output", arguments.out, "Picture to write: .png, .svg or .pdf; - prints it");
    draw.add_option("--format", arguments.format, "png, svg or pdf, whatever the picture's name; -o - needs it");
}

} // namespace

void AddDrawOptions(CLI::App& draw, Arguments& arguments) {
    draw.footer(KindList());
    draw.option_defaults()->take_last();
    draw.add_option("KIND", arguments.kind, "What to draw; the list stands below")->required();
    draw.add_option("--section", arguments.chart.section, "Section of the profile")->required();
    draw.add_option("--data", arguments.data, "Data file");
    draw.add_option(
        "--base", arguments.base,
        "Directory that plays the current directory of the host: the profile is ..\\conf\\graph.cnf from here");
    AddHostOptions(draw, arguments);
    AddOutputOptions(draw, arguments);
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

} // namespace melkar::tool
