#include "kinds.h"

#include "circadian_charts.h"
#include "day_chart.h"
#include "image_chart.h"
#include "panel_charts.h"
#include "tool_graph.h"

#include <quadrant_days.h>

#include <MelkarCommon/bars/activity_cal_graph.h>
#include <MelkarCommon/bars/bar_graph.h>
#include <MelkarCommon/bars/expenditure_graph.h>
#include <MelkarCommon/bars/line_graph.h>
#include <MelkarCommon/bars/simulation.h>
#include <MelkarCommon/bars/step_graph.h>
#include <MelkarCommon/catalogue.h>
#include <MelkarCommon/gauges/bmi_graph_eng.h>
#include <MelkarCommon/gauges/himand_graph.h>

namespace melkar::tool {
namespace {

template <class G> std::unique_ptr<Chart> Make(const ChartOptions& options) {
    return std::make_unique<ToolGraph<G>>(options);
}

constexpr DataForm kBars{2, 3, 2, 2, true};
constexpr DataForm kWeekly{3, 13, 4, 12};
constexpr DataForm kOneFigure{1, 1, 0, 0, false, false};

constexpr Kind kKinds[] = {
    {"bar", nullptr, Make<CBarGraph>, true, kBars},
    {"line", nullptr, Make<CLineGraph>, true, {2, 4, 2, 3}},
    {"steps", nullptr, Make<CStepGraph>, true, {2, 5, 4, 4}},
    {"expenditure", nullptr, Make<CExpenditureGraph>, true, {2, 4, 2, 3}},
    {"activity", nullptr, Make<CActivityCalGraph>, true, {3, 12, 11, 11}},
    {"simulation", nullptr, Make<CSimulation>, true, {3, 12, 11, 11}},
    {"day", nullptr, MakeDay, true, kWeekly},
    {"week", "a sheet for each day of a week, as on the screen", MakeWeek, true, kWeekly},
    {"week-print", "the same as printed, a week a page", MakePrintedWeek},
    {"circle", nullptr, MakeCircle},
    {"circle-separate", "the same with the legend beside it", MakeSeparateCircle},
    {"bmi", nullptr, Make<CBMIGraph_Eng>, true, kOneFigure},
    {"himand", nullptr, Make<CHimandGraph>, true, kOneFigure},
    {"quadrant",
     "days in four quadrants, by samples/hosts/quadrant_days.h",
     Make<CQuadrantDays>,
     true,
     {3, 24, 15, 23}},
    {"image", "a picture file, through its mask if there is one", MakeImageChart},
    {"panel", nullptr, MakePanel, false},
    {"plot", "points on a panel, from a file of points", MakePlot},
    {"pie", "values as slices, from a file of values", MakePie},
    {"text", nullptr, MakeText, false},
};

} // namespace

std::span<const Kind> Kinds() { return kKinds; }

const char* DescriptionOf(const Kind& kind) {
    if (kind.description != nullptr)
        return kind.description;
    const GraphClass* graph = FindClassOfKind(kind.name);
    return graph != nullptr ? graph->says : "";
}

const Kind* FindKind(std::string_view name) {
    for (const Kind& kind : kKinds) {
        if (name == kind.name)
            return &kind;
    }
    return nullptr;
}

} // namespace melkar::tool
