#include "chart_fixture.h"

#include <MelkarCommon/bars/simulation.h>
#include <MelkarCommon/bars/weight_layout.h>

namespace {

using melkar::Scale;

TEST(WeightLayout, ScaleSharesTheStepsOfTheLeftOne) {
    const std::tuple<const char*, int, int, int, int, int, int> cases[] = {
        {"range 13 in 5 steps of 3", 70, 60, 5, 72, 57, 3},
        {"range a multiple of the steps: one more all the same", 70, 58, 5, 72, 52, 4},
        {"range as many as the steps", 70, 60, 13, 72, 59, 1},
        {"the bottom may be below 0", 5, 0, 10, 7, -3, 1},
    };
    for (const auto& [why, highest, lowest, steps, max, min, interval] : cases) {
        const Scale scale = melkar::WeightScaleFor(highest, lowest, steps).value_or(Scale{});
        EXPECT_EQ(scale.max, max) << why;
        EXPECT_EQ(scale.min, min) << why;
        EXPECT_EQ(scale.step, interval) << why;
    }
    EXPECT_FALSE(melkar::WeightScaleFor(70, 60, 0)) << "a range, but nothing to divide it into";
    EXPECT_EQ(melkar::WeightScaleFor(INT_MAX, INT_MIN, 1)->max, INT_MAX);
}

/// Column 9: target; column 11: figure.
std::string Days(const std::string& figure) {
    return "skipped\nA,B\n,,345\n0,a,a,,,,,,,300,," + figure + "\n0,b,b,,,,,,,300,,200\n";
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
    long ReadPlan(CSimulation& graph, const std::string& plan) {
        return graph.ReadWeightDataFile(m_files.Write("bin/plan.sim", plan).data());
    }
    std::vector<std::string> DrawPlan(CSimulation& graph, const std::string& plan) {
        m_files.Write("bin/data.csv.sim", plan);
        return DrawRecorded(graph, Days("250"), kWideArea);
    }
};

TEST_F(Simulation, CodesOfThePlan) {
    const std::tuple<const char*, const char*, double, long, int> cases[] = {
        // no plan of these gives a row
        {"empty file: the scale stays", "", 250, 102, 72},
        {"head only: its scale", "skipped\n,80,,60\n", 250, 102, 82},
        {"a left scale without a step", "skipped\n,80,,60\nd,70,70\n", 1001, 103, 72},
        {"a left scale without an interval", "skipped\n,80,,60\nd,70,70\n", 0, 103, 72},
    };
    for (const auto& [why, plan, interval, code, max] : cases) {
        auto graph = Make<CSimulation>();
        ASSERT_EQ(ReadPlan(graph, kPlan), 0);
        EXPECT_EQ(graph.m_strWeightStart + graph.m_strWeightField2, "20250302kept");
        graph.m_dChartInterval = interval;
        EXPECT_EQ(graph.ReadWeightDataFile(m_missing), 101);
        EXPECT_EQ(graph.m_saWeights.GetSize(), 4) << "a missing file leaves the former plan";
        EXPECT_EQ(ReadPlan(graph, plan), code) << why;
        EXPECT_EQ(graph.m_saWeights.GetSize(), 0) << why;
        EXPECT_EQ(graph.m_nWeightMax, max) << why;
    }
    auto graph = Make<CSimulation>();
    graph.m_nChartMin = 500; // two steps of 250 to the top: 13 / 2 + 1 is 7 for each
    ASSERT_EQ(ReadPlan(graph, kPlan), 0);
    EXPECT_EQ(graph.m_nWeightMin, 72 - 14);
}

// Centres of four rows: 285, 510, 735, 960. A square reaches 9 pixels each way.
TEST_F(Simulation, SquaresTellAboveOrBelowTheTarget) {
    auto graph = Make<CSimulation>();
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
    lines = DrawPlan(graph, "skipped\n,5,,0\na,,0\n");
    EXPECT_THAT(LinesWith(lines, "fill", "18x18 #290000"), IsEmpty()) << "no weight, even on a scale from 0";
}

TEST_F(Simulation, TargetLineBeginsBehindTheStart) {
    auto graph = Make<CSimulation>();
    EXPECT_THAT(LinesWith(DrawPlan(graph, kPlan), "line", "#2A0000 w1"),
                ElementsAre("line 960,348 735,198 #2A0000 w1", "line 960,349 735,199 #2A0000 w1",
                            "line 960,350 735,200 #2A0000 w1"))
        << "only the row behind the first one after the start";
    EXPECT_THAT(LinesWith(DrawPlan(graph, kPlanHead + "20250303,,60\n20250304,,\n"), "line", "#2A0000 w1"),
                Contains("line 848,1475 398,350 #2A0000 w1"))
        << "no target counts as 0, however far below: 56 x 300 / 16 = 1050";
}

TEST_F(Simulation, ScaleAtTheRightAndLegendAbove) {
    auto graph = Make<CSimulation>();
    const auto lines = DrawPlan(graph, kPlan);
    EXPECT_EQ(TextsAt(lines, 1075), "72@113|68@188|64@263|60@338|56@413") << "on the grid lines of the left scale";
    EXPECT_EQ(LinesWith(lines, "text \"kg\" 1141,263 24x25 ", " angle 2700").size(), 1U);
    EXPECT_EQ(TextsAt(lines, 1025) + TextsAt(lines, 913) + TextsAt(lines, 790), "plan@95kg@95steps@95");
    for (const char* sample : {"thick 962,105 1012 #2A0000", "fill 875,95 25x25 #280000", "fill 752,95 25x25 #008000"})
        EXPECT_EQ(LinesWith(lines, sample).size(), 1U) << sample;
    EXPECT_EQ(LinesWith(lines, "text \"250\"").size(), 2U) << "on the scale and on the bar";
    EXPECT_EQ(LinesWith(lines, "fill", "#FAFAFA").size(), 1U) << "nothing behind figures";
    for (const char* text : {"text \"goal\"", "text \"intake\"", "text \"total\"", "text \"  mean", "thick 173"})
        EXPECT_THAT(LinesWith(lines, text), IsEmpty()) << "neither band nor target nor average here";
}

} // namespace
