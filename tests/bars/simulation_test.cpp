#include "chart_fixture.h"

#include <MelkarCommon/bars/simulation.h>
#include <MelkarCommon/bars/step_graph.h>
#include <MelkarCommon/bars/weight_layout.h>

#include <gmock/gmock.h>

#include <climits>
#include <filesystem>

namespace {

using melkar::WeightScale;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr CRect kCanvas(173, 125, 1073, 425);
constexpr WeightScale kScale{72, 57, 3};

TEST(WeightLayout, ScaleSharesTheStepsOfTheLeftOne) {
    const struct Case {
        const char* why;
        int highest, lowest, steps, max, min, interval;
    } cases[] = {
        {"range 13 in 5 steps of 3", 70, 60, 5, 72, 57, 3},
        {"range a multiple of the steps: one more all the same", 70, 58, 5, 72, 52, 4},
        {"range one more than the steps", 70, 60, 12, 72, 48, 2},
        {"range below the steps: bottom goes down", 70, 69, 6, 72, 66, 1},
        {"lowest 0 isn't put below 0", 3, 0, 5, 5, 0, 1},
        {"but the bottom may be", 5, 0, 10, 7, -3, 1},
        {"no range needs no step", 10, 50, 0, 12, 12, 1},
    };
    for (const Case& c : cases) {
        const auto scale = melkar::WeightScaleFor(c.highest, c.lowest, c.steps);
        ASSERT_TRUE(scale.has_value()) << c.why;
        EXPECT_EQ(scale->max, c.max) << c.why;
        EXPECT_EQ(scale->min, c.min) << c.why;
        EXPECT_EQ(scale->interval, c.interval) << c.why;
    }
    EXPECT_FALSE(melkar::WeightScaleFor(70, 60, 0)) << "a range, but nothing to divide it into";
    EXPECT_FALSE(melkar::WeightScaleFor(70, 60, -1));
    EXPECT_EQ(melkar::WeightScaleFor(INT_MAX, INT_MIN, 1)->max, INT_MAX);
}

TEST(WeightLayout, TargetIsCutTowardsZeroAndMayLeaveTheCanvas) {
    const struct Case {
        const char* why;
        double target;
        int y;
    } cases[] = {
        {"0, as an empty target", 0, 425 + 1140},
        {"trunc(-3.1) / 15 is 0", 56.9896, 425},
        {"not a number: like the bottom of the scale", NAN, 425},
        {"far off: at most 2^24 away", 1e300, 425 - (1 << 24)},
    };
    for (const Case& c : cases) {
        const int y = melkar::TargetWeightY(kCanvas, kScale, c.target);
        EXPECT_EQ(y, c.y) << c.why;
    }
    EXPECT_EQ(melkar::TargetWeightY(kCanvas, {12, 12, 1}, 12), 425) << "no range: no division by it";
}

class OpenSimulation : public Open<CSimulation> {
public:
    using Open<CSimulation>::Open;
    using CSimulation::m_bLines, CSimulation::m_nWeightInterval, CSimulation::m_nWeightMax;
    using CSimulation::m_nWeightMin, CSimulation::m_saTargetWeights, CSimulation::m_saWeightDates;
    using CSimulation::m_saWeights, CSimulation::m_strWeightField2, CSimulation::m_strWeightStart;
};

/// Column 9: target; column 11: figure.
std::string Days(const char* figure) {
    return "skipped\nA,B\n,,345\n" + std::string("0,a,a,,,,,,,300,,") + figure + "\n0,b,b,,,,,,,300,,200\n";
}
/// Top 72, bottom 56, a step of 4 on a left scale of four steps.
const std::string kPlanHead = "skipped\n20250302,70,kept,60\n";
const std::string kPlan = kPlanHead + "20250301,70,70\n20250302,69.5,69\n20250303,,68\n20250304,60.9,60\n";

class Simulation : public ChartTest {
protected:
    Simulation() {
        WriteProfile("OVERWEIGHTCOLOR_RGB=40,0,0\nUNDERWEIGHTCOLOR_RGB=41,0,0\nTARGETWEIGHTCOLOR_RGB=42,0,0\n"
                     "WEIGHTSTRING=kg\nTARGETWEIGHTSTRING=plan\nIS_PRINTTARGET=1\nIS_PRINTAVERAGE=1\n"
                     "AVERAGE_INTAKE_LABEL=intake\nEX1_LABEL=total\n");
    }
    OpenSimulation MakeSimulation() { return {nullptr, m_record, "STEPS", nullptr, nullptr, nullptr}; }
    void WritePlan(const std::string& plan) { m_files.Write("bin/days.csv.sim", plan); }
    long ReadPlan(CSimulation& graph, const std::string& plan) {
        return graph.ReadWeightDataFile(m_files.Write("bin/plan.sim", plan).data());
    }
    std::vector<std::string> DrawPlan(CSimulation& graph, const std::string& plan) {
        WritePlan(plan);
        return DrawRecorded(graph, Days("250"), kWideArea);
    }
};

TEST_F(Simulation, ReadsThePlan) {
    OpenSimulation graph = MakeSimulation();
    EXPECT_EQ(ReadPlan(graph, kPlan), 0);
    EXPECT_EQ(graph.m_strWeightStart + " " + graph.m_strWeightField2, "20250302 kept");
    EXPECT_EQ(graph.m_nWeightMax, 72);
    EXPECT_EQ(graph.m_nWeightMin, 56);
    EXPECT_EQ(graph.m_nWeightInterval, 4);
    ASSERT_EQ(graph.m_saWeights.GetSize(), 4);
    EXPECT_EQ(graph.m_saWeightDates[2] + "," + graph.m_saWeights[2] + "," + graph.m_saTargetWeights[2], "20250303,,68");
}

TEST_F(Simulation, CodesOfThePlan) {
    const struct Case {
        const char* why;
        const char* plan; // null: no file
        double interval;
        long code;
        int rows, max;
    } cases[] = {
        {"no file: everything stays", nullptr, 250, 101, 4, 72},
        {"empty file: the scale stays", "", 250, 102, 0, 72},
        {"head only: its scale", "skipped\n,80,,60\n", 250, 102, 0, 82},
        {"a left scale without a step", "skipped\n,80,,60\nd,70,70\n", 1001, 103, 0, 72},
        {"a left scale without an interval", "skipped\n,80,,60\nd,70,70\n", 0, 103, 0, 72},
    };
    for (const Case& c : cases) {
        OpenSimulation graph = MakeSimulation();
        ASSERT_EQ(ReadPlan(graph, kPlan), 0);
        graph.m_dChartInterval = c.interval;
        char missing[] = "no-such.sim";
        EXPECT_EQ(c.plan ? ReadPlan(graph, c.plan) : graph.ReadWeightDataFile(missing), c.code) << c.why;
        EXPECT_EQ(graph.m_saWeights.GetSize(), c.rows) << c.why;
        EXPECT_EQ(graph.m_nWeightMax, c.max) << c.why;
    }
}

// Centres of four rows: 285, 510, 735, 960. A square reaches 9 pixels each way.
TEST_F(Simulation, SquaresTellAboveOrBelowTheTarget) {
    OpenSimulation graph = MakeSimulation();
    auto lines = DrawPlan(graph, kPlan);
    EXPECT_THAT(LinesWith(lines, "fill", "18x18 #290000"), ElementsAre("fill 276,154 18x18 #290000"))
        << "at its target; 14 x 300 / 16 is 262";
    EXPECT_THAT(LinesWith(lines, "fill", "18x18 #280000"),
                ElementsAre("fill 501,173 18x18 #280000", "fill 951,341 18x18 #280000"))
        << "69.5 is above 69, but stands at 69: 13 x 300 / 16 is 243";
    lines = DrawPlan(graph, kPlanHead + "a,55.9,50\nb,100,200\nc,60.5,60.9\nd,60.1,\n");
    EXPECT_THAT(LinesWith(lines, "fill", "18x18 #290000"), ElementsAre("fill 501,116 18x18 #290000"))
        << "none below the scale, one above it at the top";
    EXPECT_THAT(LinesWith(lines, "fill", "18x18 #280000"),
                ElementsAre("fill 726,341 18x18 #280000", "fill 951,341 18x18 #280000"))
        << "60.5 is above trunc(60.9), and no target counts as 0";
}

TEST_F(Simulation, TargetLineBeginsBehindTheStart) {
    OpenSimulation graph = MakeSimulation();
    const auto plan = [&](const std::string& file) {
        auto strokes = StrokesWith(DrawPlan(graph, file), "#2A0000 w1");
        EXPECT_GE(strokes.size(), 4U);
        strokes.resize(strokes.size() - std::min<std::size_t>(4, strokes.size())); // the legend's sample comes last
        return strokes;
    };
    EXPECT_THAT(plan(kPlan), ElementsAre("960,348 735,198", "960,349 735,199", "960,350 735,200"))
        << "only the row behind the first one after the start";
    EXPECT_THAT(plan(kPlanHead + "20250301,,70\n20250302,,70\n20250303,,70\n"), IsEmpty());
    EXPECT_THAT(plan(kPlanHead + "20250303,,60\n20250304,,\n"),
                ElementsAre("848,1473 398,348", "848,1474 398,349", "848,1475 398,350"))
        << "no target counts as 0, however far below: 56 x 300 / 16 = 1050";
    EXPECT_EQ(plan("skipped\n,2147483647,,-2147483648\nb,1e300,-1e300\nc,inf,nan\n").size(), 3U) << "no overflow";
}

TEST_F(Simulation, ScaleAtTheRightAndLegendAbove) {
    OpenSimulation graph = MakeSimulation();
    const auto lines = DrawPlan(graph, kPlan);
    EXPECT_EQ(TextsAt(lines, 1075), "72@113 68@188 64@263 60@338 56@413") << "on the grid lines of the left scale";
    EXPECT_EQ(TextsAt(lines, 1141), "kg@263");
    EXPECT_EQ(LinesWith(lines, "text \"kg\" 1141,263 24x25 ", " angle 2700").size(), 1U);
    EXPECT_EQ(TextsAt(lines, 1025) + TextsAt(lines, 913) + TextsAt(lines, 790), "plan@95kg@95steps@95");
    const auto strokes = StrokesWith(lines, "#2A0000 w1");
    EXPECT_EQ(std::vector(strokes.end() - 4, strokes.end()), FourRows(962, 1012, 107));
    EXPECT_EQ(LinesWith(lines, "fill 875,95 25x25 #280000").size(), 1U);
    EXPECT_EQ(LinesWith(lines, "fill 752,95 25x25 #008000").size(), 1U);
    EXPECT_EQ(LinesWith(lines, "text \"250\"").size(), 2U) << "on the scale and on the bar";
    EXPECT_EQ(graph.m_bPrintTarget, 1);
    for (const char* text : {"text \"goal\"", "text \"intake\"", "text \"total\"", "text \"  mean"})
        EXPECT_THAT(LinesWith(lines, text), IsEmpty()) << "neither band nor target nor average here";
    EXPECT_THAT(StrokesWith(lines, "#FF0000"), IsEmpty());
}

TEST_F(Simulation, PlanFollowsTheScaleOfTheDataFile) {
    OpenSimulation graph = MakeSimulation();
    WritePlan(kPlan);
    DrawRecorded(graph, Days("1001"), kWideArea); // five steps on the big scale
    EXPECT_EQ(graph.m_nWeightInterval, 3);
    EXPECT_EQ(graph.m_nWeightMin, 57);
    DrawRecorded(graph, Days("250"), kWideArea);
    EXPECT_EQ(graph.m_nWeightInterval, 4);
}

TEST_F(Simulation, MissingPlanLeavesTheFormerOneOrNothing) {
    OpenSimulation graph = MakeSimulation();
    auto lines = DrawRecorded(graph, Days("250"), kWideArea);
    EXPECT_THAT(LinesWith(lines, "text \"0\" 1075,"), IsEmpty()) << "no plan yet: no right scale";
    DrawPlan(graph, kPlan);
    std::filesystem::remove(m_files.Path("bin/days.csv.sim"));
    lines = DrawRecorded(graph, Days("250"), kWideArea);
    EXPECT_EQ(LinesWith(lines, "fill", "18x18 #280000").size(), 2U);
}

TEST_F(Simulation, PathsOfAnyLength) {
    OpenSimulation graph = MakeSimulation();
    const std::string folder = "bin/" + std::string(200, 'a') + "/" + std::string(200, 'b');
    std::filesystem::create_directories(m_files.Path(folder));
    std::string data = m_files.Write(folder + "/days.csv", Days("250"));
    m_files.Write(folder + "/days.csv.sim", kPlan);
    graph.SetDirectOutput(1);
    EXPECT_EQ(graph.Draw(kWideArea, data.data()), 0);
    EXPECT_EQ(graph.m_saWeights.GetSize(), 4);
    std::string endless(100000, 'x');
    EXPECT_EQ(graph.Draw(kWideArea, endless.data()), 0) << "such a file can't be opened";
    EXPECT_EQ(graph.Draw(kWideArea, nullptr), 0);
    EXPECT_EQ(graph.m_saWeights.GetSize(), 4);
}

template <class Graph> void DrawOnScreen(const std::string& data) {
    const HDC screen = CreateMemorySurface(1200, 600);
    const HDC clean = CreateMemorySurface(1200, 600);
    {
        std::string path = data;
        Graph graph(nullptr, screen, "STEPS", screen, nullptr, clean);
        EXPECT_EQ(graph.Draw(kWideArea, path.data()), 0);
        EXPECT_EQ(graph.Draw(CRect(0, 0, 300, 200), path.data()), 0);
        graph.OnMouseMove(CPoint(200, 150));
    }
    DeleteDC(clean);
    DeleteDC(screen);
}

TEST_F(Simulation, NothingStaysAlive) {
    WritePlan(kPlan);
    const std::string data = DataFile(Days("250"));
    const std::size_t before = LiveObjectCount();
    DrawOnScreen<CLineGraph>(data);
    DrawOnScreen<CStepGraph>(data);
    DrawOnScreen<CExpenditureGraph>(data);
    DrawOnScreen<CActivityCalGraph>(data);
    DrawOnScreen<CSimulation>(data);
    EXPECT_EQ(LiveObjectCount(), before);
}

} // namespace
