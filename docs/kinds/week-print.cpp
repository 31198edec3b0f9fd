#include <MelkarCommon/MelkarCommon.h>

#include <cstdio>

int main() {
    const melkar::HostDirectory here("bin"); // the profile is conf/graph.cnf beside it, the log log/graph.log
    melkar::ScopedSurface page(CreatePageSurface("week-print.pdf", PageFormat::Pdf, 1190, 1684, 96));
    char data[] = "week-print.csv";
    long result = 0;
    {
        CWeeklyCircadian week(nullptr, page, "WEEK_PRINT", nullptr, nullptr, nullptr);
        for (CCircadianGraph& day : week.m_Day)
            day.SetDirectOutput(1); // no surface of its own and no copy: a page keeps shapes and texts
        result = week.DrawWeek(CRect(0, 0, 1190, 1684), data, 0);
    } // graphs go before their surfaces
    if (result != 0)
        return std::fprintf(stderr, "%s: no week is drawn: %ld\n", data, result), 1;
    if (!page.Close()) // writes the file
        return std::fprintf(stderr, "%s\n", melkar::LastFailure()), 1;
}
