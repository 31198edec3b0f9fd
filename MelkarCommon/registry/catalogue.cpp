#include <MelkarCommon/registry/catalogue.h>

#include <MelkarCommon/bars/activity_cal_graph.h>
#include <MelkarCommon/bars/bar_graph.h>
#include <MelkarCommon/bars/expenditure_graph.h>
#include <MelkarCommon/bars/line_graph.h>
#include <MelkarCommon/bars/simulation.h>
#include <MelkarCommon/bars/step_graph.h>
#include <MelkarCommon/circadian/circadian_graph.h>
#include <MelkarCommon/circadian/circle_graph.h>
#include <MelkarCommon/circadian/weekly_circadian.h>
#include <MelkarCommon/declarative/circle_graph_base.h>
#include <MelkarCommon/declarative/fixed_text.h>
#include <MelkarCommon/declarative/graph_base.h>
#include <MelkarCommon/declarative/plot_graph.h>
#include <MelkarCommon/gauges/bmi_graph_eng.h>
#include <MelkarCommon/gauges/himand_graph.h>
#include <MelkarCommon/quadrant/square_graph.h>
#include <MelkarCommon/registry/from_file.h>
#include <MelkarCommon/registry/starters.h>
#include <MelkarCommon/reports/report.h>
#include <MelkarCommon/reports/report_header.h>
#include <MelkarCommon/support/ring_log.h>

#include <string>

