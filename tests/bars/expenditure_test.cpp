#include "chart_fixture.h"

#include <MelkarCommon/bars/expenditure_graph.h>

namespace {

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
};

TEST_F(Expenditure, ReadsTheTwoPartsOfADay) {
    const char* const cases[][3] = {
        {"a rest is a whole number, the first part stays text", "0,d,2000.9,500.1", "500.1+1500"},
        {"another status: its figures don't count", "1,d,2000,500", "+"},
        {"short row", "0", "+0"},
        {"extremes don't overflow", "0,d,2147483647,-2147483648", "-2147483648+4294967295"},
    };
    for (const auto& [why, row, parts] : cases) {
        auto graph = Make<CExpenditureGraph>();
        graph.m_saTargets.Add("5");
        EXPECT_EQ(Read(graph, Head("1800", "4000") + row + "\n"), 0) << why;
        EXPECT_EQ(graph.m_saValues[0] + "+" + graph.m_saValues[1], parts) << why;
        EXPECT_EQ(graph.m_saTargets.GetSize(), 0) << "targets are emptied here";
    }
}

TEST_F(Expenditure, TakesTheHeader) {
    auto graph = Make<CExpenditureGraph>();
    graph.m_strAverage = "9"; // to be emptied
    EXPECT_EQ(Read(graph, Head("1800.5", "0")), 102);
    EXPECT_EQ(graph.ReadDataFile(m_missing), 101);
    EXPECT_EQ(graph.m_strHeaderField0 + graph.m_strHeaderField1 + graph.m_strAverageIntake + graph.m_strAverage,
              "AB1800.5");
    EXPECT_EQ(graph.m_nHeaderField5, 77);
    EXPECT_EQ(graph.m_nChartMin, 0);
    EXPECT_EQ(graph.m_dChartInterval, 500);
    EXPECT_EQ(graph.m_nChartMax, 10000) << "repaired";
    EXPECT_THAT(m_files.Read("log/graph.log"), HasSubstr("CODE = [340]"));
}

/// The band lies on the canvas, under scale and bars; two days' bars are 225 wide, at 285 and 735.
TEST_F(Expenditure, StacksThePartsOverTheBand) {
    auto graph = Make<CExpenditureGraph>();
    // a negative rest lies upside down on the first part
    ExpectInOrder(Record(graph, Head("1000", "4000") + "0,a,2000,500\n0,b,300,500\n", kWideArea),
                  {"fill 173,125 900x300 #FAFAFA", "fill 173,350 900x75 #1E0000", "text \"500\" ",
                   "fill 285,388 225x37 #0A0000", "fill 285,275 225x113 #140000", "fill 735,388 225x37 #0A0000",
                   "fill 735,388 225x15 #140000"});
    EXPECT_EQ(graph.OnClick(CPoint(800, 400)), 1);
    EXPECT_EQ(graph.OnMouseMove(CPoint(300, 300)), 1);
    DrawRecorded(graph, Head("0", "4000") + "0,a,9000,500\n", kWideArea);
    EXPECT_EQ(graph.m_nChartMax, 4000) << "the file's scale never yields to the big one";
}

// The label's font has 13 pixels: 8 x 17 a character. Beside the canvas are 73 pixels, so that it wraps.
TEST_F(Expenditure, BandOfTheAverageIntake) {
    const std::tuple<const char*, const char*, std::vector<std::string>, const char*> cases[] = {
        {"a fraction is cut", "1001", {"fill 173,350 900x75 #1E0000"}, "average@350|intake@367"},
        {"the whole scale", "4000", {"fill 173,125 900x300 #1E0000"}, "average@125|intake@142"},
        {"above the scale: nothing", "4001", {}, ""},
        {"none: no band, but the label", "", {}, "average@425|intake@442"},
    };
    for (const auto& [why, intake, band, label] : cases) {
        auto graph = Make<CExpenditureGraph>();
        const auto lines = DrawRecorded(graph, Head(intake, "4000") + "0,a,2000,500\n", kWideArea);
        EXPECT_EQ(LinesWith(lines, "fill", "#1E0000"), band) << why;
        EXPECT_EQ(TextsAt(lines, 1073), label) << why;
    }
}

// "goal" ends at 1073 and is 48 wide; "act" ends 80 left of it, "total" two heights left of that.
TEST_F(Expenditure, LegendStandsLeftOfTheTargetPrintedOrNot) {
    for (const int target : {0, 1}) {
        auto graph = Make<CExpenditureGraph>();
        graph.m_bPrintTarget = target;
        const auto lines = DrawRecorded(graph, Head("0", "4000") + "0,a,2000,500\n", kWideArea);
        EXPECT_EQ(TextsAt(lines, 799) + TextsAt(lines, 909), "total@76act@76");
        EXPECT_EQ(TextsAt(lines, 1025), target ? "goal@76" : "");
        for (const char* sample : {"771,76 25x25 #140000", "881,76 25x25 #140000", "746,76 25x25 #0A0000"})
            EXPECT_EQ(LinesWith(lines, "fill ", sample).size(), 1U) << sample;
    }
}

} // namespace
