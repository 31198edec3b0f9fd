#include "kinds.h"

#include "graph_chart.h"
#include "host_graphs.h"
#include "image_chart.h"
#include "week_charts.h"

#include <MelkarCommon/bars/activity_cal_graph.h>
#include <MelkarCommon/bars/expenditure_graph.h>
#include <MelkarCommon/bars/simulation.h>
#include <MelkarCommon/bars/step_graph.h>
#include <MelkarCommon/registry/from_file.h>

#include <pressure_graph.h>
#include <two_scales.h>

#include <string_view>

namespace melkar::tool {
namespace {

/// A graph that is more than the catalogue makes: with options of a host.
template <class Graph> std::unique_ptr<Chart> Make(const ChartOptions& options) {
    return std::make_unique<GraphChart>(std::make_unique<Graph>(options));
}

/// A kind that needs one.
struct Adapter {
    std::string_view kind;
    std::unique_ptr<Chart> (*make)(const ChartOptions& options);
    const char* says = nullptr; ///< null: as the catalogue does
};
constexpr Adapter kAdapters[] = {
    {"bar", Make<HostBars<CBarGraph>>},
    {"line", Make<HostBars<LineFromFile>>},
    {"steps", Make<HostBars<CStepGraph>>},
    {"expenditure", Make<HostBars<CExpenditureGraph>>},
    {"activity", Make<HostBars<CActivityCalGraph>>},
    {"simulation", Make<HostBars<CSimulation>>},
    {"day", Make<HostDay>},
    {"week", MakeWeek},
    {"week-print", MakePrintedWeek},
    {"circle", Make<HostCircle<CircleFromFile>>},
    {"circle-separate", Make<HostCircle<SeparateCircleFromFile>>},
    {"quadrant", Make<HostQuadrant>, "days in four quadrants, by samples/hosts/quadrant_days.h"},
    {"image", MakeImageChart},
    {"text", Make<HostText>},
};

const Adapter* FindAdapter(std::string_view kind) {
    for (const Adapter& adapter : kAdapters)
        if (adapter.kind == kind)
            return &adapter;
    return nullptr;
}

} // namespace

void RegisterSamples() {
    CQuadrantDays::Register();
    CPressureGraph::Register();
    CTwoScales::Register();
}

bool IsOfSamples(const KindRow& kind) {
    const std::string_view name = kind.kind;
    return name == "pressure" || name == "two-scales";
}

bool IsDrawn(const KindRow& kind) { return *kind.kind && (FindAdapter(kind.kind) || kind.make); }

const char* SaysOf(const KindRow& kind) {
    const Adapter* adapter = FindAdapter(kind.kind);
    return adapter && adapter->says ? adapter->says : kind.says;
}

std::unique_ptr<Chart> MakeChart(const KindRow& kind, const ChartOptions& options) {
    if (const Adapter* adapter = FindAdapter(kind.kind))
        return adapter->make(options);
    return std::make_unique<GraphChart>(
        kind.make(nullptr, nullptr, options.section.c_str(), nullptr, nullptr, nullptr));
}

} // namespace melkar::tool
