#include <MelkarCommon/MelkarCommon.h>

#include <cstdio>

int main() {
    const melkar::HostDirectory here("bin"); // the profile is conf/graph.cnf beside it, the log log/graph.log
    const melkar::ScopedSurface view(CreateMemorySurface(900, 500));
    char ofAllGraphs[] = "";
    CGraphBase panel(nullptr, view, "PANEL", view, nullptr, nullptr);
    panel.ReadIniFile(ofAllGraphs); // a bare panel leaves that to its maker; classes on it read by themselves
    const long result = panel.Draw(CRect(0, 0, 900, 500), ofAllGraphs);
    if (result != melkar::kOk)
        return std::fprintf(stderr, "%ld, %s\n", result, melkar::ResultText(result)), 1;
    if (WritePng(view, "panel.png") != 0)
        return std::fprintf(stderr, "%s\n", melkar::LastFailure()), 1;
}
