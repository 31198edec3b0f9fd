#include <MelkarCommon/frame/data_table.h>
#include <frame/host_fixture.h>

namespace {

/// What a host derives, with a table of its own.
class Thermometer : public CGraph {
public:
    using CGraph::CGraph;
    long ReadDataFile(char* path) override;

    struct File;
    int Sensors() const { return 2; }

    int m_nMax = -1;
    CString m_strPlace = "nowhere";
    COLORREF m_crMark = 1;
    float m_fLast = -1;
    double m_dHours[3] = {};
    double m_dBehind = -1;
};

struct Thermometer::File : melkar::Columns<Thermometer> {
    static constexpr Form form{2, "day"};
    static constexpr Row rows[] = {
        Text<&G::m_strPlace>(1, "place").InHead(0),
        Whole<&G::m_nMax>(0, "top", "degrees").InHead(1),
        Color<&G::m_crMark>(1, "mark").InHead(1),
        DayStatus(0),
        Caption(1),
        Figures<&G::m_saValues, &G::Sensors>(2, "temperature", "degrees").Within(-50, 60).Needed(),
        Figure<&G::m_fLast>(4, "mean").WithFigures(),
        Figure<&G::m_dHours>(5, "hour").Each(4),
    };
};

long Thermometer::ReadDataFile(char* path) {
    return melkar::ReadFile(*this, "Thermometer", path, [this](melkar::DataFile& file) {
        m_dwaStatus.RemoveAll();
        m_saDates.RemoveAll();
        m_saValues.RemoveAll();
        melkar::ReadHeads<File>(*this, file);
        return melkar::ReadRows<File>(*this, file);
    });
}

class DataTableTest : public HostTest {};

TEST_F(DataTableTest, EachColumnLandsInItsMember) {
    auto graph = Make<Thermometer>();
    EXPECT_EQ(graph.ReadDataFile(m_missing), 101);
    EXPECT_EQ(graph.m_strPlace, "nowhere") << "kept";
    EXPECT_EQ(Read(graph, "x,roof\n40.9,#0A0b0C\n0,Mon,21.5,-3,1e300,1,2.5,x\n4,Tue,7,,5\n"), 0);
    EXPECT_EQ(graph.m_strPlace, "roof");
    EXPECT_EQ(graph.m_nMax, 40) << "whole numbers are cut";
    EXPECT_EQ(graph.m_crMark, 0x0C0B0Au);
    std::string days;
    for (int i = 0; i < graph.m_saValues.GetSize(); ++i)
        days.append(graph.m_saDates[i]).append(graph.m_saValues[i]).append("|");
    EXPECT_EQ(days, "Mon21.5|Tue-3|7||");
    EXPECT_EQ(graph.m_fLast, 0) << "the last day has no figures";
    EXPECT_EQ(Read(graph, "\n\n0,Mon,1,2,1e300,1,2.5,x,4\n"), 0);
    EXPECT_EQ(graph.m_fLast, std::numeric_limits<float>::max()) << "what no float holds";
    EXPECT_THAT(graph.m_dHours, ElementsAre(1, 2.5, 0)) << "no number";
    EXPECT_EQ(graph.m_dBehind, -1) << "more columns than elements";
    EXPECT_EQ(Read(graph, "x,\n"), 102);
    EXPECT_EQ(graph.m_nMax, 0) << "a head row that isn't there is empty";
}

} // namespace
