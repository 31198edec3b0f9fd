// Sheets of a week and the reports that carry charts: any profile, any data, on the screen and on paper.

#include "../input.h"
#include "../profiles.h"
#include "../surfaces.h"

#include <MelkarCommon/circadian/weekly_circadian.h>
#include <MelkarCommon/platform/printing.h>
#include <MelkarCommon/platform/surface.h>
#include <MelkarCommon/registry/data_reference.h>
#include <MelkarCommon/registry/key_reference.h>
#include <MelkarCommon/reports/circadian_graph_header.h>
#include <MelkarCommon/reports/graph_header.h>
#include <MelkarCommon/reports/report.h>

namespace melkar::fuzz {
namespace {

constexpr int kPages[] = {0, 1, -1, 7, 1 << 30};

void DrawWeeks(Surfaces& surfaces, char* path, Bytes& how) {
    const HDC screen = surfaces.Of('m');
    CWeeklyCircadian week(nullptr, screen, "OWN", screen, screen, surfaces.Of('b'));
    week.m_nRows = how.Number();
    week.Show2Dialog(how.Next() % 2);
    const CRect area(0, 0, kSide, kSide);
    week.Draw(area, path);
    week.DrawWeek(area, path, kPages[how.Next() % std::size(kPages)]);
    week.ResetCircadian();
    CStringArray texts;
    texts.SetSize(how.Next() % 12);
    double intensities[1000] = {};
    week.SetDayData(how.Number(), how.Number(), how.Number(), "20260302", how.Number(), how.Number(), how.Number(), 0,
                    1e308, &texts, &texts, intensities, how.Number(), 1);
    for (CCircadianGraph& day : week.m_Day)
        day.SetDirectOutput(1);
    const HDC page = surfaces.Of(how.Next() % 2 == 0 ? 'v' : 'r');
    week.Initialize(nullptr, page, page, page, nullptr);
    week.DrawWeek(area, path, 0);
}

/// Heads draw in the boxes of the record; what one says of its height is what it takes.
void DrawHeads(HDC surface, const char* path, const CRect& box) {
    CGraphHeader painting("OWN");
    CCircadianGraphHeader silent("OWN");
    for (CReportHeader* head : {static_cast<CReportHeader*>(&painting), static_cast<CReportHeader*>(&silent)}) {
        const int below = head->CalcRect(surface, box, path);
        Require(head->Draw(surface, box, path) == below, "a head is as high as it says");
        head->CReportHeader::Draw(surface, box, path);
    }
}

void PrintReport(Visit& visit, const std::string& path, Bytes& how) {
    std::string printer = visit.Expect("bin/report.pdf");
    char section[] = "OWN";
    CReport report(printer.data(), how.Next(), how.Next() % 2 * 90, section, nullptr, nullptr, nullptr, path.c_str(),
                   path.c_str(), "");
    report.CalcRects();
    for (int pages = how.Next() % 4; pages > 0; --pages) {
        report.DocStart(); // refused while one is under way
        report.PageStart();
        report.Draw();
        DrawHeads(report.GetHDC(), path.c_str(), CRect(how.Box()));
        if (how.Next() % 2 == 0)
            report.PageEnd();
    }
    if (how.Next() % 4 != 0) // else nothing is left of it
        report.DocEnd();
}

/// The first line says how; then profile, data file, profile of dates.
void DrawSheets(std::string_view input) {
    Visit visit;
    Bytes how(TakeLine(input));
    const std::vector<std::string_view> parts = PartsOf(input, 3);
    visit.Give("conf/graph.cnf", parts[0]);
    visit.Give("conf/config.cnf", parts[2]);
    std::string path = visit.Give("bin/data.csv", parts[1]);
    Surfaces surfaces(visit);
    DrawWeeks(surfaces, path.data(), how);
    DrawHeads(surfaces.Of('r'), path.c_str(), CRect(how.Box()));
    PrintReport(visit, path, how);
}

void SeedSheets(Seeds& seeds) {
    AddProfileWords(seeds);
    const std::string hows[] = {"\x1B\1\1\1\x19", "\x1D\2\1\2\x1A\x16\x15\x14\2\3\4\5\xDC\xF0",
                                "zyxwvutsrqponmlkjihgfedcba"};
    for (const char* kind : {"week", "week-print", "report"}) {
        const KindRow& row = *FindKind(kind);
        const DataTable table = FilesReadBy(row).front();
        const std::string keys = ProfileOf(*FindKind("day")) + ProfileOf(*FindKind("report"));
        for (std::size_t i = 0; i < kHurtful.size(); ++i) {
            const std::string& how = hows[i % std::size(hows)];
            const std::string between(kBetweenParts);
            seeds.add(std::string(kind) + "-keys-" + std::to_string(i),
                      how + "\n" + ProfileOf(*FindKind(i % 2 == 0 ? "day" : "report"), kHurtful[i]) + between +
                          ExampleFile(table) + between + "[SYSTEM]\nDATE=" + kHurtful[i]);
            seeds.add(std::string(kind) + "-data-" + std::to_string(i),
                      how + "\n" + keys + between + DataOf(table, kHurtful[i]));
        }
    }
}

} // namespace

extern const Target kSheets;
const Target kSheets{"sheets", "how, a profile, a data file and the profile of dates", DrawSheets, SeedSheets};

} // namespace melkar::fuzz
