#include "chart_fixture.h"

#include <MelkarCommon/bars/line_graph.h>

namespace {

constexpr std::string_view kFourDays = "head\nhead\n0,1/1,1\n0,1/2,1\n0,1/3,1\n0,1/4,1\n";

// In kWideArea a box is 45 wide; of four days the dots stand at x = 285, 510, 735 and 960, with a radius of 4.
class LineGraph : public ChartTest {
protected:
    LineGraph() {
        WriteProfile("LINESCOLOR0_RGB=7,0,0\nVLINEAXSLABEL=kg\nCHARTLINEMAX_BIG=200\n"
                     "CHARTLINEMIN=60\nCHARTLINEMAX=80\nCHARTLINEINTERVAL=5");
    }
};

TEST_F(LineGraph, DotsAndStrokesNeedStatusAndEntry) {
    // The days that have dots, and those at whose dot a stroke begins.
    const std::tuple<const char*, const char*, std::vector<const char*>, const char*, const char*> cases[] = {
        {"all", "0000", {"60", "80", "70", "60"}, "0123", "123"},
        {"another status breaks on both sides", "0010", {"60", "80", "70", "60"}, "013", "1"},
        {"any status but 0", "1234", {"60", "80", "70", "60"}, "", ""},
        {"entries for the first days only, one empty", "0000", {"60", "80", "", "60"}, "013", "1"},
    };
    const auto daysOf = [](const std::vector<std::string>& lines, std::string_view verb) {
        std::string days;
        for (const std::string& line : lines)
            days += std::to_string((std::stoi(line.substr(verb.size())) - 285) / 225);
        return days;
    };
    for (const auto& [why, statuses, values, dots, strokes] : cases) {
        auto graph = Make<CLineGraph>();
        graph.m_saLineValues = Texts(values);
        std::string file = "head\nhead\n";
        for (int day = 0; day < 4; ++day)
            file.append({statuses[day]}).append(",date,1\n");
        const auto lines = DrawRecorded(graph, file, kWideArea);
        EXPECT_EQ(daysOf(LinesWith(lines, "ellipse ", " 4x4 fill #070000"), "ellipse "), dots) << why;
        EXPECT_EQ(daysOf(LinesWith(lines, "line ", "#070000 w1"), "line "), strokes) << why;
    }
}

TEST_F(LineGraph, SeveralLinesTakeTurnsInTheArray) {
    auto graph = Make<CLineGraph>();
    graph.m_nLineCount = 2;
    graph.m_crLine[1] = 0x000008; // the second line's colour wasn't in the profile of one line
    graph.m_saLineValues = Texts({"60", "80", "70", "60"});
    const auto lines = DrawRecorded(graph, "head\nhead\n0,1/1,1\n0,1/2,1\n", kWideArea);
    EXPECT_THAT(LinesWith(lines, "line", "#070000 w1"), ElementsAre("line 848,275 398,425 #070000 w1"));
    EXPECT_THAT(LinesWith(lines, "line", "#080000 w1"), ElementsAre("line 848,425 398,125 #080000 w1"));
    graph.m_nLineCount = 12;
    graph.m_saLineValues.SetAtGrow(12, "80"); // the second day's first
    DrawRecorded(graph, "head\nhead\n0,1/1,1\n0,1/2,1\n", kWideArea);
    EXPECT_EQ(graph.m_oaLineRects.GetSize(), 2 * 10) << "there are no more colours";
    EXPECT_EQ(graph.m_oaLineRects[10]->top, 125) << "but as many entries a day";
}

TEST_F(LineGraph, ScaleAtTheRight) {
    const std::tuple<const char*, double, double, int, int, const char*> cases[] = {
        {"five pixels right of the canvas, centred on its height", 80, 5, 0, 0, "60@413|65@338|70@263|75@188|80@113"},
        {"coach mode leaves the bottom and every second label out", 80, 5, 1, 0, "65@338|75@188"},
        {"decimals of its own", 80, 12.5, 0, 1, "60@413|72.5@226"},
        {"no interval: steps of 10; 10 x 300 / 19 is 157", 79, 0, 0, 0, "60@413|70@256"},
    };
    for (const auto& [why, max, interval, coach, decimals, labels] : cases) {
        auto graph = Make<CLineGraph>();
        graph.m_dChartLineMax = max;
        graph.m_dChartLineInterval = interval;
        graph.m_bCoach = coach;
        graph.m_nLineDecimals = decimals;
        const auto lines = DrawRecorded(graph, kFourDays, kWideArea);
        EXPECT_EQ(TextsAt(lines, 1078), labels) << why;
        // x = trunc(1146 - 25 x 0.1 - 5), y = (425 + 125 - 24) / 2
        EXPECT_EQ(LinesWith(lines, "text \"kg\" 1138,263 24x25 ", " angle 2700").size(), 1U);
    }
    auto graph = Make<CLineGraph>();
    graph.m_bLineMeasure = 0;
    EXPECT_THAT(LinesWith(DrawRecorded(graph, kFourDays, kWideArea), "text \"kg\""), IsEmpty());
}

TEST_F(LineGraph, ResetRestoresAllButTheBottom) {
    auto graph = Make<CLineGraph>();
    graph.m_dChartLineMax = graph.m_dChartLineMin = graph.m_dChartLineInterval = 1;
    graph.m_nChartLineMaxBig = graph.m_nChartMax = 1;
    graph.ResetGraphMeasure();
    EXPECT_EQ(graph.m_dChartLineMax, 80);
    EXPECT_EQ(graph.m_dChartLineInterval, 5);
    EXPECT_EQ(graph.m_nChartLineMaxBig, 200);
    EXPECT_EQ(graph.m_nChartMax, 1000) << "the left scale, too";
    EXPECT_EQ(graph.m_dChartLineMin, 1);
}

} // namespace
