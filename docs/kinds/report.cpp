#include <MelkarCommon/MelkarCommon.h>

#include <cstdio>

// What stands on a page is a derived class's: the heading block, and a chart below it.
class StepsReport : public CReport {
public:
    using CReport::CReport;

    int DrawHeader() override { return m_header.Draw(GetHDC(), m_rcHeader, GetHeaderFile()); }

    int DrawGraphs() override {
        CStepGraph steps(nullptr, GetHDC(), "STEPS", nullptr, nullptr, nullptr);
        steps.SetDirectOutput(1); // onto the page itself
        CString file = GetDataFile();
        return steps.Draw(m_rcGraphs, const_cast<char*>(file.GetString()));
    }

private:
    CGraphHeader m_header{"REPORT"};
};

int main() {
    const melkar::HostDirectory here("bin"); // the profile is conf/graph.cnf beside it, the log log/graph.log
    char printer[] = "report.pdf";           // or ipp://... or the name of a queue
    char section[] = "REPORT";
    StepsReport report(printer, DMPAPER_A4, 0, section, nullptr, nullptr, nullptr, "steps.csv", "report.csv", "");
    report.CalcRects();
    if (report.DocStart() <= 0)
        return std::fprintf(stderr, "%s: no page is begun: %s\n", printer, melkar::LastFailure()), 1;
    for (int page = 0; page < 2; ++page) {
        report.PageStart();
        report.Draw();
        report.PageEnd();
    }
    if (report.DocEnd() <= 0)
        return std::fprintf(stderr, "%s\n", melkar::LastFailure()), 1;
}
