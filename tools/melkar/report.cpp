#include "report.h"

#include <month_report.h>

#include <MelkarCommon/platform/printing.h>

#include <iostream>
#include <strings.h>

namespace melkar::tool {
namespace {

constexpr int kLandscape = 90; // degrees

struct PaperName {
    const char* name;
    short code;
};
constexpr PaperName kPapers[] = {
    {"A3", DMPAPER_A3}, {"A4", DMPAPER_A4},         {"A5", DMPAPER_A5},
    {"B5", DMPAPER_B5}, {"Letter", DMPAPER_LETTER}, {"Legal", DMPAPER_LEGAL},
};

} // namespace

int FindPaperCode(std::string name) {
    for (const PaperName& paper : kPapers)
        if (strcasecmp(paper.name, name.c_str()) == 0)
            return paper.code;
    return 0;
}

std::string PaperNames() {
    std::string names;
    for (const PaperName& paper : kPapers)
        names += (names.empty() ? "" : ", ") + std::string(paper.name);
    return names;
}

int PrintReport(ReportRequest request) {
    CMonthReport report(request.printer.data(), request.paper, request.isLandscape ? kLandscape : 0,
                        request.section.data(), request.data.c_str(), request.header.c_str());
    const int pages = report.Print();
    if (pages == 0) {
        std::cerr << "melkar: nothing was printed; ../log/graph.log says why: " << request.printer << '\n';
        return 1;
    }
    std::cout << pages << " pages\n";
    return 0;
}

} // namespace melkar::tool
