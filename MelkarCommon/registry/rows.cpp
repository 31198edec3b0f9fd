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
#include <MelkarCommon/telling/words.h>

namespace melkar {

namespace {

// For each kind of chart the keys without which it isn't readable, as lines "KEY=VALUE" with values that suit each
// other and ordinary data: what somebody starts a profile with. Sections aren't told, the tables of keys know them.

constexpr const char* kBar = R"(CANVASCOLOR_RGB=255,255,255
BASECOLOR_RGB=255,255,255
PENCOLOR_RGB=198,206,216
VALUESIZE=10
TARGETSIZE=10
VMEASURESIZE=10
MEASURELABELSIZE=10
DATESIZE=10
TITLELABEL=" Steps"
TITLESIZE=15
VAXSLABEL=steps
BARSCOLOR_RGB=124,146,172
CHARTMAX=14000
CHARTINTERVAL=2000)";

constexpr const char* kLine = R"(CANVASCOLOR_RGB=255,255,255
BASECOLOR_RGB=255,255,255
PENCOLOR_RGB=198,206,216
VALUESIZE=10
TARGETSIZE=10
VMEASURESIZE=10
MEASURELABELSIZE=10
DATESIZE=10
TITLELABEL=" Steps and weight"
TITLESIZE=15
VAXSLABEL=steps
BARSCOLOR_RGB=124,146,172
CHARTMAX=24000
CHARTINTERVAL=4000
VLINEAXSLABEL=Weight (kg)
LINESCOLOR0_RGB=176,32,58
CHARTLINEMAX=76
CHARTLINEMIN=70
CHARTLINEINTERVAL=1)";

constexpr const char* kSteps = R"(CANVASCOLOR_RGB=255,255,255
BASECOLOR_RGB=255,255,255
PENCOLOR_RGB=198,206,216
VALUESIZE=10
TARGETSIZE=10
VMEASURESIZE=10
MEASURELABELSIZE=10
DATESIZE=10
TITLELABEL=" Steps"
TITLESIZE=15
VAXSLABEL=steps
BARSCOLOR_RGB=124,146,172
IS_PRINTAVERAGE=1
AVERAGELABEL=" Average"
AVERAGECOLOR_RGB=74,52,130
CHARTLINEMIN=1)";

constexpr const char* kExpenditure = R"(CANVASCOLOR_RGB=255,255,255
BASECOLOR_RGB=255,255,255
PENCOLOR_RGB=198,206,216
VALUESIZE=10
TARGETSIZE=10
VMEASURESIZE=10
MEASURELABELSIZE=10
DATESIZE=10
TITLELABEL=" Energy expenditure"
TITLESIZE=15
VAXSLABEL=kcal
BARSCOLOR0_RGB=112,150,196
BARSCOLOR1_RGB=24,64,112
CHARTLINEMIN=1
EX1_LABEL=" Total"
EX2_LABEL=" Activity"
AVERAGE_INTAKE_LABEL=Average intake
INTAKECOLOR_RGB=250,230,184)";

constexpr const char* kActivity = R"(CANVASCOLOR_RGB=255,255,255
BASECOLOR_RGB=255,255,255
PENCOLOR_RGB=198,206,216
VALUESIZE=10
TARGETSIZE=10
VMEASURESIZE=10
MEASURELABELSIZE=10
DATESIZE=10
TITLELABEL=" Activity calories"
TITLESIZE=15
VAXSLABEL=kcal
BARSCOLOR_RGB=124,146,172
BARSCOLOR2_RGB=14,92,72
TARGETLABEL="  Target"
TARGETCOLOR_RGB=186,72,8
CHARTMAX=600
CHARTINTERVAL=100)";

