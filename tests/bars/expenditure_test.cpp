#include "chart_fixture.h"

#include <MelkarCommon/bars/expenditure_graph.h>

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class OpenExpenditure : public Open<CExpenditureGraph> {
public:
    using Open<CExpenditureGraph>::Open;
    using CExpenditureGraph::m_nHeaderField5, CExpenditureGraph::m_rcEx1, CExpenditureGraph::m_rcEx2;
    using CExpenditureGraph::m_rcIntake, CExpenditureGraph::m_strAverageIntake;
};

/// Column 2: average intake; column 4: top of the scale.
std::string Head(const std::string& intake, const std::string& top) {
    return "skipped\nA,B," + intake + ",3," + top + ",77\n";
}

class Expenditure : public ChartTest {
protected:
    Expenditure() {
        WriteProfile("CHARTMIN=50\nINTAKECOLOR_RGB=30,0,0\nAVERAGE_INTAKE_LABEL=average intake\n"
                     "EX1_LABEL=total\nEX2_LABEL=act");
    }
    OpenExpenditure MakeExpenditure() { return {nullptr, m_record, "STEPS", nullptr, nullptr, nullptr}; }
    long Read(CExpenditureGraph& graph, std::string_view data) { return graph.ReadDataFile(DataFile(data).data()); }
};

TEST_F(Expenditure, ReadsTheTwoPartsOfADay) {
    const struct Case {
        const char *why, *row, *first, *second;
    } cases[] = {
        {"first part as it stands, second the rest", "0,d,2000,500", "500", "1500"},
        {"a rest is a whole number, the first part stays text", "0,d,2000.9,500.1", "500.1", "1500"},
        {"first part above the total", "0,d,300,500", "500", "-200"},
        {"another status: its figures don't count", "1,d,2000,500", "", ""},
        {"extremes don't overflow", "0,d,2147483647,-2147483648", "-2147483648", "4294967295"},
    };
    for (const Case& c : cases) {
        OpenExpenditure graph = MakeExpenditure();
        graph.m_saTargets.Add("5");
        EXPECT_EQ(Read(graph, Head("1800", "4000") + c.row + "\n"), 0) << c.why;
        EXPECT_EQ(graph.m_saValues[0], c.first) << c.why;
        EXPECT_EQ(graph.m_saValues[1], c.second) << c.why;
        EXPECT_EQ(graph.m_saTargets.GetSize(), 0) << "targets are emptied here";
    }
}

TEST_F(Expenditure, TakesTheHeader) {
    OpenExpenditure graph = MakeExpenditure();
    graph.m_strAverage = "9";
    EXPECT_EQ(Read(graph, Head("1800.5", "0")), 102);
    EXPECT_EQ(graph.m_strHeaderField0, "A");
    EXPECT_EQ(graph.m_strHeaderField1, "B");
    EXPECT_EQ(graph.m_strAverageIntake, "1800.5");
    EXPECT_EQ(graph.m_nHeaderField5, 77);
    EXPECT_EQ(graph.m_strAverage, "");
    EXPECT_EQ(graph.m_nChartMin, 0);
    EXPECT_EQ(graph.m_dChartInterval, 500);
    EXPECT_EQ(graph.m_nChartMax, 10000);
    EXPECT_THAT(m_files.Read("log/graph.log"), HasSubstr("CODE = [340]"));
    char missing[] = "no-such.csv";
    EXPECT_EQ(graph.ReadDataFile(missing), 101);
    EXPECT_EQ(graph.m_strAverageIntake, "1800.5");
}

// The label's font has 13 pixels: 8 x 17 a character. Beside the canvas are 73 pixels, so that it wraps.
TEST_F(Expenditure, BandOfTheAverageIntake) {
    const struct Case {
        const char *why, *intake;
        std::vector<std::string> band;
        const char* label;
    } cases[] = {
        {"inside", "1001", {"fill 173,350 900x75 #1E0000"}, "average@350 intake@367"},
        {"above the scale: nothing", "4001", {}, ""},
        {"below the scale: nothing", "-1", {}, ""},
        {"none: no band, but the label", "", {}, "average@425 intake@442"},
    };
    for (const Case& c : cases) {
        OpenExpenditure graph = MakeExpenditure();
        const auto lines = DrawRecorded(graph, Head(c.intake, "4000") + "0,a,2000,500\n", kWideArea);
        EXPECT_EQ(LinesWith(lines, "fill", "#1E0000"), c.band) << c.why;
        EXPECT_EQ(TextsAt(lines, 1073), c.label) << c.why;
    }
}

// "goal" ends at 1073 and is 48 wide; "act" ends 80 left of it, "total" two heights left of that.
TEST_F(Expenditure, LegendStandsLeftOfTheTarget) {
    for (const int target : {0, 1}) {
        OpenExpenditure graph = MakeExpenditure();
        graph.m_bPrintTarget = target;
        const auto lines = DrawRecorded(graph, Head("0", "4000") + "0,a,2000,500\n", kWideArea);
        EXPECT_EQ(graph.m_rcTarget, CRect(1025, 76, 1073, 101)) << target;
        EXPECT_EQ(graph.m_rcEx2, CRect(909, 76, 945, 101)) << target;
        EXPECT_EQ(graph.m_rcEx1, CRect(799, 76, 859, 101)) << target;
        EXPECT_EQ(TextsAt(lines, 799) + TextsAt(lines, 909), "total@76act@76");
        EXPECT_EQ(TextsAt(lines, 1025), target ? "goal@76" : "");
        std::vector<std::string> samples;
        for (const std::string& line : LinesWith(lines, "fill "))
            if (line.find(",76 25x25 ") != std::string::npos)
                samples.push_back(line);
        EXPECT_THAT(samples,
                    ElementsAre("fill 771,76 25x25 #140000", "fill 881,76 25x25 #140000", "fill 746,76 25x25 #0A0000"));
    }
}

TEST_F(Expenditure, GoesOnWithoutRecordsAndRepeatsMessagesOnce) {
    OpenExpenditure graph = MakeExpenditure();
    const auto noData = DrawRecorded(graph, Head("0", "4000") + "2,a\n", kWideArea);
    EXPECT_EQ(LinesWith(noData, "text \"no data\"").size(), 2U) << "frame and bars";
    const auto noRecords = DrawRecorded(graph, Head("0", "4000"), kWideArea);
    EXPECT_EQ(LinesWith(noRecords, "text \"records\"").size() + LinesWith(noRecords, "text \" records\"").size(), 1U);
    EXPECT_EQ(LinesWith(noRecords, "fill", "#FAFAFA").size(), 1U) << "the canvas all the same";
}

TEST_F(Expenditure, ClickGivesTheDayAndHoverTheBar) {
    OpenExpenditure graph = MakeExpenditure();
    DrawRecorded(graph, Head("0", "4000") + "0,a,2000,500\n0,b,2000,500\n", kWideArea);
    const struct Case {
        const char* why;
        CPoint at;
        long day;
        long bar;
    } cases[] = {
        {"first part", {300, 400}, 0, 0},
        {"second part", {300, 300}, 0, 1},
        {"above the stack", {300, 274}, -1, -1},
        {"second day's rest", {800, 300}, 1, 3},
        {"gap", {600, 400}, -1, -1},
        {"date strip", {300, 425}, -1, -1},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(graph.OnClick(c.at), c.day) << c.why;
        EXPECT_EQ(graph.OnMouseMove(c.at), c.bar) << c.why;
    }
}

} // namespace
