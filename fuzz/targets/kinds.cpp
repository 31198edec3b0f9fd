// Charts of every kind: any profile, any data, calls in any order, on every kind of surface.

#include "../input.h"
#include "../profiles.h"
#include "../surfaces.h"

#include <MelkarCommon/bars/line_graph.h>
#include <MelkarCommon/circadian/circadian_graph.h>
#include <MelkarCommon/circadian/circle_graph.h>
#include <MelkarCommon/declarative/plot_graph.h>
#include <MelkarCommon/frame/results.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/surface.h>
#include <MelkarCommon/quadrant/square_graph.h>
#include <MelkarCommon/registry/data_reference.h>
#include <MelkarCommon/registry/key_reference.h>

#include <climits>
#include <functional>

namespace melkar::fuzz {
namespace {

constexpr CRect kAreas[] = {
    {0, 0, kSide, kSide},
    {0, 0, 900, 500},
    {0, 0, 1, 1},
    {5, 5, 4, 4},
    {0, 0, 0, 120},
    {0, 0, 2000, 9},
    {7, 9, 20, 800},
    {-50, -50, 90, 70},
    {0, 0, 1 << 24, 3},
    {INT_MIN, 0, INT_MAX, 9},
    {INT_MAX - 9, INT_MAX - 9, INT_MAX, INT_MAX},
};

/// A chart and what is done to it.
struct Scene {
    std::unique_ptr<CGraph> graph;
    Surfaces& surfaces;
    std::string path; ///< of the data file
    Bytes steps;      ///< that are still to come
    CRect area = kAreas[0];

