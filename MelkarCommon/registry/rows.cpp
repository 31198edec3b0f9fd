#include <MelkarCommon/registry/rows.h>

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
#include <MelkarCommon/reports/report.h>
#include <MelkarCommon/reports/report_header.h>

namespace melkar {

namespace {

// For each kind of chart the keys without which it isn't readable, as lines "KEY=VALUE" with values that suit each
// other and ordinary data: what somebody starts a profile with. Sections aren't told, the tables of keys know them.

constexpr const char* kBar = R"(CANVASCOLOR_RGB=247,249,252
BASECOLOR_RGB=255,255,255
TITLELABEL=" Steps"
TITLESIZE=15
VAXSLABEL=steps
BARSCOLOR_RGB=150,190,226
CHARTMAX=12000
CHARTINTERVAL=2000)";

constexpr const char* kLine = R"(CANVASCOLOR_RGB=247,249,252
BASECOLOR_RGB=255,255,255
VALUESIZE=9
TITLELABEL=" Steps and weight"
TITLESIZE=15
VAXSLABEL=steps
BARSCOLOR_RGB=150,190,226
CHARTMAX=14000
CHARTINTERVAL=2000
VLINEAXSLABEL=Weight (kg)
LINESCOLOR0_RGB=160,40,60
CHARTLINEMAX=76
CHARTLINEMIN=62
CHARTLINEINTERVAL=2)";

constexpr const char* kSteps = R"(CANVASCOLOR_RGB=247,249,252
BASECOLOR_RGB=255,255,255
VALUESIZE=9
TITLELABEL=" Steps"
TITLESIZE=15
VAXSLABEL=steps
BARSCOLOR_RGB=150,190,226
CHARTLINEMIN=1)";

constexpr const char* kExpenditure = R"(CANVASCOLOR_RGB=247,249,252
BASECOLOR_RGB=255,255,255
VALUESIZE=9
TITLELABEL=" Energy expenditure"
TITLESIZE=15
VAXSLABEL=kcal
BARSCOLOR0_RGB=150,190,226
BARSCOLOR1_RGB=44,96,150
CHARTLINEMIN=1
EX1_LABEL=" Total"
EX2_LABEL=" Activity"
AVERAGE_INTAKE_LABEL=Average intake
INTAKECOLOR_RGB=246,214,150)";

constexpr const char* kActivity = R"(CANVASCOLOR_RGB=247,249,252
BASECOLOR_RGB=255,255,255
VALUESIZE=9
TITLELABEL=" Activity calories"
TITLESIZE=15
VAXSLABEL=kcal
BARSCOLOR_RGB=150,190,226
BARSCOLOR2_RGB=104,190,156
TARGETLABEL="  Target"
CHARTMAX=600
CHARTINTERVAL=100)";

constexpr const char* kSimulation = R"(CANVASCOLOR_RGB=247,249,252
BASECOLOR_RGB=255,255,255
VALUESIZE=9
TITLELABEL=" Weight plan"
TITLESIZE=15
VAXSLABEL=Activity (kcal)
BARSCOLOR_RGB=190,210,229
BARSCOLOR2_RGB=190,210,229
CHARTMAX=700
CHARTINTERVAL=100
OVERWEIGHTCOLOR_RGB=184,80,20
UNDERWEIGHTCOLOR_RGB=22,122,134
TARGETWEIGHTCOLOR_RGB=40,24,84
WEIGHTSTRING=Weight (kg)
TARGETWEIGHTSTRING="Target weight  ")";

constexpr const char* kDay = R"(CANVASCOLOR_RGB=247,249,252
BASECOLOR_RGB=255,255,255
VIGOROUSCOLOR_RGB=253,219,210
MODERATECOLOR_RGB=253,229,178
LIGHTCOLOR_RGB=203,233,214
VIGOROUSLABEL=High
MODERATELABEL=Mid
LIGHTLABEL=Low
POLYGONCOLOR_RGB=212,231,249
INTENSITY=Intensity
MIN=min
STEPUNIT=steps ·
ACTCALUNIT=kcal active ·
TOTALCALUNIT=kcal in all
EXERCISE_LABEL=· exercise
EXERCISE_UNIT=" MET-h")";

constexpr const char* kCircle = R"(BASECOLOR_RGB=255,255,255
MIN=min
LIGHTLABEL=Light
MODERATELABEL=Moderate
VIGOROUSLABEL=Vigorous
LIGHTCOLOR_RGB=118,176,138
MODERATECOLOR_RGB=226,168,72
VIGOROUSCOLOR_RGB=204,98,82)";

