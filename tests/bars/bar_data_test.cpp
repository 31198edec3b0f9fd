#include "chart_fixture.h"

namespace {

class BarData : public ChartTest {};

TEST_F(BarData, AFileThatCantBeOpenedKeepsWhatIsThere) {
    auto graph = Make<CBarGraph>();
    Read(graph, "a\nb\n0,d,12\n");
    graph.m_saTargets.Add("5");
    std::string missing = "nothing.csv";
    for (char* path : {missing.data(), static_cast<char*>(nullptr)})
        EXPECT_EQ(graph.ReadDataFile(path), 101);
    EXPECT_EQ(Content(graph), "0 d 12|");
    EXPECT_THAT(m_files.Read("log/graph.log"), HasSubstr("CBarGraph::ReadDataFile"));
    Read(graph, "a\nb\n");
    EXPECT_EQ(graph.m_saTargets.GetSize(), 1) << "targets are not the file's";
    graph.ClearArrays();
    EXPECT_EQ(graph.m_saTargets.GetSize(), 0);
}

TEST_F(BarData, TheBigScaleStaysUntilReset) {
    auto graph = Make<CBarGraph>();
    graph.m_nSeriesCount = 2;
    const auto top = [&](const std::string& day) {
        Read(graph, "a\nb\n0,c,1,1\n" + day);
        graph.GetGraphMeasure();
        return graph.m_nChartMax;
    };
    EXPECT_EQ(top("0,d,999,1\n"), 1000) << "a day exactly at the top";
    EXPECT_EQ(top("0,d,nan,5000\n"), 1000);
    EXPECT_EQ(top("0,d,999,1.5\n"), 5000);
    EXPECT_EQ(graph.m_dChartInterval, 1000);
    graph.m_nChartMaxBig = graph.m_nChartIntervalBig = 1;
    graph.ResetGraphMeasure();
    EXPECT_EQ(graph.m_nChartMax, 1000);
    EXPECT_EQ(graph.m_dChartInterval, 250);
    EXPECT_EQ(graph.m_nChartMaxBig, 5000);
    EXPECT_EQ(graph.m_nChartIntervalBig, 1000);
    graph.m_nChartMaxBig = 0;
    EXPECT_EQ(top("0,d,999,1.5\n"), 1000) << "there is no big scale";
}

} // namespace
