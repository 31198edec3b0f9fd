#include "command.h"
#include "files.h"
#include "messages.h"
#include "options.h"
#include "progress.h"

#include <month_report.h>

#include <MelkarCommon/hosts.h>
#include <MelkarCommon/platform/printing.h>

#include <filesystem>
#include <iostream>
#include <optional>
#include <strings.h>

namespace melkar::tool {
namespace {

namespace fs = std::filesystem;

constexpr int kPortrait = 0; // degrees
constexpr int kLandscape = 90;

struct ReportOptions {
    std::string printer;
    std::string paper = "A4";
    std::string header;
    std::string data;
    std::string base = ".";
    std::string section = "REPORT";
    bool landscape = false;
};

struct PaperName {
    const char* name;
    short code;
};
constexpr PaperName kPapers[] = {
    {"A3", DMPAPER_A3}, {"A4", DMPAPER_A4},         {"A5", DMPAPER_A5},
    {"B5", DMPAPER_B5}, {"Letter", DMPAPER_LETTER}, {"Legal", DMPAPER_LEGAL},
};

std::string PaperNames(const char* between) {
    std::string names;
    for (const PaperName& paper : kPapers)
        names += (names.empty() ? "" : between) + std::string(paper.name);
    return names;
}

void AddOptions(CLI::App& app, ReportOptions& options) {
    app.add_option("--printer", options.printer,
                   "A file NAME.pdf, an address ipp://HOST/..., or a queue of the print server; - prints a PDF")
        ->required()
        ->type_name("NAME");
    app.add_option("--paper", options.paper, "Of the pages; A4 if none")->type_name(PaperNames("|"));
    app.add_flag("--landscape", options.landscape, "Pages that are wider than high");
    app.add_option("--header", options.header, "Report header data file")->required()->type_name("FILE");
    app.add_option("--data", options.data, "Directory of the data files")->required()->type_name("DIR");
    app.add_option("--base", options.base, "Directory of the host, such as app/bin")->type_name("DIR");
    app.add_option("--section", options.section, "Section of the profile; REPORT if none")->type_name("NAME");
    app.footer(Examples({
        "melkar report --base samples/app/bin --header samples/data/report-header.csv --data samples/data"
        " --printer report.pdf",
        "melkar report --base samples/app/bin --header samples/data/report-header.csv --data samples/data"
        " --paper A5 --landscape --printer a5.pdf",
    }));
}

/// In any case.
short PaperCode(const std::string& name) {
    for (const PaperName& paper : kPapers)
        if (strcasecmp(paper.name, name.c_str()) == 0)
            return paper.code;
    throw UsageError{"--paper takes one of " + PaperNames(", ") + ": " + name};
}

/// Names of files count from here, those of queues and addresses stay.
std::string PrinterName(const std::string& name) {
    return fs::path(name).extension() == ".pdf" ? fs::absolute(name).string() : name;
}

int Printed(CMonthReport& report) {
    const Progress progress([] { return "printing"; });
    return report.Print();
}

int RunReport(const ReportOptions& options) {
    std::optional<TemporaryFile> printed;
    if (options.printer == "-") {
        RequireNoTerminal();
        printed.emplace("report.pdf");
    }
    std::string printer = printed ? printed->Path() : PrinterName(options.printer);
    std::string section = options.section;
    const short paper = PaperCode(options.paper);
    const std::string data = fs::absolute(options.data).string();
    const std::string header = fs::absolute(options.header).string();
    if (!fs::is_directory(data))
        throw UsageError{"there is no such directory: " + options.data};
    if (!fs::exists(header))
        throw UsageError{"there is no such file: " + options.header};
    CheckBase(options.base, section);
    const HostDirectory host(options.base.c_str());

    CMonthReport report(printer.data(), paper, options.landscape ? kLandscape : kPortrait, section.data(), data.c_str(),
                        header.c_str());
    const int pages = Printed(report);
    if (pages == 0) {
        Complain("nothing was printed; ../log/graph.log says why: " + printer);
        return kFailed;
    }
    if (printed)
        printed->CopyToStandardOutput();
    else
        std::cout << pages << " pages\n";
    return kDone;
}

} // namespace

Run AddReport(CLI::App& app) { return WithOptions(app, AddOptions, RunReport); }

} // namespace melkar::tool
