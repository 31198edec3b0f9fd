#include <MelkarCommon/MelkarCommon.h>

#include <cstdio>

int main() {
    const melkar::HostDirectory here("bin"); // the profile is conf/graph.cnf beside it, the log log/graph.log
    const melkar::ScopedSurface view(CreateMemorySurface(900, 3200));
    char data[] = "week.csv";
    CWeeklyCircadian week(nullptr, view, "WEEK", view, nullptr, nullptr); // a graph for each day, m_Day[0] is Monday
    const long result = week.Draw(CRect(0, 0, 900, 3200), data);
    if (result != melkar::kOk)
        return std::fprintf(stderr, "%s: %ld, %s\n", data, result, melkar::ResultText(result)), 1;
    if (WritePng(view, "week.png") != 0)
        return std::fprintf(stderr, "%s\n", melkar::LastFailure()), 1;
}