constexpr const char* kSimulation = R"(CANVASCOLOR_RGB=255,255,255
BASECOLOR_RGB=255,255,255
PENCOLOR_RGB=198,206,216
VALUESIZE=10
TARGETSIZE=10
VMEASURESIZE=10
MEASURELABELSIZE=10
DATESIZE=10
TITLELABEL=" Weight plan"
TITLESIZE=15
VAXSLABEL=Activity (kcal)
BARSCOLOR_RGB=124,146,172
BARSCOLOR2_RGB=124,146,172
CHARTMAX=1400
CHARTINTERVAL=200
OVERWEIGHTCOLOR_RGB=212,98,28
UNDERWEIGHTCOLOR_RGB=8,84,96
TARGETWEIGHTCOLOR_RGB=40,24,84
WEIGHTSTRING=Weight (kg)
TARGETWEIGHTSTRING="Target weight  ")";

constexpr const char* kDay = R"(CANVASCOLOR_RGB=255,255,255
BASECOLOR_RGB=255,255,255
PENCOLOR_RGB=198,206,216
VIGOROUSCOLOR_RGB=226,102,80
MODERATECOLOR_RGB=250,214,140
LIGHTCOLOR_RGB=112,150,200
VIGOROUSLABEL=High
MODERATELABEL=Mid
LIGHTLABEL=Low
POLYGONCOLOR_RGB=96,140,190
EVENTCOLOR_RGB=206,84,30
INTENSITY=Intensity
MIN=min
STEPUNIT=steps ·
ACTCALUNIT=kcal active ·
TOTALCALUNIT=kcal in all
EXERCISE_LABEL=· exercise
EXERCISE_UNIT=" MET-h")";

constexpr const char* kCircle = R"(BASECOLOR_RGB=255,255,255
TITLELABEL=" Active time"
TITLESIZE=15
MIN=min
LIGHTLABEL=Light
MODERATELABEL=Moderate
VIGOROUSLABEL=Vigorous
LIGHTCOLOR_RGB=110,156,150
MODERATECOLOR_RGB=26,100,104
VIGOROUSCOLOR_RGB=8,44,58)";

constexpr const char* kBmi = R"(CANVASCOLOR_RGB=255,255,255
PENCOLOR_RGB=198,206,216
CLASSCOLOR0_RGB=40,90,150
CLASSCOLOR1_RGB=34,126,84
CLASSCOLOR2_RGB=156,106,0
CLASSCOLOR3_RGB=140,40,0
CLASSCOLOR4_RGB=190,30,60
CLASSCOLOR5_RGB=172,88,142
CLASSMAXVALUE0=18.5
CLASSMAXVALUE1=25
CLASSMAXVALUE2=30
CLASSMAXVALUE3=35
CLASSMAXVALUE4=40
MIN=15
MAX=45)";

constexpr const char* kHimand = R"(BASECOLOR_RGB=255,255,255
PENCOLOR_RGB=198,206,216
CLASSCOLOR0_RGB=84,136,192
CLASSCOLOR1_RGB=150,214,170
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
LEFTUPPERR_COLOR_RGB=200,158,104
RIHGTUPPER_COLOR_RGB=206,236,218
LEFTLOWER_COLOR_RGB=222,228,236
RIHGTLOWER_COLOR_RGB=134,166,202
LEFTUPPERR_LABEL=" Brisk, few steps"
RIHGTUPPER_LABEL=" Active in every way"
LEFTLOWER_LABEL=" Low activity"
RIHGTLOWER_LABEL=" Many steps, low intensity"
VAXSLABEL=minutes at level __d__ and above
HAXSLABEL=steps
VAXSSIZE=9
LEFT_SPACE="0000000000"
RIGHT_SPACE="00000000000000000000000000")";

