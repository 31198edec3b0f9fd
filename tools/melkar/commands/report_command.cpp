#include "command.h"
#include "files.h"
#include "messages.h"
#include "options.h"
#include "paper_options.h"
#include "progress.h"

#include <month_report.h>

#include <MelkarCommon/hosts.h>

#include <filesystem>
#include <iostream>
#include <optional>

namespace melkar::tool {
namespace {

namespace fs = std::filesystem;

struct ReportOptions {
    std::string printer;
    std::string header;
    std::string data;
    std::string base = ".";
    std::string section = "REPORT";
    PaperOptions paper;
};

void AddOptions(CLI::App& app, ReportOptions& options) {
    app.add_option("--printer", options.printer,
                   "A file NAME.pdf, an address ipp://HOST/..., or a queue of the print server; - prints a PDF")
        ->required()
        ->type_name("NAME");
    AddPaper(app, options.paper);
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

    CMonthReport report(printer.data(), paper, Orientation(options.paper), section.data(), data.c_str(),
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