    CPoint Point() {
        const CRect on = area.Width() > 0 && area.Width() < kSide * 4 ? area : kAreas[0];
        const int x = steps.Next() * on.Width() / UCHAR_MAX;
        return {on.left + x, on.top + steps.Next() * on.Height() / UCHAR_MAX};
    }
};

void Draw(Scene& scene, char kind, int isDirect) {
    const HDC surface = scene.surfaces.Of(kind);
    const HDC balloon = scene.surfaces.Of('b');
    scene.graph->Initialize(nullptr, surface, surface, surface, balloon);
    scene.graph->SetDirectOutput(isDirect);
    const long result = scene.graph->Draw(scene.area, scene.path.data());
    Require(std::string_view("unknown result") != ResultText(result), "a result has a name: " + std::to_string(result));
    Require(GetRecording(surface).size() < 30U << 20U, "a chart draws with measure");
}

template <char Kind> void DrawOnto(Scene& scene) { Draw(scene, Kind, 0); }
template <char Kind> void DrawDirectly(Scene& scene) { Draw(scene, Kind, 1); }

/// An operation that takes nothing, if the chart has it. Some are to be called in a cycle only; a host that doesn't
/// keep to it must not come to harm.
template <class Graph, auto Operation> void Call(Scene& scene) {
    if (auto* graph = dynamic_cast<Graph*>(scene.graph.get()))
        (graph->*Operation)();
}
/// One that takes a rectangle.
template <auto Operation> void CallPanel(Scene& scene) {
    if (auto* graph = dynamic_cast<CGraphBase*>(scene.graph.get()))
        (graph->*Operation)(scene.area);
}

template <class Use> void WithBars(Scene& scene, Use use) {
    if (auto* graph = dynamic_cast<CBarGraph*>(scene.graph.get()))
        use(*graph, scene.Point());
}

using Step = void (*)(Scene&);

constexpr std::pair<char, Step> kSteps[] = {
    {'m', DrawOnto<'m'>},
    {'M', DrawDirectly<'m'>},
    {'s', DrawOnto<'s'>},
    {'w', DrawOnto<'w'>},
    {'r', DrawOnto<'r'>},
    {'R', DrawDirectly<'r'>},
    {'v', DrawOnto<'v'>},
    {'V', DrawDirectly<'v'>},
    {'O', DrawDirectly<'o'>},
    {'P', DrawDirectly<'P'>},
    {'p', DrawDirectly<'p'>},
    {'h', [](Scene& s) { WithBars(s, [](CBarGraph& bars, CPoint at) { bars.OnMouseMove(at); }); }},
    {'H', [](Scene& s) { WithBars(s, [](CBarGraph& bars, CPoint) { bars.OnMouseMove(LONG_MAX, LONG_MIN); }); }},
    {'c', [](Scene& s) { WithBars(s, [](CBarGraph& bars, CPoint at) { bars.OnClick(at); }); }},
    {'C', [](Scene& s) { WithBars(s, [](CBarGraph& bars, CPoint at) { bars.OnClick(at.x, at.y); }); }},
    {'2', [](Scene& s) { s.graph->m_nViewMode ^= 1; }},
    {'a', [](Scene& s) { s.area = kAreas[s.steps.Next() % std::size(kAreas)]; }},
    {'f', [](Scene& s) { s.graph->ReadDataFile(s.path.data()); }},
    {'i', [](Scene& s) { s.graph->ReadIniFile(GraphProfile()); }},
    {'g', [](Scene& s) { s.path = s.path.back() == '?' ? s.path.substr(0, s.path.size() - 1) : s.path + "?"; }},
    {'t', [](Scene&) { TrimMemory(); }},
    {'b', [](Scene& s) { BitBlt(s.surfaces.Of('b'), 0, 0, kSide, kSide, s.surfaces.Of('m'), 0, 0, SRCCOPY); }},
    {'B', [](Scene& s) { s.graph->BitBlt(); }},
    {'n', [](Scene& s) { s.graph->Initialize(nullptr, nullptr, nullptr, nullptr, nullptr); }},
    {'d', [](Scene& s) { s.graph->m_saDates.SetSize(s.steps.Next()); }},
    {'D', [](Scene& s) { s.graph->m_dwaStatus.SetAtGrow(s.steps.Next(), s.steps.Next()); }},
    {'e', [](Scene& s) { s.graph->m_saDateEnds.SetAtGrow(s.steps.Next(), "20260309"); }},
    {'0', Call<CGraph, &CGraph::ClearArrays>},
    {'1', Call<CGraph, &CGraph::DrawTitle>},
    {'3', Call<CGraph, &CGraph::SetCanvasRect>},
    {'4', Call<CGraph, &CGraph::DrawNoRecordsMessage>},
    {'5', Call<CGraph, &CGraph::DrawNoDataMessage>},
    {'6', Call<CGraph, &CGraph::DrawExcludeMessage>},
    {'7', [](Scene& s) { s.graph->FormatDate(s.steps.Next() - 1); }},
    {'A', Call<CBarGraph, &CBarGraph::DrawBarChart>},
    {'E', Call<CBarGraph, &CBarGraph::DrawCanvasMeasure>},
    {'F', Call<CBarGraph, &CBarGraph::DrawTargetAverage>},
    {'G', Call<CBarGraph, &CBarGraph::DrawValueOnBar>},
    {'I', Call<CBarGraph, &CBarGraph::DrawDate>},
    {'J', Call<CBarGraph, &CBarGraph::DrawDateDailyCoach>},
    {'K', Call<CBarGraph, &CBarGraph::GetGraphMeasure>},
    {'L', Call<CBarGraph, &CBarGraph::ResetGraphMeasure>},
    {'N', Call<CBarGraph, &CBarGraph::DrawSecExs>},
    {'Q', Call<CLineGraph, &CLineGraph::DrawVLineAxsLabel>},
    {'S', Call<CSquareGraph, &CSquareGraph::DrawCanvas>},
    {'T', Call<CSquareGraph, &CSquareGraph::DrawPoints>},
    {'U', Call<CSquareGraph, &CSquareGraph::DrawSecExs>},
    {'W', Call<CSquareGraph, &CSquareGraph::DrawVAxsLabel>},
    {'X', Call<CCircadianGraph, &CCircadianGraph::DrawLeftGraph>},
    {'Y', Call<CCircadianGraph, &CCircadianGraph::DrawRightGraph>},
    {'Z', Call<CCircadianGraph, &CCircadianGraph::CalcLongestDay>},
    {'x', Call<CCircleGraph, &CCircleGraph::DrawCircle>},
    {'j', CallPanel<&CGraphBase::DrawGraph>},
    {'k', CallPanel<&CGraphBase::DrawNote>},
    {'l', CallPanel<&CGraphBase::DrawVScaleLabelL>},
};

Step StepOf(std::uint8_t letter) {
    for (const auto& [name, step] : kSteps)
        if (static_cast<std::uint8_t>(name) == letter)
            return step;
    return kSteps[letter % std::size(kSteps)].second;
}

std::unique_ptr<CGraph> Make(const KindRow& row, HDC surface) {
    return row.make(nullptr, surface, "OWN", surface, nullptr, nullptr);
}

/// What two new charts put on records must be the same, and what one puts there a second time, too.
void CompareRecords(const KindRow& row, Scene& scene) {
    std::string records[3];
    std::unique_ptr<CGraph> graph;
    for (int i = 0; i < 3; ++i) {
        const HDC record = CreateRecordingSurface(kSide, kSide);
        if (i < 2)
            graph = Make(row, record);
        graph->Initialize(nullptr, record, record, nullptr, nullptr);
        graph->SetDirectOutput(1);
        graph->Draw(kAreas[0], scene.path.data());
        records[i] = GetRecording(record);
        graph->Initialize(nullptr, scene.surfaces.Of('b'), scene.surfaces.Of('b'), nullptr, nullptr);
        DeleteDC(record);
    }
    Require(records[0] == records[1], "a chart drawn twice is the same");
    Require(records[1] == records[2], "a chart drawn again is the same");
}

/// Those that can be made.
const std::vector<const KindRow*>& Kinds() {
    static const std::vector<const KindRow*> kinds = [] {
        std::vector<const KindRow*> found;
        for (const KindRow& row : Catalogue())
            if (row.make != nullptr)
                found.push_back(&row);
        return found;
    }();
    return kinds;
}

/// A word that is no kind stands for one, too, so that few inputs are lost.
const KindRow& KindOf(std::string_view word) {
    const KindRow* row = FindKind(word);
    return row != nullptr && row->make != nullptr ? *row
                                                  : *Kinds()[std::hash<std::string_view>()(word) % Kinds().size()];
}

/// The first line is a kind and, behind a blank, steps; then come the profile, the data file, a second file beside
/// that, and the profile of dates.
void DrawKind(std::string_view input) {
    constexpr std::size_t kMostSteps = 32;
    const std::string_view line = TakeLine(input);
    const KindRow& row = KindOf(line.substr(0, line.find(' ')));
    const std::string_view steps = line.substr(std::min(line.size(), line.find(' ')));
    const std::vector<std::string_view> parts = PartsOf(input, 4);
    Visit visit;
    visit.Give("conf/graph.cnf", parts[0]);
    visit.Give("conf/config.cnf", parts[3]);
    Surfaces surfaces(visit);
    Scene scene{Make(row, surfaces.Of('b')), surfaces, visit.Give("bin/data.csv", parts[1]),
                Bytes(steps.substr(0, kMostSteps))};
    for (const DataTable& table : FilesReadBy(row))
        if (*table.suffix != '\0')
            visit.Give(std::string("bin/data.csv") + table.suffix, parts[2]);
    while (!scene.steps.IsEmpty())
        StepOf(scene.steps.Next())(scene);
    CompareRecords(row, scene);
    scene.graph.reset(); // its surfaces outlive it
}

std::string InputOf(const KindRow& row, const std::string& steps, const std::string& profile,
                    const std::function<std::string(const DataTable&)>& dataOf) {
    std::string text = row.kind + (" " + steps + "\n") + profile;
    for (const DataTable& table : FilesReadBy(row))
        text += std::string(kBetweenParts) + dataOf(table);
    return text;
}

/// Values that hurt are dealt out, since kinds have most of their code in common: this kind gets every third.
void SeedHurtful(Seeds& seeds, const KindRow& row, std::size_t first) {
    constexpr std::size_t kStep = 3;
    const std::string kind = row.kind;
    const std::string starter = StarterProfile(kind, "OWN");
    for (std::size_t i = first % kStep; i < kHurtful.size(); i += kStep) {
        const auto data = [i](const DataTable& table) { return DataOf(table, kHurtful[i]); };
        seeds.add(kind + "-keys-" + std::to_string(i), InputOf(row, "mRhPP", ProfileOf(row, kHurtful[i]), ExampleFile));
        seeds.add(kind + "-data-" + std::to_string(i), InputOf(row, "mRhPP", starter, data));
    }
}

/// A week of rows, then rows of many columns.
void SeedColumns(Seeds& seeds, const KindRow& row) {
    const auto data = [](const DataTable& table) {
        std::string text = ExampleFile(table);
        for (const int columns : {210, 785, 786}) {
            for (int i = 0; i < columns; ++i)
                text += std::to_string(i % 10) + ",";
            text += "\n";
        }
        return text;
    };
    seeds.add(std::string(row.kind) + "-columns", InputOf(row, "mRf", StarterProfile(row.kind, "OWN"), data));
}

void SeedKind(Seeds& seeds, const KindRow& row, std::size_t number) {
    const std::string kind = row.kind;
    const std::string starter = StarterProfile(kind, "OWN");
    seeds.add(kind, InputOf(row, "mbhPPcPPMswRrVvOPp", starter, ExampleFile));
    seeds.add(kind + "-steps", InputOf(row, "mAEFGIJKLNQSTUWXYZxjkl1345", starter, ExampleFile));
    seeds.add(kind + "-host", InputOf(row, "mbhzPhAACzPHPP7Be!D!!2md!bgR", starter, ExampleFile));
    seeds.add(kind + "-every-key", InputOf(row, "mRVP2m", ProfileOf(row), ExampleFile));
    std::string areas;
    for (std::size_t area = 1; area < std::size(kAreas); ++area)
        areas += {'a', static_cast<char>(area), area % 2 == 0 ? 'm' : 'R'};
    seeds.add(kind + "-areas", InputOf(row, areas, starter, ExampleFile));
    SeedColumns(seeds, row);
    SeedHurtful(seeds, row, number);
}

void SeedKinds(Seeds& seeds) {
    AddProfileWords(seeds);
    seeds.words.insert(std::string(kBetweenParts));
    for (std::size_t i = 0; i < Kinds().size(); ++i) {
        seeds.words.insert(Kinds()[i]->kind + std::string(" "));
        SeedKind(seeds, *Kinds()[i], i);
    }
}

} // namespace

extern const Target kKinds;
const Target kKinds{"kinds", "a kind and steps, a profile and data files: drawn on all surfaces", DrawKind, SeedKinds};

} // namespace melkar::fuzz
