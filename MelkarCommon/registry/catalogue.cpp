#include <MelkarCommon/registry/catalogue.h>

#include <MelkarCommon/bars/activity_cal_graph.h>
#include <MelkarCommon/bars/bar_graph.h>
#include <MelkarCommon/bars/expenditure_graph.h>
#include <MelkarCommon/bars/line_graph.h>
#include <MelkarCommon/bars/simulation.h>
#include <MelkarCommon/bars/step_graph.h>
#include <MelkarCommon/circadian/circadian_graph.h>
#include <MelkarCommon/circadian/circle_graph.h>
#include <MelkarCommon/declarative/circle_graph_base.h>
#include <MelkarCommon/declarative/fixed_text.h>
#include <MelkarCommon/declarative/graph_base.h>
#include <MelkarCommon/declarative/plot_graph.h>
#include <MelkarCommon/gauges/bmi_graph_eng.h>
#include <MelkarCommon/gauges/himand_graph.h>
#include <MelkarCommon/quadrant/square_graph.h>
#include <MelkarCommon/registry/starters.h>

#include <iterator>

namespace melkar {

namespace {

template <class G>
std::unique_ptr<CGraph> Make(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon) {
    return std::make_unique<G>(window, dc, section, shared, second, balloon);
}

/// A bare panel leaves it to its maker to read the keys.
std::unique_ptr<CGraph> MakePanel(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon) {
    auto panel = Make<CGraphBase>(window, dc, section, shared, second, balloon);
    char ofAllGraphs[] = "";
    panel->ReadIniFile(ofAllGraphs);
    return panel;
}

/// Slices of any size are shown.
std::unique_ptr<CGraph> MakePie(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon) {
    return std::make_unique<CCircleGraphBase>(window, dc, section, shared, second, balloon, 0.0F);
}

/// The text under the key TEXT, centred.
std::unique_ptr<CGraph> MakeText(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon) {
    return std::make_unique<CFixedText>(window, dc, section, "TEXT", shared, second, balloon, DT_CENTER | DT_VCENTER,
                                        0);
}

// clang-format off
constexpr GraphClass kClasses[] = {
    {"CGraph", "", "", "the frame of every graph",
     "", CGraph::ProfileKeys, nullptr},
    {"CBarGraph", "CGraph", "bar", "a bar for each day, or a stack of bars",
     starters::kBar, CBarGraph::ProfileKeys, Make<CBarGraph>},
    {"CLineGraph", "CBarGraph", "line", "bars and a line on a scale of its own",
     starters::kLine, CLineGraph::ProfileKeys, Make<CLineGraph>},
    {"CStepGraph", "CLineGraph", "steps", "steps, with scale and average from the data file",
     starters::kSteps, nullptr, Make<CStepGraph>},
    {"CExpenditureGraph", "CLineGraph", "expenditure", "energy in two parts over the band of the average intake",
     starters::kExpenditure, CExpenditureGraph::ProfileKeys, Make<CExpenditureGraph>},
    {"CActivityCalGraph", "CExpenditureGraph", "activity", "activity calories of days or periods",
     starters::kActivity, nullptr, Make<CActivityCalGraph>},
    {"CSimulation", "CActivityCalGraph", "simulation", "measured and planned weight over activity calories",
     starters::kSimulation, CSimulation::ProfileKeys, Make<CSimulation>},
    {"CCircadianGraph", "CGraph", "day", "activity of one day, from a weekly file",
     starters::kDay, CCircadianGraph::ProfileKeys, Make<CCircadianGraph>},
    {"CCircleGraph", "CGraph", "circle", "light, moderate and vigorous time as a pie, legend below it",
     starters::kCircle, CCircleGraph::ProfileKeys, Make<CCircleGraph>},
    {"CBMIGraph_Base", "CGraph", "", "a figure against classes of values",
     "", CBMIGraph_Base::ProfileKeys, nullptr},
    {"CBMIGraph_Eng", "CBMIGraph_Base", "bmi", "a bar in the colour of the figure's class",
     starters::kBmi, nullptr, Make<CBMIGraph_Eng>},
    {"CHimandGraph", "CBMIGraph_Base", "himand", "a disc below the classes of obesity",
     starters::kHimand, CHimandGraph::ProfileKeys, Make<CHimandGraph>},
    {"CSquareGraph", "CGraph", "quadrant", "the frame of four coloured quadrants, for a derived class to plot on",
     starters::kQuadrant, CSquareGraph::ProfileKeys, Make<CSquareGraph>},
    {"CGraphBase", "CGraph", "panel", "the frame of a panel, all of it from keys",
     starters::kPlot, CGraphBase::ProfileKeys, MakePanel},
    {"CPlotGraph", "CGraphBase", "plot", "points on a panel",
     starters::kPlot, nullptr, Make<CPlotGraph>},
    {"CCircleGraphBase", "CGraphBase", "pie", "values as slices",
     starters::kPie, CCircleGraphBase::ProfileKeys, MakePie},
    {"CFixedText", "CGraphBase", "text", "a text of the profile on a panel",
     starters::kText, CFixedText::ProfileKeys, MakeText},
};
// clang-format on

} // namespace

const std::vector<GraphClass>& Catalogue() {
    static const std::vector<GraphClass> classes(std::begin(kClasses), std::end(kClasses));
    return classes;
}

const GraphClass* FindClass(std::string_view name) {
    for (const GraphClass& graph : kClasses)
        if (name == graph.name)
            return &graph;
    return nullptr;
}

const GraphClass* FindClassOfKind(std::string_view kind) {
    for (const GraphClass& graph : kClasses)
        if (!kind.empty() && kind == graph.kind)
            return &graph;
    return nullptr;
}

std::vector<ClassKeys> KeysReadBy(const GraphClass& graph) {
    std::vector<ClassKeys> keys;
    for (const GraphClass* one = &graph; one; one = FindClass(one->base))
        if (one->keys)
            keys.insert(keys.begin(), one->keys());
    return keys;
}

} // namespace melkar
