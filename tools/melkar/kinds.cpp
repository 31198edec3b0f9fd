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
#include <MelkarCommon/gauges/bmi_graph_eng.h>
#include <MelkarCommon/gauges/himand_graph.h>
#include <MelkarCommon/registry/catalogue.h>

namespace melkar::tool {
namespace {

template <class G> std::unique_ptr<Chart> Make(const ChartOptions& options) {
    return std::make_unique<ToolGraph<G>>(options);
}

// Columns of days; `circadian/weekly_circadian.h` and `square_graph.h` describe the wide ones.
constexpr DataForm kBars{.headRows = 2, .columns = 3, .figures = {{{2, 2}}}, .status = 0, .isSeries = true};
constexpr DataForm kLine{.headRows = 2, .columns = 4, .figures = {{{2, 3}}}, .status = 0};
constexpr DataForm kSteps{.headRows = 2, .columns = 5, .figures = {{{4, 4}}}, .status = 0};
constexpr DataForm kActivity{.headRows = 3, .columns = 12, .figures = {{{9, 9}, {11, 11}}}, .status = 0};
constexpr DataForm kWeek{
    .headRows = 3, .columns = 784, .figures = {{{5, 5}, {8, 8}, {11, 12}, {15, 23}, {64, 783}}}, .status = 0};
constexpr DataForm kPrintedWeek{
    .headRows = 2, .columns = 744, .figures = {{{2, 13}, {24, 743}}}, .status = 1, .hasWeeks = true};
constexpr DataForm kQuadrant{.headRows = 3, .columns = 24, .figures = {{{15, 23}}}, .status = 0};

constexpr DataForm kLevels{.rows = 9, .columns = 1, .figures = {{{0, 0}}}};
constexpr DataForm kOneFigure{.headRows = 1, .columns = 1, .figures = {{{0, 0}}}};
constexpr DataForm kPoints{.headRows = 1, .rows = 1, .columns = 5, .figures = {{{0, 2}, {4, 4}}}, .color = 3};
constexpr DataForm kValues{.rows = 1, .columns = 1, .figures = {{{0, 0}}}};
constexpr DataForm kPicture{};

constexpr Kind kKinds[] = {
    {"bar", Make<CBarGraph>, kBars},
    {"line", Make<CLineGraph>, kLine},
    {"steps", Make<CStepGraph>, kSteps},
    {"expenditure", Make<CExpenditureGraph>, kLine},
    {"activity", Make<CActivityCalGraph>, kActivity},
    {"simulation", Make<CSimulation>, kActivity},
    {"day", MakeDay, kWeek},
    {"week", MakeWeek, kWeek, "a sheet for each day of a week, as on the screen", "day"},
    {"week-print", MakePrintedWeek, kPrintedWeek, "the same as printed, a week a page", "day"},
    {"circle", MakeCircle, kLevels},
    {"circle-separate", MakeSeparateCircle, kLevels, "the same with the legend beside it", "circle"},
    {"bmi", Make<CBMIGraph_Eng>, kOneFigure},
    {"himand", Make<CHimandGraph>, kOneFigure},
    {"quadrant", Make<CQuadrantDays>, kQuadrant, "days in four quadrants, by samples/hosts/quadrant_days.h"},
    {"image", MakeImageChart, kPicture, "a picture file on CANVASCOLOR_RGB, through its mask if there is one"},
    {"panel", MakePanel, std::nullopt},
    {"plot", MakePlot, kPoints, "points on a panel, from a file of points"},
    {"pie", MakePie, kValues, "values as slices, from a file of values"},
    {"text", MakeText, std::nullopt},
};

} // namespace

std::span<const Kind> Kinds() { return kKinds; }

const char* DescriptionOf(const Kind& kind) {
    if (kind.description != nullptr)
        return kind.description;
    const GraphClass* graph = FindClassOfKind(kind.name);
    return graph != nullptr ? graph->says : "";
}

const char* KeysOf(const Kind& kind) { return kind.keysOf != nullptr ? kind.keysOf : kind.name; }

const Kind* FindKind(std::string_view name) {
    for (const Kind& kind : kKinds) {
        if (name == kind.name)
            return &kind;
    }
    return nullptr;
}

} // namespace melkar::tool
