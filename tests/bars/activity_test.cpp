#include "chart_fixture.h"

#include <MelkarCommon/bars/activity_cal_graph.h>

namespace {

const std::string kHead = "skipped\nA,B\n,,345,\n";

/// Column 9: target; column 11: figure.
std::string Row(const std::string& head, const std::string& target, const std::string& figure) {
    return head + ",3,4,5,6,7,8," + target + ",10," + figure + "\n";
}

class ActivityCal : public ChartTest {
protected:
    ActivityCal() { m_files.Write("conf/config.cnf", "[SYSTEM]\nDAY=%m/%d\n"); }
};

TEST_F(ActivityCal, ReadsDaysAndSpans) {
    const char* const cases[][3] = {
        {"a span begins with a blank", "0,20250301,20250307", " 03/01~03/07=250"},
        {"texts that are no dates stay", "0,2025,2026", " 2025~2026=250"},
        {"another status: no figure, but a target", "1,20250301,20250301", "03/01="},
    };
    for (const auto& [why, head, day] : cases) {
        auto graph = Make<CActivityCalGraph>();
        graph.m_strDateFormatType = "DAY";
        graph.m_strDateFormatSpan = "~";
        graph.m_saTargets.Add("old");
        EXPECT_EQ(Read(graph, kHead + Row(head, "300", "250")), 0) << why;
        EXPECT_EQ(graph.m_saDates[0] + "=" + graph.m_saValues[0], day) << why;
        EXPECT_EQ(graph.m_strHeaderField1 + graph.m_strAverage + graph.m_saTargets[0], "B345300") << why;
    }
}

TEST_F(ActivityCal, ScaleStartsFromTheProfileAtEachRead) {
    auto graph = Make<CActivityCalGraph>();
    for (const auto& [figure, top] : {std::pair{"1000", 1000}, {"1001", 5000}}) {
        EXPECT_EQ(Read(graph, kHead + Row("0,a,a", "", figure)), 0);
        EXPECT_EQ(graph.m_nChartMax, top);
    }
    EXPECT_EQ(graph.ReadDataFile(m_missing), 101);
    EXPECT_EQ(graph.m_nChartMax, 1000) << "reset before the file is looked for";
}

TEST_F(ActivityCal, PrintsTargetsButNoBandAndNoLegend) {
    WriteProfile("IS_PRINTTARGET=0\nAVERAGE_INTAKE_LABEL=intake\nINTAKECOLOR_RGB=30,0,0\nEX1_LABEL=total\n"
                 "CHARTLINEMAX=80\nLINESCOLOR0_RGB=7,0,0");
    auto graph = Make<CActivityCalGraph>();
    graph.m_saLineValues.Add("40");
    const auto lines = DrawRecorded(graph, kHead + Row("0,a,a", "300", "250") + Row("0,b,b", "200", "200"), kWideArea);
    EXPECT_EQ(LinesWith(lines, "text \"goal\" 1025,76 ").size(), 1U) << "switched on whatever the profile says";
    EXPECT_EQ(LinesWith(lines, "thick", "#FF0000 w1 dot 3,3").size(), 1U) << "sample";
    EXPECT_EQ(LinesWith(lines, "line", "#FF0000 w1 dot 3,3").size(), 8U) << "four rows of two heights";
    EXPECT_EQ(LinesWith(lines, "fill 735,365 225x60 #00FF00").size(), 1U) << "at its target";
    for (const char* absent : {"text \"total\"", "text \"80\""}) // neither legend nor right scale
        EXPECT_EQ(LinesWith(lines, absent).size(), 0U) << absent;
    EXPECT_EQ(graph.OnClick(CPoint(300, 400)), -1) << "clicks are switched off";
    EXPECT_EQ(graph.OnMouseMove(CPoint(800, 400)), 1);
}

TEST_F(ActivityCal, SmallDesktopsHaveSmallerDates) {
    for (const auto& [desktop, size] :
         {std::pair{RECT{0, 0, 821, 600}, 15}, {{100, 0, 920, 600}, 12}, {{INT_MAX, 0, INT_MIN, 600}, INT_MIN}}) {
        if (size < 0)
            m_files.Write("conf/graph.cnf", "[COMMON]\nDATESIZE=-2147483648\n"); // no overflow at either difference
        SetWorkArea(desktop);
        const auto graph = Make<CActivityCalGraph>();
        SetWorkArea({0, 0, 1920, 1080});
        EXPECT_EQ(graph.m_nDateSize, size) << desktop.left;
    }
}

} // namespace
