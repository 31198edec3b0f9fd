#include <frame/host_fixture.h>

#include <MelkarCommon/quadrant/quadrant_layout.h>
#include <MelkarCommon/quadrant/square_graph.h>
#include <MelkarCommon/registry/shown_by.h>
#include <frame/contents_text.h>

namespace {

using melkar::QuadrantScale;

TEST(QuadrantLayout, SideOfTheSquare) {
    constexpr CRect graph(0, 0, 500, 400);
    const std::tuple<const char*, melkar::SquareRoom, int> cases[] = {
        {"300 below the title, 60 too low: three lines less", {graph, {73, 100}, 5, 20, 100}, 240},
        {"one more unit: four lines less", {graph, {73, 101}, 5, 20, 100}, 220},
        {"it fits", {graph, {73, 40}, 5, 20, 100}, 300},
        {"73 + 300 is 173 too wide: nine lines less", {graph, {73, 40}, 5, 20, 300}, 120},
        {"a line without height: as large as fits", {graph, {73, 100}, 5, 0, 100}, 300},
        {"no room", {{0, 0, 50, 40}, {73, 100}, 5, 20, 100}, 0},
        {"beyond all bounds", {{INT_MIN, INT_MIN, INT_MAX, INT_MAX}, {INT_MAX, INT_MAX}, 5, INT_MAX, INT_MAX}, 0},
    };
    for (const auto& [why, room, side] : cases)
        EXPECT_EQ(melkar::SquareSide(room), side) << why;
}

TEST(QuadrantLayout, WhereValuesStand) {
    const std::tuple<const char*, QuadrantScale, int, int, int> cases[] = {
        {"a fraction is cut", {0, 70, 50}, 20, 85, 214},
        {"a scale that begins below 0", {-10, 50, -10}, 20, 150, 0},
        {"upside down", {50, 0, 20}, 20, 180, 180},
        {"no range: in the middle", {7, 7, 7}, 7, 0, 150},
        {"the whole range of an int", {INT_MIN, INT_MAX, INT_MAX}, INT_MAX, 300, 300},
    };
    for (const auto& [why, scale, value, offset, dividing] : cases) {
        EXPECT_EQ(scale.Offset(value, 300), offset) << why;
        EXPECT_EQ(scale.DividingOffset(300), dividing) << why;
    }
    EXPECT_EQ(melkar::CenteredOn({20, 30}, {0, 0, 9, 15}), CRect(16, 23, 25, 38));
    EXPECT_EQ(melkar::ShareBox({0, 0, 790, 600}, {100, 50, 400, 350}, 17), CRect(410, 309, 751, 350));
}

constexpr std::string_view kProfile =
    "[COMMON]\nFONT=Fixed\nBASECOLOR_RGB=200,200,200\nCANVASCOLOR_RGB=250,250,250\nPENCOLOR_RGB=1,2,3\n"
    "NORECORDS_MESSAGE=no records\nNODATA_MESSAGE=no data\n"
    "[OWN]\nTITLELABEL=T\nTITLESIZE=30\nTITLECOLOR_RGB=0,0,0\n"
    "LEFTUPPERR_COLOR_RGB=1,0,0\nRIHGTUPPER_COLOR_RGB=2,0,0\nLEFTLOWER_COLOR_RGB=3,0,0\nRIHGTLOWER_COLOR_RGB=4,0,0\n"
    "LEFTUPPERR_LABEL=aaaaaaaaaaaa bbbbbbbbbbbb\nRIHGTUPPER_LABEL=ru\nLEFTLOWER_LABEL=ll\nRIHGTLOWER_LABEL=rl\n"
    "VAXSLABEL=L__d__\nHAXSLABEL=steps\nVAXSSIZE=15\nLEFT_SPACE=000000\nRIGHT_SPACE=00000000\n";

/// The columns of a line that tell something.
std::string Line(const std::string& columns) { return Row(27, columns); }

/// With scales, counts and marks at the canvas's corners.
class Plotted : public CSquareGraph {
public:
    using CSquareGraph::CSquareGraph;
    long GetGraphMeasure() override {
        m_nHMax = 100;
        m_nHMid = 25;
        m_nHStep = 50;
        m_nVMax = 50;
        m_nVMid = vMid;
        m_nVStep = 25;
        m_nLeftUpperCount = m_nLeftLowerCount = m_nRightUpperCount = counted;
        m_nRightLowerCount = 13 * counted;
        return 0;
    }
    long DrawTargetAverage() override {
        inside = DrawPoint(m_rcCanvas.left, m_rcCanvas.top, "p") + DrawPoint(m_rcCanvas.right, m_rcCanvas.bottom, "q");
        outside = DrawPoint(m_rcCanvas.left - 1, m_rcCanvas.top, "x") +
                  DrawPoint(m_rcCanvas.right, m_rcCanvas.bottom + 1, "x");
        return 0;
    }
    int vMid = 20;
    int counted = 1;
    long inside = 9;
    long outside = 9;
};

class SquareGraph : public HostTest {
protected:
    SquareGraph() : HostTest(kProfile) {}