constexpr const char* kBmi = R"(CANVASCOLOR_RGB=247,249,252
CLASSCOLOR0_RGB=62,118,170
CLASSCOLOR1_RGB=34,126,84
CLASSCOLOR2_RGB=150,104,12
CLASSCOLOR3_RGB=184,84,26
CLASSCOLOR4_RGB=184,56,56
CLASSCOLOR5_RGB=172,88,142
CLASSMAXVALUE0=18.5
CLASSMAXVALUE1=25
CLASSMAXVALUE2=30
CLASSMAXVALUE3=35
CLASSMAXVALUE4=40
MIN=15
MAX=45)";

constexpr const char* kHimand = R"(BASECOLOR_RGB=255,255,255
CLASSCOLOR0_RGB=84,136,192
CLASSCOLOR1_RGB=58,146,102
CLASSCOLOR2_RGB=206,104,36
CLASSMAXVALUE0=-10
CLASSMAXVALUE1=20
CLASSMAXVALUE2=60
CLASSCAPTION0=Thin
CLASSCAPTION1=Normal
CLASSCAPTION2=Heavy
MIN=-40
MAX=60
CLASSCOLORNAME0_RGB=226,237,246
CLASSCOLORNAME1_RGB=222,241,230
CLASSCOLORNAME2_RGB=250,232,216
CLASSCAPTION2_0=< -10 %
CLASSCAPTION2_1=-10 … +20 %
CLASSCAPTION2_2=> +20 %)";

constexpr const char* kQuadrant = R"(BASECOLOR_RGB=255,255,255
TITLELABEL=" Steps and brisk minutes"
TITLESIZE=15
POINTSIZE=8
POINT=●
LEFTUPPERR_COLOR_RGB=253,236,205
RIHGTUPPER_COLOR_RGB=208,236,221
LEFTLOWER_COLOR_RGB=238,241,245
RIHGTLOWER_COLOR_RGB=212,228,243
LEFTUPPERR_LABEL=" Brisk, but short"
RIHGTUPPER_LABEL=" Active in every way"
LEFTLOWER_LABEL=" A quiet day"
RIHGTLOWER_LABEL=" Much, but easy"
VAXSLABEL=minutes at level __d__ and above
HAXSLABEL=steps
VAXSSIZE=9
LEFT_SPACE=00000000
RIGHT_SPACE=00000000000000000000)";

/// Of bare panels as well.
constexpr const char* kPlot = R"(GRAPH_OFFSET_LT=88,20
GRAPH_OFFSET_RB=40,80
GRAPH_BK_RGB=247,249,252
GRAPH_VERTICAL_DIVIDE_L=5
GRAPH_HORIZONTAL_DIVIDE=5
GRAPH_VERTICAL_GRID_L=true
GRAPH_VERTICAL_MAX_L=80
GRAPH_VERTICAL_MIN_L=70
GRAPH_HORIZONTAL_MAX=20
VERTICAL_SCALE_L=true
VERTICAL_SCALE_OFFSET_L=10
VERTICAL_SCALE_WIDTH_L=40
VERTICAL_SCALE_FONT_L=18
VERTICAL_SCALE_FORMAT_L=%.0f
VERTICAL_LABEL_WIDTH_L=28
VERTICAL_LABEL_FONT_L=18
VERTICAL_LABEL_L=kg
HORIZONTAL_SCALE_OFFSET=10
HORIZONTAL_SCALE_HEIGHT=24
HORIZONTAL_SCALE_FONT=18
HORIZONTAL_SCALE_FORMAT=%.0f
HORIZONTAL_LABEL_HEIGHT=26
HORIZONTAL_LABEL_FONT=18
HORIZONTAL_LABEL=week)";

constexpr const char* kPie = R"(GRAPH_OFFSET_LT=40,28
GRAPH_OFFSET_RB=320,28
NOTE_SHOW=true
NOTE_OFFSET_LT=600,180
NOTE_OFFSET_RB=60,170
NOTE_LABEL_FONT=22
NOTE_MARK_WIDTH=44
NOTE_BK_RGB=237,241,246
NOTE_LABEL1=Light
NOTE_LABEL2=Moderate
NOTE_LABEL3=Vigorous
NOTE_MARK_RGB1=84,136,192
NOTE_MARK_RGB2=42,134,108
NOTE_MARK_RGB3=204,98,32
GRAPH_VALUE_RGB1=84,136,192
GRAPH_VALUE_RGB2=42,134,108
GRAPH_VALUE_RGB3=204,98,32
GRAPH_VALUE_FONT=22
GRAPH_VALUE_UNIT=" min")";

constexpr const char* kText = R"(GRAPH_OFFSET_LT=80,40
GRAPH_OFFSET_RB=80,40
TEXT=Start slowly, and add a few minutes each week.)";

