#include "chart_fixture.h"

#include <MelkarCommon/bars/activity_cal_graph.h>

#include <gmock/gmock.h>

#include <climits>
#include <stdexcept>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class OpenActivity : public Open<CActivityCalGraph> {
public:
    using Open<CActivityCalGraph>::Open;
    using CActivityCalGraph::m_nDateSize, CActivityCalGraph::m_strDateFormatSpan;
    using CActivityCalGraph::m_strDateFormatType;
};

const std::string kHead = "skipped\nA,B\n,,345,\n";

/// Column 9: target; column 11: figure.
std::string Row(const std::string& head, const std::string& target, const std::string& figure) {
    return head + ",3,4,5,6,7,8," + target + ",10," + figure + "\n";
}

class ActivityCal : public ChartTest {
protected:
    ActivityCal() { m_files.Write("conf/config.cnf", "[SYSTEM]\nDAY=%m/%d\n"); }

    OpenActivity MakeActivity() { return {nullptr, m_record, "STEPS", nullptr, nullptr, nullptr}; }
    long Read(CActivityCalGraph& graph, const std::string& rows) {
        return graph.ReadDataFile(DataFile(kHead + rows).data());
    }
};

TEST_F(ActivityCal, ReadsDaysAndSpans) {
    const struct Case {
        const char *why, *head, *caption, *figure;
    } cases[] = {
        {"one day", "0,20250301,20250301", "03/01", "250"},
        {"a span begins with a blank", "0,20250301,20250307", " 03/01~03/07", "250"},
        {"alike as dates but not as texts", "0,20250301,202503010", " 03/01~03/01", "250"},
    };
    for (const Case& c : cases) {
        OpenActivity graph = MakeActivity();
        graph.m_strDateFormatType = "DAY";
        graph.m_strDateFormatSpan = "~";
        graph.m_saTargets.Add("old");
        EXPECT_EQ(Read(graph, Row(c.head, "300", "250")), 0) << c.why;
        EXPECT_EQ(graph.m_saDates[0], c.caption) << c.why;
        EXPECT_EQ(graph.m_saValues[0], c.figure) << c.why;
        ASSERT_EQ(graph.m_saTargets.GetSize(), 1) << c.why;
        EXPECT_EQ(graph.m_saTargets[0], "300") << c.why;
        EXPECT_EQ(graph.m_strAverage, "345") << c.why;
        EXPECT_EQ(graph.m_strHeaderField1, "B") << c.why;
    }
}

TEST_F(ActivityCal, ScaleStartsFromTheProfileAtEachRead) {
    OpenActivity graph = MakeActivity();
    EXPECT_EQ(Read(graph, Row("0,a,a", "", "1001")), 0);
    EXPECT_EQ(graph.m_nChartMax, 5000);
    EXPECT_EQ(Read(graph, Row("0,a,a", "", "1000")), 0);
    EXPECT_EQ(graph.m_nChartMax, 1000);
    EXPECT_EQ(graph.m_dChartInterval, 250);
    EXPECT_EQ(Read(graph, Row("0,a,a", "", "1001")), 0);
    char missing[] = "no-such.csv";
    EXPECT_EQ(graph.ReadDataFile(missing), 101);
    EXPECT_EQ(graph.m_nChartMax, 1000) << "reset before the file is looked for";
    EXPECT_EQ(graph.m_saValues[0], "1001");
    EXPECT_EQ(Read(graph, ""), 102);
    EXPECT_THAT(m_files.Read("log/graph.log"), Not(HasSubstr("CODE = [340]")));
}

TEST_F(ActivityCal, PrintsTargetsButNoBandAndNoLegend) {
    WriteProfile("IS_PRINTTARGET=0\nAVERAGE_INTAKE_LABEL=intake\nINTAKECOLOR_RGB=30,0,0\nEX1_LABEL=total\n"
                 "CHARTLINEMAX=80\nLINESCOLOR0_RGB=7,0,0");
    OpenActivity graph = MakeActivity();
    graph.m_saLineValues.Add("40");
    const auto lines = DrawRecorded(graph, kHead + Row("0,a,a", "300", "250") + Row("0,b,b", "200", "200"), kWideArea);
    EXPECT_EQ(LinesWith(lines, "text \"goal\" 1025,76 ").size(), 1U) << "switched on whatever the profile says";
    EXPECT_EQ(StrokesWith(lines, "#FF0000 w1 dot").size(), 4U * 3U) << "sample and two days";
    EXPECT_EQ(LinesWith(lines, "fill 285,350 225x75 #008000").size(), 1U) << "below its target";
    EXPECT_EQ(LinesWith(lines, "fill 735,365 225x60 #00FF00").size(), 1U) << "at its target";
    EXPECT_THAT(LinesWith(lines, "fill", "#1E0000"), IsEmpty());
    EXPECT_EQ(LinesWith(lines, "text \"intake\" 1073,425 ").size(), 1U) << "the label of a band without height";
    EXPECT_THAT(LinesWith(lines, "text \"total\""), IsEmpty());
    EXPECT_THAT(LinesWith(lines, "text \"80\""), IsEmpty()) << "no right scale";
    EXPECT_EQ(graph.OnClick(CPoint(300, 400)), -1) << "clicks are switched off";
    EXPECT_EQ(graph.OnMouseMove(CPoint(800, 400)), 1);
    EXPECT_EQ(graph.OnMouseMove(CPoint(300, 349)), -1);
}

TEST_F(ActivityCal, SmallDesktopsHaveSmallerDates) {
    const struct Case {
        RECT desktop;
        int size;
    } cases[] = {{{0, 0, 821, 600}, 15}, {{0, 0, 820, 600}, 12}, {{100, 0, 920, 600}, 12}, {{0, 0, 1920, 9}, 15}};
    for (const Case& c : cases) {
        SetWorkArea(c.desktop);
        const OpenActivity graph = MakeActivity();
        SetWorkArea({0, 0, 1920, 1080});
        EXPECT_EQ(graph.m_nDateSize, c.size) << c.desktop.right - c.desktop.left;
    }
    SetWorkArea({INT_MAX, 0, INT_MIN, 600});
    m_files.Write("conf/graph.cnf", "[COMMON]\nDATESIZE=-2147483648\n");
    EXPECT_EQ(MakeActivity().m_nDateSize, INT_MIN) << "no overflow at either difference";
    SetWorkArea({0, 0, 1920, 1080});
}

} // namespace
