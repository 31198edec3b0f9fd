#include "chart_fixture.h"

#include <MelkarCommon/bars/step_graph.h>

namespace {

/// Column 7: top of the scale; column 9: average.
std::string Head(const std::string& top, const std::string& average = "") {
    return "skipped\nA,B,2,3,4,5,6," + top + ",8," + average + "\n";
}

class StepGraph : public ChartTest {
protected:
    StepGraph() { WriteProfile("CHARTMIN=50"); } // the file's scale begins at 0 whatever the profile says
};

TEST_F(StepGraph, ReadsDaysAndForgetsTheFormerOnes) {
    auto graph = Make<CStepGraph>();
    graph.m_saTargets.Add("8000");
    ASSERT_EQ(Read(graph, Head("12000", "812.5") + "0,1/1,x,y,5000\n1,1/2,x,y,7000\n\n4\n0,1/5,x,y,\"1,2\"\n"), 0);
    EXPECT_EQ(graph.m_strHeaderField0 + graph.m_strHeaderField1 + graph.m_strAverage, "AB812.5");
    EXPECT_EQ(graph.m_nChartMin, 0);
    EXPECT_EQ(graph.m_dChartInterval, 1000);
    EXPECT_EQ(graph.m_saTargets.GetSize(), 1) << "targets are the host's";
    EXPECT_EQ(Content(graph), "0 1/1 5000|1 1/2 |0  |4  |0 1/5 1,2|");
    DrawRecorded(graph, Head("2000", "5") + "0,1/1,,,2001\n", kWideArea);
    EXPECT_EQ(graph.m_nChartMax, 5000) << "the scale of the file yields to the big one";
    EXPECT_EQ(Read(graph, Head("-5")), 102);
    EXPECT_EQ(graph.m_nChartMax, 10000) << "a top of the scale has to be above 0";
    EXPECT_EQ(graph.m_saValues.GetSize() + graph.m_saDates.GetSize() + graph.m_dwaStatus.GetSize(), 0);
    EXPECT_EQ(graph.m_oaBarRects.GetSize(), 0);
}

TEST_F(StepGraph, LongHeadsGoOnAsFurtherRows) {
    for (const auto& [length, days] : {std::pair{1277, 1}, {1278, 2}}) { // without the line end
        auto graph = Make<CStepGraph>();
        Read(graph, std::string(length, 'x') + "\nA\n0,1/1\n");
        EXPECT_EQ(graph.m_saDates.GetSize(), days) << length;
    }
}

// "  mean: 500 steps" is 17 x 12 wide: its box ends at 1073 - 100 and stands on the title's bottom, (769, 76) to
// (973, 101), its middle at 88.
TEST_F(StepGraph, AverageStandsAtTheRightAndIsCutBeforeItIsScaled) {
    const std::tuple<const char*, const char*, const char*, std::vector<std::string>> cases[] = {
        {"above the top", "400", "500", {}},
        {"5 x 300 / 1764 is 0, 5.9 x 300 / 1764 would be 1", "1764", "5.9", {"thick 173,423 1073 #0000FF w1 dot 3,3"}},
    };
    for (const auto& [why, top, average, line] : cases) {
        auto graph = Make<CStepGraph>();
        graph.m_bPrintAverage = 1;
        const auto lines = DrawRecorded(graph, Head(top, average) + "0,1/1,,,5\n", kWideArea);
        EXPECT_EQ(TextsAt(lines, 769), "  mean: " + std::string(average) + " steps@76") << why;
        EXPECT_EQ(LinesWith(lines, "thick 769,86 709 #0000FF w1 dot").size(), 1U) << why;
        EXPECT_EQ(LinesWith(lines, "thick 173,"), line) << why;
    }
}

// "  goal " is 7 x 12 wide; 425 - 501 x 300 / 1000 is 274.7, cut to 274; slots are 150 wide. One stroke a row over both
// first days, so that the dashes run on; all of a row before the next.
TEST_F(StepGraph, TargetStandsLeftOfTheAverageAndOnlyOverDaysThatHaveIt) {
    auto graph = Make<CStepGraph>();
    graph.m_bPrintTarget = 1;
    graph.m_saTargets = Texts({"501", "501", "501", "1001", "0"});
    const std::string file =
        Head("1000", "500") + "0,a,,,5\n0,b,,,5\n1,no figure,,,5\n0,above,,,5\n0,e,,,5\n0,no target,,,5\n";
    const auto lines = DrawRecorded(graph, file, kWideArea);
    EXPECT_EQ(TextsAt(lines, 989), "  goal @76");
    EXPECT_EQ(LinesWith(lines, "thick 989,86 929 #FF0000 w1 dash 18,6").size(), 1U);
    EXPECT_THAT(LinesWith(lines, "line ", "#FF0000 w1 dash 18,6"),
                ElementsAre(StartsWith("line 173,272 473,272 "), StartsWith("line 773,423 923,423 "),
                            StartsWith("line 173,273 473,273 "), StartsWith("line 773,424 923,424 "),
                            StartsWith("line 173,274 473,274 "), StartsWith("line 773,425 923,425 "),
                            StartsWith("line 173,275 473,275 "), StartsWith("line 773,426 923,426 ")));
    graph.m_bPrintAverage = 1;
    const auto both = DrawRecorded(graph, file, kWideArea);
    EXPECT_EQ(LinesWith(both, "text \"  goal \" 605,76 ").size(), 1U);
    EXPECT_EQ(LinesWith(both, "thick 605,86 545 #FF0000 w1 dash").size(), 1U);
}

} // namespace