/// Of bare panels as well.
constexpr const char* kPlot = R"(TITLE_LABEL=Weight
TITLE_HEIGHT=56
TITLE_FONT=28
TITLE_LABEL_RGB=38,50,66
TITLE_BK_RGB=226,234,243
GRAPH_OFFSET_LT=104,88
GRAPH_OFFSET_RB=40,84
GRAPH_BK_RGB=255,255,255
GRAPH_GRID_RGB=198,206,216
GRAPH_VERTICAL_DIVIDE_L=5
GRAPH_HORIZONTAL_DIVIDE=5
GRAPH_VERTICAL_DIVIDE_WIDTH_L=8
GRAPH_HORIZONTAL_DIVIDE_HEIGHT=8
GRAPH_VERTICAL_GRID_L=true
GRAPH_VERTICAL_MAX_L=80
GRAPH_VERTICAL_MIN_L=70
GRAPH_HORIZONTAL_MAX=20
VERTICAL_SCALE_L=true
VERTICAL_SCALE_OFFSET_L=10
VERTICAL_SCALE_WIDTH_L=44
VERTICAL_SCALE_FONT_L=18
VERTICAL_SCALE_FORMAT_L=%.0f
VERTICAL_LABEL_WIDTH_L=32
VERTICAL_LABEL_FONT_L=18
VERTICAL_LABEL_L=kg
HORIZONTAL_SCALE_OFFSET=10
HORIZONTAL_SCALE_HEIGHT=24
HORIZONTAL_SCALE_FONT=18
HORIZONTAL_SCALE_FORMAT=%.0f
HORIZONTAL_LABEL_HEIGHT=26
HORIZONTAL_LABEL_FONT=18
HORIZONTAL_LABEL=week)";

constexpr const char* kPie = R"(TITLE_LABEL=Active minutes
TITLE_HEIGHT=56
TITLE_FONT=28
TITLE_LABEL_RGB=38,50,66
TITLE_BK_RGB=226,234,243
GRAPH_OFFSET_LT=40,84
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
NOTE_MARK_RGB1=136,180,173
NOTE_MARK_RGB2=205,236,228
NOTE_MARK_RGB3=30,132,128
GRAPH_VALUE_RGB1=136,180,173
GRAPH_VALUE_RGB2=205,236,228
GRAPH_VALUE_RGB3=30,132,128
GRAPH_VALUE_FONT=22
GRAPH_VALUE_UNIT=" min")";

