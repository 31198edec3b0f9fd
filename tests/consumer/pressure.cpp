// A host that derives a chart of its own, run where its profile and its data are. It fails in words where the chart
// doesn't draw, or doesn't answer where its bars are and say their figures.

#include "pressure_graph.h"

#include <MelkarCommon/MelkarCommon.h>

#include <cstdio>

namespace {

constexpr CRect kView(0, 0, 700, 400);

// What a surface has recorded since it had `before` bytes.
std::string RecordedSince(HDC surface, std::size_t before) { return GetRecording(surface).substr(before); }

// The bar of a day is where the chart keeps it, and on the view where that stands.
CPoint MiddleOf(const CPressureGraph& chart, int day) {
    const CRect bar = *chart.m_oaBarRects[2 * day];
    return {(bar.left + bar.right) / 2, (bar.top + bar.bottom) / 2};
}

const char* FaultOf(CPressureGraph& chart, HDC view) {
    char data[] = "pressure.csv";
    if (chart.ReadDataFile(data) != melkar::kOk || chart.Draw(kView, data) != melkar::kOk)
        return "it isn't drawn";
    if (chart.m_saDates.GetSize() != 3 || !(chart.m_saValues[0] == "142") || !(chart.m_saValues[1] == "88"))
        return "the measurements of the first day aren't one day";
    const CPoint first = MiddleOf(chart, 0);
    const CRect bar = *chart.m_oaBarRects[0];
    if (chart.OnClick(first) != 0 || chart.OnClick(CPoint(first.x, bar.bottom)) != -1)
        return "a click counts beside the bar of its day";
    if (chart.OnClick(MiddleOf(chart, 1)) != -1)
        return "a day without figures answers";
    const std::size_t before = GetRecording(view).size();
    chart.OnMouseMove(MiddleOf(chart, 2));
    if (RecordedSince(view, before).find("text \"128/80\"") == std::string::npos)
        return "the balloon doesn't say the figures of its day";
    const melkar::Contents shown = melkar::ShownBy(chart);
    if (shown.kind != "pressure" || shown.items.size() != 3 || shown.items[0].text != "142/88")
        return "it doesn't tell its days";
    if (shown.marks.size() != 2 || shown.marks[1].text != "95")
        return "it doesn't tell what it adds";
    if (melkar::Describe(shown).find("142") == std::string::npos)
        return "it isn't described by its own figures";
    return nullptr;
}

// A chart that keeps pixels, for a person to look at.
bool WritePicture() {
    HDC view = CreateMemorySurface(kView.Width(), kView.Height());
    char data[] = "pressure.csv";
    const bool isWritten = CPressureGraph(nullptr, view, "PRESSURE", view, nullptr, nullptr).Draw(kView, data) == 0 &&
                           WritePng(view, "pressure.png") == 0;
    DeleteDC(view);
    return isWritten;
}

// By its name alone, as a tool that knows all kinds and none of them.
const char* FaultOfKind(HDC view) {
    const melkar::KindRow* kind = melkar::FindKind("pressure");
    if (!kind)
        return "it isn't in the catalogue";
    if (melkar::CheckData(melkar::FilesReadBy(*kind).at(0), "pressure.csv", 1, 0).count != 0)
        return "its data file is doubted";
    if (!melkar::Doubts("", "PRESSURE", "pressure").empty())
        return "its profile is doubted";
    const std::vector<melkar::Doubt> doubts = melkar::Doubts("doubted.cnf", "PRESSURE", "pressure");
    if (doubts.size() != 1 || doubts[0].rule != std::string("unknown-key"))
        return "a mistyped key of its own isn't found";
    char data[] = "pressure.csv";
    const auto chart = kind->make(nullptr, view, "PRESSURE", view, nullptr, nullptr);
    return chart->Draw(kView, data) == melkar::kOk && chart->m_saDates.GetSize() == 3 ? nullptr
                                                                                      : "its kind isn't drawn";
}

} // namespace

int main() {
    HDC view = CreateRecordingSurface(kView.Width(), kView.Height());
    HDC balloon = CreateRecordingSurface(kView.Width(), kView.Height());
    const char* fault = CPressureGraph::Register() ? FaultOfKind(view) : "it can't be registered";
    if (!fault) {
        CPressureGraph chart(nullptr, view, "PRESSURE", view, nullptr, balloon);
        fault = FaultOf(chart, view);
    }
    DeleteDC(balloon);
    DeleteDC(view);
    if (!fault && !WritePicture())
        fault = "the picture isn't written";
    if (!fault && LiveObjectCount() != 0)
        fault = "drawing objects are left";
    if (fault)
        return std::fprintf(stderr, "pressure: %s\n", fault), 1;
    std::printf("%s%s", melkar::KeyReferenceOf("pressure").c_str(), melkar::DataReferenceOf("pressure").c_str());
}
