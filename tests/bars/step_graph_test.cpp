#include "chart_fixture.h"

#include <MelkarCommon/bars/step_graph.h>

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;

/// Column 7: top of the scale; column 9: average.
std::string Head(const std::string& top, const std::string& average = "") {
    return "skipped\nA,B,2,3,4,5,6," + top + ",8," + average + "\n";
}

class StepGraph : public ChartTest {
protected:
    StepGraph() { WriteProfile("CHARTMIN=50"); } // the file's scale begins at 0 whatever the profile says

    long Read(CStepGraph& graph, std::string_view data) { return graph.ReadDataFile(DataFile(data).data()); }
};

TEST_F(StepGraph, ReadsDays) {
    auto graph = Make<CStepGraph>();
    graph.m_saTargets.Add("8000");
    ASSERT_EQ(Read(graph, Head("12000", "812.5") + "0,1/1,x,y,5000\n1,1/2,x,y,7000\n\n4\n0,1/5,x,y,\"1,2\"\n"), 0);
    EXPECT_EQ(graph.m_strHeaderField0, "A");
    EXPECT_EQ(graph.m_strHeaderField1, "B");
    EXPECT_EQ(graph.m_nChartMax, 12000);
    EXPECT_EQ(graph.m_nChartMin, 0);
    EXPECT_EQ(graph.m_dChartInterval, 1000);
    EXPECT_EQ(graph.m_strAverage, "812.5");
    EXPECT_EQ(graph.m_saTargets.GetSize(), 1) << "targets are the host's";
    std::string days;
    for (int i = 0; i < graph.m_saDates.GetSize(); ++i)
        days.append(std::to_string(graph.m_dwaStatus[i])).append(graph.m_saDates[i] + "=" + graph.m_saValues[i] + ";");
    EXPECT_EQ(days, "01/1=5000;11/2=;0=;4=;01/5=1,2;") << "figure, excluded, blank row, short row, quotes";
}

TEST_F(StepGraph, RepairsTheTopOfTheScale) {
    const struct Case {
        const char* top;
        int expected;
        bool logged;
    } cases[] = {{"1", 1, false}, {"0", 10000, true}, {"", 10000, true}, {"-5", 10000, true}, {"x9", 10000, true}};
    for (const Case& c : cases) {
        std::filesystem::remove(m_files.Path("log/graph.log"));
        auto graph = Make<CStepGraph>();
        EXPECT_EQ(Read(graph, Head(c.top) + "0,1/1,,,5\n"), 0);
        EXPECT_EQ(graph.m_nChartMax, c.expected) << c.top;
        const std::string log = m_files.Read("log/graph.log");
        EXPECT_EQ(log.find("CODE = [340]") != std::string::npos, c.logged) << c.top;
        EXPECT_THAT(log, HasSubstr("CStepGraph::ReadDataFile"));
    }
}

TEST_F(StepGraph, MissingFileKeepsAllAndOneWithoutDaysForgetsAll) {
    auto graph = Make<CStepGraph>();
    DrawRecorded(graph, Head("2000", "5") + "0,1/1,,,700\n", kWideArea);
    char missing[] = "no-such.csv";
    EXPECT_EQ(graph.ReadDataFile(missing), 101);
    EXPECT_EQ(graph.m_saValues[0], "700");
    EXPECT_EQ(graph.m_oaBarRects.GetSize(), 1);
    EXPECT_EQ(Read(graph, Head("3000", "6")), 102);
    EXPECT_EQ(graph.m_nChartMax, 3000);
    EXPECT_EQ(graph.m_saValues.GetSize() + graph.m_saDates.GetSize() + graph.m_dwaStatus.GetSize(), 0);
    EXPECT_EQ(graph.m_oaBarRects.GetSize(), 0);
    EXPECT_EQ(Read(graph, ""), 102);
}

std::vector<std::string> Joined(std::vector<std::string> rows, const std::vector<std::string>& more) {
    rows.insert(rows.end(), more.begin(), more.end());
    return rows;
}

// "  mean: 500 steps" is 17 x 12 wide: its box ends at 1073 - 100 and stands on the title's bottom, (769, 76) to
// (973, 101), its middle at 88.
TEST_F(StepGraph, AverageStandsAtTheRightAndIsCutBeforeItIsScaled) {
    const struct Case {
        const char *why, *top, *average;
        int y; // 0: no line
    } cases[] = {
        {"inside", "1000", "500", 275},
        {"exactly the top", "600", "600", 125},
        {"above the top", "400", "500", 0},
        {"5 x 300 / 1764 is 0, 5.9 x 300 / 1764 would be 1", "1764", "5.9", 425},
    };
    for (const Case& c : cases) {
        auto graph = Make<CStepGraph>();
        graph.m_bPrintAverage = 1;
        const auto lines = DrawRecorded(graph, Head(c.top, c.average) + "0,1/1,,,5\n", kWideArea);
        const std::string text = "text \"  mean: " + std::string(c.average) + " steps\" 769,76 ";
        EXPECT_EQ(LinesWith(lines, text).size(), 1U) << c.why;
        const auto sample = FourRows(769, 709, 88);
        EXPECT_EQ(StrokesWith(lines, "#0000FF w1 dot"), c.y == 0 ? sample : Joined(sample, FourRows(173, 1073, c.y)))
            << c.why;
    }
}

// "  goal " is 7 x 12 wide.
TEST_F(StepGraph, TargetStandsLeftOfTheAverage) {
    for (const bool average : {true, false}) {
        auto graph = Make<CStepGraph>();
        graph.m_bPrintAverage = average;
        graph.m_bPrintTarget = 1;
        const auto lines = DrawRecorded(graph, Head("1000", "500") + "0,1/1,,,5\n", kWideArea);
        const CRect box = average ? CRect(605, 76, 689, 101) : CRect(989, 76, 1073, 101);
        EXPECT_EQ(graph.m_rcTarget, box);
        const std::string text = "text \"  goal \" " + std::to_string(box.left) + ",76 84x25 ";
        EXPECT_EQ(LinesWith(lines, text).size(), 1U);
        EXPECT_EQ(StrokesWith(lines, "#FF0000 w1 dash"), FourRows(box.left, box.left - 60, 88))
            << "the sample alone: without targets there is no line";
    }
}

TEST_F(StepGraph, TargetLineOnlyWhereDayAndTargetAre) {
    auto graph = Make<CStepGraph>();
    graph.m_bPrintTarget = 1;
    for (const char* target : {"501", "501", "1001", "0"})
        graph.m_saTargets.Add(target);
    const auto lines =
        DrawRecorded(graph, Head("1000") + "0,a,,,5\n1,b,,,5\n0,c,,,5\n0,d,,,5\n0,no target,,,5\n", kWideArea);
    // 425 - 501 x 300 / 1000 is 274.7, cut to 274; slots are 180 wide.
    EXPECT_EQ(StrokesWith(lines, "#FF0000 w1 dash"),
              Joined(FourRows(989, 929, 88), Joined(FourRows(173, 353, 274), FourRows(713, 893, 425))));
}

} // namespace