namespace melkar {

namespace {

/// A bare panel leaves it to its maker to read the keys.
std::unique_ptr<CGraph> MakePanel(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon) {
    auto panel = std::make_unique<CGraphBase>(window, dc, section, shared, second, balloon);
    char ofAllGraphs[] = "";
    panel->ReadIniFile(ofAllGraphs);
    return panel;
}

/// The text under the key TEXT, centred.
std::unique_ptr<CGraph> MakeText(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon) {
    return std::make_unique<CFixedText>(window, dc, section, "TEXT", shared, second, balloon, DT_CENTER | DT_VCENTER,
                                        0);
}

/// No columns: the file is a picture.
DataTables PictureFiles() {
    return {{DataForm{}.Note("A picture: .bmp, .png or what else the system reads. NAME-mask.bmp beside NAME.bmp is "
                             "laid over it: the picture shows where that is white."),
             {},
             {},
             ""}};
}

// clang-format off
constexpr KindRow kRows[] = {
    {"", "CGraph", "", "the frame of every graph",
     "", CGraph::ProfileKeys},
    {"bar", "CBarGraph", "CGraph", "a bar for each day, or a stack of bars",
     starters::kBar, CBarGraph::ProfileKeys, CBarGraph::DataFiles, MakeGraph<CBarGraph>},
    {"line", "CLineGraph", "CBarGraph", "bars and a line on a scale of its own",
     starters::kLine, CLineGraph::ProfileKeys, LineFromFile::DataFiles, MakeGraph<LineFromFile>},
    {"steps", "CStepGraph", "CLineGraph", "steps, with scale and average from the data file",
     starters::kSteps, nullptr, CStepGraph::DataFiles, MakeGraph<CStepGraph>},
    {"expenditure", "CExpenditureGraph", "CLineGraph", "energy in two parts over the band of the average intake",
     starters::kExpenditure, CExpenditureGraph::ProfileKeys, CExpenditureGraph::DataFiles, MakeGraph<CExpenditureGraph>},
    {"activity", "CActivityCalGraph", "CExpenditureGraph", "activity calories of days or periods",
     starters::kActivity, nullptr, CActivityCalGraph::DataFiles, MakeGraph<CActivityCalGraph>},
    {"simulation", "CSimulation", "CActivityCalGraph", "measured and planned weight over activity calories",
     starters::kSimulation, CSimulation::ProfileKeys, CSimulation::DataFiles, MakeGraph<CSimulation>},
    {"day", "CCircadianGraph", "CGraph", "activity of one day, from a weekly file",
     starters::kDay, CCircadianGraph::ProfileKeys, CWeeklyCircadian::ScreenFiles, MakeGraph<DayFromFile>},
    {"week", "CWeeklyCircadian", "", "a sheet for each day of a week, as on the screen",
     "", nullptr, CWeeklyCircadian::ScreenFiles, nullptr, "day"},
    {"week-print", "", "", "the same as printed, a week a page",
     "", nullptr, CWeeklyCircadian::PrintFiles, nullptr, "day"},
    {"circle", "CCircleGraph", "CGraph", "light, moderate and vigorous time as a pie, legend below it",
     starters::kCircle, CCircleGraph::ProfileKeys, CircleFromFile::DataFiles, MakeGraph<CircleFromFile>},
    {"circle-separate", "", "CCircleGraph", "the same with the legend beside it",
     "", nullptr, nullptr, MakeGraph<SeparateCircleFromFile>, "circle"},
    {"", "CBMIGraph_Base", "CGraph", "a figure against classes of values",
     "", CBMIGraph_Base::ProfileKeys, CBMIGraph_Base::DataFiles},
    {"bmi", "CBMIGraph_Eng", "CBMIGraph_Base", "a bar in the colour of the figure's class",
     starters::kBmi, nullptr, nullptr, MakeGraph<CBMIGraph_Eng>},
    {"himand", "CHimandGraph", "CBMIGraph_Base", "a disc below the classes of obesity",
     starters::kHimand, CHimandGraph::ProfileKeys, nullptr, MakeGraph<CHimandGraph>},
    {"quadrant", "CSquareGraph", "CGraph", "the frame of four coloured quadrants, for a derived class to plot on",
     starters::kQuadrant, CSquareGraph::ProfileKeys, CSquareGraph::DataFiles, MakeGraph<CSquareGraph>},
    {"image", "", "", "a picture file on CANVASCOLOR_RGB, through its mask if there is one",
     "", nullptr, PictureFiles},
    {"panel", "CGraphBase", "CGraph", "the frame of a panel, all of it from keys",
     starters::kPlot, CGraphBase::ProfileKeys, nullptr, MakePanel},
    {"plot", "CPlotGraph", "CGraphBase", "points on a panel, from a file of points",
     starters::kPlot, nullptr, PlotFromFile::DataFiles, MakeGraph<PlotFromFile>},
    {"pie", "CCircleGraphBase", "CGraphBase", "values as slices, from a file of values",
     starters::kPie, CCircleGraphBase::ProfileKeys, PieFromFile::DataFiles, MakeGraph<PieFromFile>},
    {"text", "CFixedText", "CGraphBase", "a text of the profile on a panel",
     starters::kText, CFixedText::ProfileKeys, nullptr, MakeText},
    {"", "CReport", "", "a printed report",
     "", CReport::ProfileKeys},
    {"report", "CReportHeader", "CReport", "the heading block of a report", // no base: a report's keys are read with it
     starters::kReport, CReportHeader::ProfileKeys, CReportHeader::DataFiles},
};
// clang-format on

std::deque<KindRow>& Rows() {
    static std::deque<KindRow> rows(std::begin(kRows), std::end(kRows));
    return rows;
}

/// The row whose `field` has that text; an empty one finds nothing.
const KindRow* Find(const char* KindRow::*field, std::string_view text) {
    for (const KindRow& row : Rows())
        if (!text.empty() && text == row.*field)
            return &row;
    return nullptr;
}

} // namespace

const std::deque<KindRow>& Catalogue() { return Rows(); }

const KindRow* FindClass(std::string_view name) { return Find(&KindRow::className, name); }
const KindRow* FindKind(std::string_view kind) { return Find(&KindRow::kind, kind); }

bool Register(const KindRow& row) {
    const bool isKnown = FindKind(row.kind) || FindClass(row.className);
    if (isKnown || (*row.base && !FindClass(row.base)) || (*row.keysOf && !FindKind(row.keysOf))) {
        LogText((std::string("not registered: kind [") + row.kind + "], class [" + row.className +
                 (isKnown ? "] is there already" : "] rests on a row that isn't"))
                    .c_str());
        return false;
    }
    Rows().push_back(row);
    return true;
}

std::vector<ClassKeys> KeysReadBy(const KindRow& row) {
    if (const KindRow* other = FindKind(row.keysOf))
        return KeysReadBy(*other);
    std::vector<ClassKeys> keys;
    for (const KindRow* one = &row; one; one = FindClass(one->base))
        if (one->keys)
            keys.insert(keys.begin(), one->keys());
    return keys;
}

DataTables FilesReadBy(const KindRow& row) {
    for (const KindRow* one = &row; one; one = FindClass(one->base))
        if (one->data)
            return one->data();
    return {};
}

} // namespace melkar