constexpr const char* kText = R"(TITLE_LABEL=Before you start
TITLE_HEIGHT=56
TITLE_FONT=28
TITLE_LABEL_RGB=38,50,66
TITLE_BK_RGB=226,234,243
GRAPH_OFFSET_LT=80,96
GRAPH_OFFSET_RB=80,40
TEXT=Start slowly, and add a few minutes each week.
TEXT_FONT=30)";

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
     "", CGraph::ProfileKeys, nullptr, nullptr, "", ContentsOf<CGraph>},
    {"bar", "CBarGraph", "CGraph", "a bar for each day, or a stack of bars",
     kBar, CBarGraph::ProfileKeys, CBarGraph::DataFiles, MakeGraph<CBarGraph>, "",
     ContentsOf<CBarGraph>},
    {"line", "CLineGraph", "CBarGraph", "bars and a line on a scale of its own",
     kLine, CLineGraph::ProfileKeys, LineFromFile::DataFiles, MakeGraph<LineFromFile>, "",
     ContentsOf<CLineGraph>},
    {"steps", "CStepGraph", "CLineGraph", "steps, with scale and average from the data file",
     kSteps, nullptr, CStepGraph::DataFiles, MakeGraph<CStepGraph>, "",
     ContentsOf<CStepGraph>},
    {"expenditure", "CExpenditureGraph", "CLineGraph", "energy in two parts over the band of the average intake",
     kExpenditure, CExpenditureGraph::ProfileKeys, CExpenditureGraph::DataFiles, MakeGraph<CExpenditureGraph>, "",
     ContentsOf<CExpenditureGraph>},
    {"activity", "CActivityCalGraph", "CExpenditureGraph", "activity calories of days or periods",
     kActivity, nullptr, CActivityCalGraph::DataFiles, MakeGraph<CActivityCalGraph>, "",
     ContentsOf<CActivityCalGraph>},
    {"simulation", "CSimulation", "CActivityCalGraph", "measured and planned weight over activity calories",
     kSimulation, CSimulation::ProfileKeys, CSimulation::DataFiles, MakeGraph<CSimulation>, "",
     ContentsOf<CSimulation>},
    {"day", "CCircadianGraph", "CGraph", "activity of one day, from a weekly file",
     kDay, CCircadianGraph::ProfileKeys, CWeeklyCircadian::ScreenFiles, MakeGraph<DayFromFile>, "",
     ContentsOf<CCircadianGraph>},
    {"week", "CWeeklyCircadian", "", "a sheet for each day of a week, as on the screen",
     "", nullptr, CWeeklyCircadian::ScreenFiles, nullptr, "day"},
    {"week-print", "", "", "the same as printed, a week a page",
     "", nullptr, CWeeklyCircadian::PrintFiles, nullptr, "day"},
    {"circle", "CCircleGraph", "CGraph", "light, moderate and vigorous time as a pie, legend below it",
     kCircle, CCircleGraph::ProfileKeys, CircleFromFile::DataFiles, MakeGraph<CircleFromFile>, "",
     ContentsOf<CCircleGraph>},
    {"circle-separate", "", "CCircleGraph", "the same with the legend beside it",
     "", nullptr, nullptr, MakeGraph<SeparateCircleFromFile>, "circle",
     ContentsOf<SeparateCircleFromFile>},
    {"", "CBMIGraph_Base", "CGraph", "a figure against classes of values",
     "", CBMIGraph_Base::ProfileKeys, CBMIGraph_Base::DataFiles, nullptr, "",
     ContentsOf<CBMIGraph_Base>},
    {"bmi", "CBMIGraph_Eng", "CBMIGraph_Base", "a bar in the colour of the figure's class",
     kBmi, nullptr, nullptr, MakeGraph<CBMIGraph_Eng>, "",
     ContentsOf<CBMIGraph_Eng>},
    {"himand", "CHimandGraph", "CBMIGraph_Base", "a disc below the classes of obesity",
     kHimand, CHimandGraph::ProfileKeys, nullptr, MakeGraph<CHimandGraph>, "",
     ContentsOf<CHimandGraph>},
    {"quadrant", "CSquareGraph", "CGraph", "the frame of four coloured quadrants, for a derived class to plot on",
     kQuadrant, CSquareGraph::ProfileKeys, CSquareGraph::DataFiles, MakeGraph<CSquareGraph>, "",
     ContentsOf<CSquareGraph>},
    {"image", "", "", "a picture file on CANVASCOLOR_RGB, through its mask if there is one",
     "", nullptr, PictureFiles},
    {"panel", "CGraphBase", "CGraph", "the frame of a panel, all of it from keys",
     kPlot, CGraphBase::ProfileKeys, nullptr, MakePanel, "",
     ContentsOf<CGraphBase>},
    {"plot", "CPlotGraph", "CGraphBase", "points on a panel, from a file of points",
     kPlot, nullptr, PlotFromFile::DataFiles, MakeGraph<PlotFromFile>, "",
     ContentsOf<CPlotGraph>},
    {"pie", "CCircleGraphBase", "CGraphBase", "values as slices, from a file of values",
     kPie, CCircleGraphBase::ProfileKeys, PieFromFile::DataFiles, MakeGraph<PieFromFile>, "",
     ContentsOf<CCircleGraphBase>},
    {"text", "CFixedText", "CGraphBase", "a text of the profile on a panel",
     kText, CFixedText::ProfileKeys, nullptr, MakeText, "",
     ContentsOf<CFixedText>},
    {"", "CReport", "", "a printed report",
     "", CReport::ProfileKeys},
    {"report", "CReportHeader", "CReport", "the heading block of a report", // no base: a report's keys are read with it
     kReport, CReportHeader::ProfileKeys, CReportHeader::DataFiles},
    {"", "DescriptionWords", "", "the sentences in which pictures are described",
     "", DescriptionWords::ProfileKeys},
};
// clang-format on

} // namespace

std::span<const KindRow> LibraryRows() { return kRows; }

} // namespace melkar
