#include "chart_fixture.h"

#include <gmock/gmock.h>

namespace {

class BarData : public ChartTest {
protected:
    /// "status date figure figure ...|" for each day
    static std::string Content(const Open<CBarGraph>& graph) {
        std::ostringstream text;
        for (int day = 0; day < graph.m_saDates.GetSize(); ++day) {
            text << graph.m_dwaStatus[day] << " " << graph.m_saDates[day].GetString();
            for (int series = 0; series < graph.m_nSeriesCount; ++series)
                text << " " << graph.m_saValues[day * graph.m_nSeriesCount + series].GetString();
            text << "|";
        }
        return text.str();
    }
};

TEST_F(BarData, Rows) {
    const std::string wide(1273, 'x'); // with "0,d,1," before it a line of 1279 characters
    const struct Case {
        const char* why;
        std::string file;
        int series;
        std::string content;
    } kCases[] = {
        {"two heads only", "a\nb\n", 1, ""},
        {"empty", "", 1, ""},
        {"carriage returns and a byte order mark",
         "\xEF\xBB\xBF"
         "a\r\nb\r\n4,d,12\r\n",
         1, "4 d 12|"},
        {"a blank line is a day", "a\nb\n0,d,1\n\n0,e,2\n", 1, "0 d 1|0  |0 e 2|"},
        {"figures stay as they are", "a\nb\n 3x, d ,\" 1,5 \"\n", 1, "3  d   1,5 |"},
        {"two series", "a\nb\n0,d,1,2,9\n0,e,3\n", 2, "0 d 1 2|0 e 3 |"},
        {"the line feed is the next row", "a\nb\n0,d,1," + wide + "\n0,e,2\n", 1, "0 d 1|0  |0 e 2|"},
    };
    for (const Case& c : kCases) {
        auto graph = Make<CBarGraph>();
        graph.m_nSeriesCount = c.series;
        EXPECT_EQ(graph.ReadDataFile(DataFile(c.file).data()), 0) << c.why;
        EXPECT_EQ(Content(graph), c.content) << c.why;
    }
}

TEST_F(BarData, AFileThatCantBeOpenedKeepsWhatIsThere) {
    auto graph = Make<CBarGraph>();
    graph.ReadDataFile(DataFile("a\nb\n0,d,12\n").data());
    graph.m_saTargets.Add("5");
    std::string missing = "nothing.csv";
    std::string directory = "..";
    for (char* path : {missing.data(), directory.data(), static_cast<char*>(nullptr)})
        EXPECT_EQ(graph.ReadDataFile(path), 101);
    EXPECT_EQ(Content(graph), "0 d 12|");
    EXPECT_THAT(m_files.Read("log/graph.log"), testing::HasSubstr("CBarGraph::ReadDataFile"));
    graph.ReadDataFile(DataFile("a\nb\n").data());
    EXPECT_EQ(graph.m_saTargets.GetSize(), 1); // targets are not the file's
    graph.ClearArrays();
    EXPECT_EQ(graph.m_saTargets.GetSize(), 0);
}

TEST_F(BarData, TheBigScaleStaysUntilReset) {
    auto graph = Make<CBarGraph>();
    graph.m_nSeriesCount = 2;
    const auto top = [&](const char* days) {
        graph.ReadDataFile(DataFile(std::string("a\nb\n") + days).data());
        EXPECT_EQ(graph.GetGraphMeasure(), 0);
        return graph.m_nChartMax;
    };
    EXPECT_EQ(top("0,d,999,1\n"), 1000); // a day exactly at the top
    EXPECT_EQ(top("0,d,nan,5000\n"), 1000);
    EXPECT_EQ(top("0,d,1,1\n0,e,999,1.5\n"), 5000);
    EXPECT_EQ(graph.m_dChartInterval, 1000);
    EXPECT_EQ(top("0,d,9999,0\n"), 5000);
    EXPECT_EQ(top("0,d,1,1\n"), 5000);
    graph.m_nChartMaxBig = 1;
    EXPECT_EQ(graph.ResetGraphMeasure(), 0);
    EXPECT_EQ(graph.m_nChartMax, 1000);
    EXPECT_EQ(graph.m_dChartInterval, 250);
    EXPECT_EQ(graph.m_nChartMaxBig, 5000);
}

} // namespace