    static constexpr CRect kArea{100, 50, 900, 650};
};

TEST_F(SquareGraph, TargetsAndLevelOfTheHead) {
    const char* const cases[][6] = {
        {"fixed in line 1", "7=80 8=2 15=1", "5=x 6=y", "9=d 3=e", "80", "2"},
        {"not marked as fixed: the day's", "7=80 8=2", "5=x 6=y", "9=d 3=e", "d", "e"},
        {"fixed in line 2", "8=2 15=1", "5=x 6=y", "9=d 3=e", "x", "y"},
        {"line 2 says no", "", "5=x 6=y 9=0", "9=d 3=e", "d", "e"},
        {"an empty first one isn't fixed", "", "6=y", "9=d 3=e", "d", "e"},
        {"no second one that day: line 2's", "", "6=y 9=0", "9=d 3=e 26=0", "d", "y"},
    };
    for (const auto& [why, first, second, day, target1, target2] : cases) {
        auto graph = Make<CSquareGraph>();
        EXPECT_EQ(Read(graph, Line(first) + Line(second) + "\n" + Line("9=former") + Line(day)), 0);
        EXPECT_EQ(graph.m_strTarget1, target1) << why;
        EXPECT_EQ(graph.m_strTarget2, target2) << why;
    }
    auto graph = Make<CSquareGraph>();
    Read(graph, Line("9=brisk 10=4") + Line("20=calm 21=2") + Line("1=a 2=c 4=b"));
    EXPECT_EQ(graph.m_strLevelName + graph.m_strAverage1 + graph.m_strAverage2 + graph.m_strAverage3, "briskabc");
    EXPECT_EQ(graph.m_nLevel, 4);
    Read(graph, Line("10=4") + Line("20=calm 21=2"));
    EXPECT_EQ(graph.m_strLevelName, "calm");
    EXPECT_EQ(graph.m_nLevel, 2);
}

TEST_F(SquareGraph, DaysAndTheirLevels) {
    const std::string day = Line("0=1 5=5000 11=190 14=150 15=15 16=-5 22=30 23=7 24=150");
    const char* const cases[][3] = {
        {"all levels; below 0 counts for nothing: 52 / 15", "1", "3.5"},
        {"from the second: 37 / 15", "2", "2.5"},
        {"the last one: 7 / 15", "9", "0.5"},
        {"beyond the last: nothing", "10", "0.0"},
        {"below the first: no field before it", "-3", "3.5"},
    };
    auto graph = Make<CSquareGraph>();
    for (const auto& [why, level, sum] : cases) {
        graph.m_nLeftUpperCount = 5;
        Read(graph, Line(std::string("9=name 10=") + level) + "\n\n" + day);
        EXPECT_EQ(graph.m_saDayLevelSum.GetAt(0), sum) << why;
        EXPECT_EQ(graph.m_nLeftUpperCount, 0);
    }
    EXPECT_EQ(graph.m_saDayField5.GetAt(0) + "/" + graph.m_saDayField11.GetAt(0), "5000/190");
    EXPECT_EQ(graph.m_dwaStatus[0], 1U);
    EXPECT_EQ(graph.ReadDataFile(m_missing), 101);
    EXPECT_EQ(graph.m_dwaStatus.GetSize() + graph.m_saDayField5.GetSize(), 2) << "the former days stay";
    for (const char* file : {"", "one\n", "one\ntwo"}) {
        EXPECT_EQ(Read(graph, file), 0);
        EXPECT_EQ(graph.m_dwaStatus.GetSize() + graph.m_saDayField5.GetSize() + graph.m_saDayField11.GetSize(), 0);
        EXPECT_EQ(graph.m_strAverage1, "");
    }
}

// The title is 50 high and ends at 101. The frame puts the canvas at (173, 175); from 475 the side shrinks by three
// lines of 25, so that three fit below 575. The square begins at 100 + 72 and 101 + 125. The divisions are at 172 + 100
// and 626 - 160; figures, captions and entries are 12 x 25 a character.
TEST_F(SquareGraph, WhatOneSees) {
    auto graph = Make<Plotted>();
    const std::string record = Record(graph, Line("9=n 10=4") + "\n\n" + Line("0=0"), kArea);
    EXPECT_EQ(graph.m_rcCanvas, CRect(172, 226, 572, 626));
    ExpectInOrder(record,
                  {
                      "fill 172,226 400x400 #FAFAFA\n",
                      "fill 172,226 100x240 #010000\nfill 272,226 300x240 #020000\n",
                      "fill 172,466 100x160 #030000\nfill 272,466 300x160 #040000\n",
                      "text \"0\" 150,614 12x25",
                      "text \"25\" 138,414 24x25",
                      "text \"50\" 138,214 24x25",
                      "text \"0\" 166,626 12x25",
                      "text \"50\" 360,626 24x25",
                      "text \"100\" 554,626 36x25",
                      // marks in the surface's font, 8 x 15, twice each
                      "text \"p\" 168,219 8x15 \"sans 12\" #000000\ntext \"p\" 168,219 8x15",
                      "text \"q\" 568,619 8x15 \"sans 12\" #000000\ntext \"q\" 568,619 8x15",
                      // the share box, 36 high, characters of 13; 6.25 is 6.2, three of it: the largest gets 81.4
                      "fill 582,590 139x18 #010000\ntext \"6.2% \" 656,590 65x27",
                      "fill 582,608 139x18 #030000\ntext \"6.2% \" 656,608 65x27",
                      "fill 721,590 139x18 #020000\ntext \"6.2% \" 795,590 65x27",
                      "fill 721,608 139x18 #040000\ntext \"81.4% \" 782,608 78x27",
                      "line 582,590 860,590 #000000 w1\n",
                      "line 582,608 860,608 #000000 w1 dot",
                      "line 721,590 721,626 #000000 w1 dot",
                      "text \"L4\" 101,438 24x25 \"Fixed 20\" #000000 angle 900",
                      "text \"steps\" 342,651 60x25",
                      // the legend: 1.1 lines of 25 are 27, of 50 are 55
                      "text \"ru\" 607,226 24x25",
                      "fill 582,226 25x25 #020000\n",
                      "text \"aaaaaaaaaaaa\" 607,253",
                      "text \"bbbbbbbbbbbb\" 607,278",
                      "fill 582,253 25x25 #010000\n",
                      "text \"rl\" 607,308",
                      "fill 582,308 25x25 #040000\n",
                      "text \"ll\" 607,335",
                      "fill 582,335 25x25 #030000\n",
                  });
    EXPECT_EQ(graph.inside, 0) << "edges count as inside";
    EXPECT_EQ(graph.outside, -2);
    EXPECT_THAT(Record(graph, Line("9=n 10=6") + "\n\n" + Line("0=0"), kArea), HasSubstr("\"L4\""))
        << "the level is put into the caption once and for all";
}

TEST_F(SquareGraph, HorizontalCaptionLeavesBlackAndNoOtherStepAnything) {
    auto graph = Make<Plotted>();
    Record(graph, "\n\n\n" + Line("0=0"), kArea);
    EXPECT_EQ(LeftBy([&] { graph.DrawHAxsLabel(); }), "opaque 0 green");
    EXPECT_EQ(LeftBy([&] {
                  graph.DrawCanvas();
                  graph.DrawTargetAverage();
                  graph.DrawPoints();
                  graph.DrawVAxsLabel();
                  graph.DrawSecExs();
              }),
              "opaque red green");
}

TEST_F(SquareGraph, WhatIsLeftOut) {
    const std::string day = "\n\n\n" + Line("0=0");
    auto graph = Make<Plotted>();
    graph.counted = 0;
    const std::string empty = Record(graph, day, kArea);
    EXPECT_THAT(empty, HasSubstr("line 582,608 860,608 #000000 w1 dot"));
    EXPECT_THAT(empty, Not(HasSubstr("% \""))) << "nothing was counted: frame and cross alone";
    graph.m_bRatioBox = 2;
    EXPECT_THAT(Record(graph, day, kArea), Not(HasSubstr("line 582,608")));
    graph.vMid = 0;
    EXPECT_THAT(Record(graph, day, kArea), Not(HasSubstr("fill 172,626"))) << "lower quadrants without height";
    const std::string message = Record(graph, "\n\n\n" + Line("0=4"), kArea);
    EXPECT_THAT(message, HasSubstr("text \"no records\""));
    EXPECT_THAT(message, Not(HasSubstr("fill 172,226")));
    EXPECT_THAT(Record(graph, "\n\n\n" + Line("0=3"), kArea), HasSubstr("text \"no data\""));
}

/// Shares and quadrants are those of the record above.
TEST_F(SquareGraph, TellsItsQuadrants) {
    auto graph = Make<Plotted>();
    const std::string days = Line("9=n 10=4") + "\n\n" + Line("0=0");
    Record(graph, days, kArea);
    const melkar::Contents shown = melkar::ShownBy(graph);
    EXPECT_EQ(shown.kind + "|" + shown.title, "quadrant|T");
    ASSERT_THAT(shown.items, SizeIs(4));
    const auto said = [](const melkar::ShownItem& item) { return item.caption + "|" + item.text + Figures(item); };
    EXPECT_EQ(said(shown.items[0]), "ru|6.2% 0:6.2% @272,226 572,466|");
    EXPECT_EQ(said(shown.items[1]), "aaaaaaaaaaaa bbbbbbbbbbbb|6.2% 1:6.2% @172,226 272,466|");
    EXPECT_EQ(said(shown.items[2]), "rl|81.4% 2:81.4% @272,466 572,626|");
    EXPECT_EQ(said(shown.items[3]), "ll|6.2% 3:6.2% @172,466 272,626|");
    EXPECT_EQ(shown.items[2].value, 13);
    EXPECT_EQ(shown.series.at(2).color, RGB(4, 0, 0));
    EXPECT_EQ(shown.axes.at(0).label + "|" + shown.axes.at(1).label, "L4|steps");
    EXPECT_EQ(shown.axes[1].to, 100);
    graph.m_bRatioBox = 0;
    Record(graph, days, kArea);
    EXPECT_EQ(melkar::ShownBy(graph).items.at(0).text, "") << "the box isn't painted";
    graph.counted = 0;
    Record(graph, days, kArea);
    EXPECT_TRUE(melkar::ShownBy(graph).items.at(0).isMissing) << "nothing was counted";
    Record(graph, "\n\n\n" + Line("0=4"), kArea);
    EXPECT_THAT(melkar::ShownBy(graph).items, IsEmpty());
    EXPECT_THAT(melkar::ShownBy(graph).messages, ElementsAre("no records"));
}

} // namespace
