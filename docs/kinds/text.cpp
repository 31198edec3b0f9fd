#include <MelkarCommon/MelkarCommon.h>

#include <cstdio>

int main() {
    const melkar::HostDirectory here("bin"); // the profile is conf/graph.cnf beside it, the log log/graph.log
    const melkar::ScopedSurface view(CreateMemorySurface(900, 500));
    // The text is that of key TEXT, in the middle of its box, 8 pixels from the sides.
    CFixedText advice(nullptr, view, "TEXT", "TEXT", view, nullptr, nullptr, DT_VCENTER, 8);
    char noFile[] = "";
    const long result = advice.Draw(CRect(0, 0, 900, 500), noFile);
    if (result != melkar::kOk)
        return std::fprintf(stderr, "%ld, %s\n", result, melkar::ResultText(result)), 1;
    if (WritePng(view, "text.png") != 0)
        return std::fprintf(stderr, "%s\n", melkar::LastFailure()), 1;
}