/// The widths that the header's columns take, and its labels.
constexpr const char* kReport = R"(1ST_LABEL="  Comment  "
2ND_LABEL="  Height  "
3RD_LABEL="  Weight  "
4TH_LABEL="  Printed  "
1ST_TEXT="  000 years  "
2ND_TEXT="  000.0 cm  "
4TH_TEXT="  September 30, 2026  "
NAME_LABEL=Name
GROUP_LABEL=Group
DATE_LABEL=Printed
COMMENT_LABEL=Comment
HEIGHT_LABEL=Height
WEIGHT_LABEL=Weight
AGE_LABEL=Age
AGE_UNIT=years)";

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
     kBar, CBarGraph::ProfileKeys, CBarGraph::DataFiles, MakeGraph<CBarGraph>},
    {"line", "CLineGraph", "CBarGraph", "bars and a line on a scale of its own",
     kLine, CLineGraph::ProfileKeys, LineFromFile::DataFiles, MakeGraph<LineFromFile>},
    {"steps", "CStepGraph", "CLineGraph", "steps, with scale and average from the data file",
     kSteps, nullptr, CStepGraph::DataFiles, MakeGraph<CStepGraph>},
    {"expenditure", "CExpenditureGraph", "CLineGraph", "energy in two parts over the band of the average intake",
     kExpenditure, CExpenditureGraph::ProfileKeys, CExpenditureGraph::DataFiles, MakeGraph<CExpenditureGraph>},
    {"activity", "CActivityCalGraph", "CExpenditureGraph", "activity calories of days or periods",
     kActivity, nullptr, CActivityCalGraph::DataFiles, MakeGraph<CActivityCalGraph>},
    {"simulation", "CSimulation", "CActivityCalGraph", "measured and planned weight over activity calories",
     kSimulation, CSimulation::ProfileKeys, CSimulation::DataFiles, MakeGraph<CSimulation>},
    {"day", "CCircadianGraph", "CGraph", "activity of one day, from a weekly file",
     kDay, CCircadianGraph::ProfileKeys, CWeeklyCircadian::ScreenFiles, MakeGraph<DayFromFile>},
    {"week", "CWeeklyCircadian", "", "a sheet for each day of a week, as on the screen",
     "", nullptr, CWeeklyCircadian::ScreenFiles, nullptr, "day"},
    {"week-print", "", "", "the same as printed, a week a page",
     "", nullptr, CWeeklyCircadian::PrintFiles, nullptr, "day"},
    {"circle", "CCircleGraph", "CGraph", "light, moderate and vigorous time as a pie, legend below it",
     kCircle, CCircleGraph::ProfileKeys, CircleFromFile::DataFiles, MakeGraph<CircleFromFile>},
    {"circle-separate", "", "CCircleGraph", "the same with the legend beside it",
     "", nullptr, nullptr, MakeGraph<SeparateCircleFromFile>, "circle"},
    {"", "CBMIGraph_Base", "CGraph", "a figure against classes of values",
     "", CBMIGraph_Base::ProfileKeys, CBMIGraph_Base::DataFiles},
    {"bmi", "CBMIGraph_Eng", "CBMIGraph_Base", "a bar in the colour of the figure's class",
     kBmi, nullptr, nullptr, MakeGraph<CBMIGraph_Eng>},
    {"himand", "CHimandGraph", "CBMIGraph_Base", "a disc below the classes of obesity",
     kHimand, CHimandGraph::ProfileKeys, nullptr, MakeGraph<CHimandGraph>},
    {"quadrant", "CSquareGraph", "CGraph", "the frame of four coloured quadrants, for a derived class to plot on",
     kQuadrant, CSquareGraph::ProfileKeys, CSquareGraph::DataFiles, MakeGraph<CSquareGraph>},
    {"image", "", "", "a picture file on CANVASCOLOR_RGB, through its mask if there is one",
     "", nullptr, PictureFiles},
    {"panel", "CGraphBase", "CGraph", "the frame of a panel, all of it from keys",
     kPlot, CGraphBase::ProfileKeys, nullptr, MakePanel},
    {"plot", "CPlotGraph", "CGraphBase", "points on a panel, from a file of points",
     kPlot, nullptr, PlotFromFile::DataFiles, MakeGraph<PlotFromFile>},
    {"pie", "CCircleGraphBase", "CGraphBase", "values as slices, from a file of values",
     kPie, CCircleGraphBase::ProfileKeys, PieFromFile::DataFiles, MakeGraph<PieFromFile>},
    {"text", "CFixedText", "CGraphBase", "a text of the profile on a panel",
     kText, CFixedText::ProfileKeys, nullptr, MakeText},
    {"", "CReport", "", "a printed report",
     "", CReport::ProfileKeys},
    {"report", "CReportHeader", "CReport", "the heading block of a report", // no base: a report's keys are read with it
     kReport, CReportHeader::ProfileKeys, CReportHeader::DataFiles},
};
// clang-format on

} // namespace

std::span<const KindRow> LibraryRows() { return kRows; }

} // namespace melkar
