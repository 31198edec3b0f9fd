#include <frame/host_fixture.h>

#include <MelkarCommon/gauges/bmi_graph_eng.h>
#include <MelkarCommon/gauges/gauge_layout.h>
#include <MelkarCommon/gauges/himand_graph.h>
#include <MelkarCommon/registry/shown_by.h>
#include <frame/contents_text.h>

namespace {

using melkar::GaugeFigurePlace;

TEST(GaugeLayout, ClassOfAFigure) {
    const std::tuple<const char*, double, double, double, std::vector<double>, int, int> cases[] = {
        {"below the first bound", 18.4, 15, 30, {18.5, 25, 30}, 2, 0},
        {"on a bound: the next class", 18.5, 15, 30, {18.5, 25, 30}, 2, 1},
        {"on the top of the scale", 30, 15, 30, {18.5, 25, 30}, 2, 3},
        {"below the scale, but below a bound as well", 3, 15, 30, {18.5, 25, 30}, 2, 0},
        {"below the scale and no bound above it", 3, 15, 30, {0, 0, 0}, 2, -1},
        {"above the scale, but a bound lies above it", 65, 0, 60, {10, 20, 99}, 0, 2},
        {"between the last bound and the top: the former one", 40, 0, 60, {10, 20, 30}, 1, 1},
        {"bounds in no order: the first above it", 15, 0, 60, {10, 50, 20}, 0, 1},
        {"no number: the former one", NAN, 0, 60, {10, 20, 30}, 2, 2},
    };
    for (const auto& [why, value, min, max, bounds, former, cls] : cases)
        EXPECT_EQ(melkar::ClassOf(value, min, max, bounds, former), cls) << why;
}

TEST(GaugeLayout, WhereFiguresAndBoundsStand) {
    const std::tuple<const char*, double, double, double, int, int> cases[] = {
        {"inside", 15, 45, 22.5, 175, 175},
        {"just below the scale: cut before or behind the left end is added", 15, 45, 14.99, 99, 100},
        {"above it: not clamped", 15, 45, 60, 550, 550},
        {"upside down", 45, 15, 37.5, 175, 175},
        {"no range: no division", 15, 15, 20, 100, 100},
        {"no number", 15, 45, NAN, 100, 100},
        {"beyond all bounds", 15, 45, 1e308, 1 << 24, 1 << 24},
        {"the whole range of an int", -2147483648.0, 2147483647.0, 2147483647.0, 400, 400},
    };
    for (const auto& [why, min, max, value, figure, bound] : cases) {
        const melkar::GaugeScale scale{min, max, 100, 400};
        EXPECT_EQ(scale.FigureX(value), figure) << why;
        EXPECT_EQ(scale.BoundX(value), bound) << why;
    }
}

TEST(GaugeLayout, WhereTheFigureOfABarStands) {
    const CRect band(10, 4, 310, 36);
    EXPECT_EQ(melkar::PlaceGaugeFigure(band, 110, 100), GaugeFigurePlace::InBar) << "exactly as wide as the bar";
    EXPECT_EQ(melkar::PlaceGaugeFigure(band, 110, 101), GaugeFigurePlace::BehindBar);
    EXPECT_EQ(melkar::PlaceGaugeFigure(band, 260, 50), GaugeFigurePlace::CutOff)
        << "exactly as wide as the room behind it";
    EXPECT_EQ(melkar::PlaceGaugeFigure(band, 1 << 24, 50), GaugeFigurePlace::CutOff);
    EXPECT_EQ(melkar::BarBand({0, 0, 300, 39}), CRect(0, 3, 300, 36)) << "3.9 is cut";
    EXPECT_EQ(melkar::DiscBand({0, 11, 300, 110}, {0, 28, 300, 110}), CRect(0, 64, 300, 106)) << "121 / 2, 99 / 20";
}

constexpr std::string_view kProfile =
    "[COMMON]\nFONT=Fixed\nBASECOLOR_RGB=200,200,200\nCANVASCOLOR_RGB=250,250,250\nPENCOLOR_RGB=1,2,3\n"
    "NORECORDS_MESSAGE=no records\n"
    "[OWN]\nTITLELABEL=T\nTITLESIZE=15\nTITLECOLOR_RGB=200,200,200\nMIN=0\nMAX=100\n"
    "CLASSCOLOR0_RGB=10,0,0\nCLASSCOLOR1_RGB=11,0,0\nCLASSCOLOR2_RGB=12,0,0\nCLASSCOLOR3_RGB=13,0,0\n"
    "CLASSCOLOR4_RGB=14,0,0\nCLASSCOLOR5_RGB=15,0,0\n"
    "CLASSMAXVALUE0=20\nCLASSMAXVALUE1=50.5\nCLASSMAXVALUE2=80\nCLASSMAXVALUE3=85\nCLASSMAXVALUE4=90\n"
    "CLASSMAXVALUE5=7\n"
    "CLASSCAPTION0=A __n__ B\nCLASSCAPTION1=C\nCLASSCAPTION2=D\n"
    "CLASSCOLORNAME0_RGB=20,0,0\nCLASSCOLORNAME1_RGB=21,0,0\nCLASSCOLORNAME2_RGB=22,0,0\n"
    "CLASSCAPTION2_0=a __n__ b\nCLASSCAPTION2_1=c\nCLASSCAPTION2_2=d\n";

class Gauge : public HostTest {
protected:
    Gauge() : HostTest(kProfile) {}

    static std::string File(const std::string& figure) { return "skipped\n" + figure + ",more\n"; }
};

TEST_F(Gauge, ReadsOneFigure) {
    auto gauge = Make<CBMIGraph_Eng>();
    const std::tuple<const char*, const char*, const char*, int> cases[] = {
        {"the second row counts", "1\n50.5 kg,2\n3\n", "50.5 kg", 2},
        {"one row is taken", "95,2", "95", 5},
        {"an empty second row is a row", "95\n\n", "", 0},
        {"an empty file", "", "", 0},
        {"MAX bounds the last class, not its key", "h\n99.9\n", "99.9", 5},
        {"the top belongs to no class", "h\n100\n", "100", 6},
    };
    for (const auto& [why, file, figure, cls] : cases) {
        EXPECT_EQ(Read(gauge, file), 0) << why;
        EXPECT_EQ(gauge.m_strValue, figure) << why;
        EXPECT_EQ(gauge.m_nClass, cls) << why;
    }
    EXPECT_EQ(gauge.ReadDataFile(m_missing), 101);
    EXPECT_EQ(gauge.m_strValue, "100");
}

// The bar's band is 54 to 86: figures of 10 x 20 a character stand from 60 on.
TEST_F(Gauge, BarAndItsFigure) {
    const char* const cases[][4] = {
        {"in the bar, at its end", "50", "fill 101,55 148x30 #0B0000\n",
         "text \"50\" 230,60 20x20 \"Fixed 16\" #FFFFFF\n"},
        {"behind it", "4 kg", "fill 101,55 10x30 #0A0000\n", "text \"4 kg\" 112,60 40x20 \"Fixed 16\" #000000\n"},
        {"cut off at the right", "96", "fill 101,55 286x30 #0F0000\n",
         "text \"96\" 393,60 20x20 \"Fixed 16\" #000000 clip 393,54 400,86\n"},
        {"off the scale: at the right", "100", "fill 101,55 298x30 #0F0000\n",
         "text \"100\" 370,60 30x20 \"Fixed 16\" #000000\n"},
        {"below the scale, in the first class: at the left end", "-5", "",
         "text \"-5\" 100,60 20x20 \"Fixed 16\" #000000\n"},
    };
    auto gauge = Make<CBMIGraph_Eng>();
    for (const auto& [why, figure, bar, text] : cases) {
        const std::string record = Record(gauge, File(figure), {100, 50, 400, 90});
        EXPECT_THAT(record, HasSubstr("fill 101,51 298x38 #FAFAFA\n")) << why;
        EXPECT_THAT(record, HasSubstr(bar)) << why;
        EXPECT_THAT(record, HasSubstr(text)) << why;
        EXPECT_THAT(record, Not(HasSubstr("no records"))) << "a gauge has no days";
    }
    auto above = Make<CBMIGraph_Eng>();
    above.m_nMin = 200; // above all bounds: what lies between them and the scale has no class
    above.m_nMax = 300;
    const std::string below = Record(above, File("150"), {100, 50, 400, 90});
    EXPECT_THAT(below, HasSubstr("fill 101,51 298x38 #FAFAFA\ntext \"150\" 1,60 30x20 \"Fixed 16\" #000000\n"))
        << "no bar; all the room from the surface's left on";
}

/// The frame's is covered by the ground.
TEST_F(Gauge, TitleStandsOnTheGround) {
    m_files.Write("conf/graph.cnf", "[COMMON]\nFONT=Fixed\nCANVASCOLOR_RGB=250,250,250\n"
                                    "[OWN]\nTITLELABEL=T\nTITLESIZE=15\nTITLECOLOR_RGB=0,0,9\n");
    auto gauge = Make<CBMIGraph_Base>();
    ExpectInOrder(Record(gauge, File("50"), {100, 50, 400, 90}),
                  {"fill 101,51 298x38 #FAFAFA\n", "text \"T\" 102,51 12x25 \"Fixed 20 bold\" #000009\n"});
}

/// A figure in its bar is white; what is written next is black again.
TEST_F(Gauge, NextTextIsBlack) {
    auto gauge = Make<CBMIGraph_Eng>();
    Record(gauge, File("50"), {100, 50, 400, 90});
    EXPECT_EQ(LeftBy([&] { gauge.DrawValue(); }), "opaque 0 green");
    EXPECT_EQ(LeftBy([&] { gauge.DrawCanvas(); }), "transparent red green") << "for the figure of a derived class";
    auto disc = Make<CHimandGraph>();
    Record(disc, File("50"), {100, 50, 400, 150});
    EXPECT_EQ(LeftBy([&] { disc.DrawCanvas(); }), "transparent red green");
    EXPECT_EQ(LeftBy([&] { disc.DrawValue(); }), "opaque red green");
}

TEST_F(Gauge, ShowsWhereverItsPictureLands) {
    CBMIGraph_Eng gauge(nullptr, m_record, "OWN", m_record, nullptr, nullptr);
    EXPECT_EQ(gauge.Draw({100, 50, 400, 90}, DataFile(File("50")).data()), 0);
    const std::string record = GetRecording(m_record);
    EXPECT_THAT(record, HasSubstr("copy 100,50 300x40 from 0,0\n"));
    EXPECT_THAT(record, HasSubstr("text \"50\" 230,60 20x20 \"Fixed 16\" #FFFFFF\n"));
}

/// A derived class may do more in a step than paint.
TEST_F(Gauge, StepsRunWithoutASurfaceAndARectangle) {
    class Counting : public CHimandGraph {
    public:
        using CHimandGraph::CHimandGraph;
        long DrawValue() override { return ++figures, CHimandGraph::DrawValue(); }
        int figures = 0;
    };
    Counting unbound(nullptr, nullptr, "OWN", nullptr, nullptr, nullptr);
    EXPECT_EQ(unbound.Draw({0, 0, 9, 9}, m_missing), 0) << "always";
    auto bound = Make<Counting>();
    EXPECT_EQ(bound.Draw({0, 0, INT_MAX, 9}, m_missing), 0);
    EXPECT_EQ(unbound.figures + bound.figures, 2);
}

// The first strip is a line of 10 points high, 50 to 67, the second reaches the middle, 100. Bounds: 160, 251, 340.
TEST_F(Gauge, StripsOfTheClasses) {
    auto disc = Make<CHimandGraph>();
    const std::string record = Record(disc, File("50"), {100, 50, 400, 150});
    EXPECT_THAT(record, HasSubstr("fill 101,51 298x98 #C8C8C8\n"));
    ExpectInOrder(record, {
                              "fill 101,51 58x15 #0A0000\n",
                              "text \"A\" 126,50 8x17 \"Fixed 13\" #000000\n",
                              "fill 101,68 58x31 #140000\n",
                              "text \"a\" 126,67 8x17 \"Fixed 13\" #000000\n",
                              "text \"b\" 126,84 8x17 \"Fixed 13\" #000000 clip",
                              "fill 161,51 89x15 #0B0000\n",
                              "fill 161,68 89x31 #150000\n",
                              "fill 252,51 87x15 #0C0000\n",
                              "fill 252,68 87x31 #160000\n",
                              "text \"d\" 291,67",
                          });
    EXPECT_EQ(disc.m_rcCanvas, CRect(100, 67, 400, 150));
}

// The disc's band is 105 to 145, its radius 20; figures stand from 115 on.
TEST_F(Gauge, DiscAndItsFigure) {
    auto disc = Make<CHimandGraph>();
    const auto draw = [&](const char* figure) { return Record(disc, File(figure), {100, 50, 400, 150}); };
    EXPECT_THAT(draw("30"), HasSubstr("text \"30 %\" 210,115 40x20 \"Fixed 16\" #000000\n"
                                      "ellipse 190,125 20x20 fill #0B0000\nellipse 190,125 19.5x19.5 stroke #000000"));
    EXPECT_THAT(draw("90"), HasSubstr("ellipse 370,125 20x20 fill #0B0000")) << "between the third bound and MAX";
    EXPECT_THAT(draw("79.5"), HasSubstr("text \"79.5 %\" 340,115 60x20")) << "no room behind it: at the right edge";
    const std::string above = draw("100");
    EXPECT_THAT(above, HasSubstr("text \"100 %\" 350,115 50x20"));
    EXPECT_THAT(above, Not(HasSubstr("ellipse"))) << "off the scale";
    disc.m_nMin = 200; // above MAX: what lies between no bound and MAX is below the scale
    disc.m_nMax = 90;
    const std::string below = draw("85");
    EXPECT_THAT(below, HasSubstr("text \"85 %\" 101,115 40x20"));
    EXPECT_THAT(below, Not(HasSubstr("ellipse")));
}

/// Bars and discs are those of the records above.
TEST_F(Gauge, TellsItsFigure) {
    const std::tuple<const char*, const char*, std::string, bool> cases[] = {
        {"a bar", "50", "C|0:50@100,54 250,86|", false},
        {"on the top of the scale: full", "100", "|0:100@100,54 400,86|", false},
        {"above it", "101", "|0:101@100,54 403,86!|", false},
        {"below it, in the first class", "-5", "A\nB|0:-5@100,54 100,86!|", false},
        {"nothing", "", "A\nB|", true},
    };
    for (const auto& [why, figure, said, missing] : cases) {
        auto bar = Make<CBMIGraph_Eng>();
        Record(bar, File(figure), {100, 50, 400, 90});
        const melkar::Contents shown = melkar::ShownBy(bar);
        ASSERT_THAT(shown.items, SizeIs(1)) << why;
        EXPECT_EQ(shown.items[0].caption + "|" + Figures(shown.items[0]), said) << why;
        EXPECT_EQ(shown.items[0].isMissing, missing) << why;
        EXPECT_EQ(Text(shown.items[0].area), "100,54 400,86") << why;
        EXPECT_THAT(shown.messages, IsEmpty()) << "a gauge has no days";
    }
    auto disc = Make<CHimandGraph>();
    Record(disc, File("30"), {100, 50, 400, 150});
    const melkar::Contents shown = melkar::ShownBy(disc);
    EXPECT_EQ(shown.kind + "|" + shown.items.at(0).caption + "|" + Figures(shown.items[0]),
              "himand|C|0:30 %@170,105 210,145|");
    EXPECT_EQ(shown.series.at(0).color, RGB(11, 0, 0));
    EXPECT_THAT(shown.texts, ElementsAre("A\nB", "a\nb", "C", "c", "D", "d"));
    ASSERT_THAT(shown.marks, SizeIs(2));
    EXPECT_EQ(Text(shown.marks[0]), "C||160,50 161,100");
    EXPECT_EQ(Text(shown.marks[1]), "D||251,50 252,100");
    EXPECT_EQ(shown.marks[1].value, 50.5);
    Record(disc, File("100"), {100, 50, 400, 150});
    EXPECT_EQ(Figures(melkar::ShownBy(disc).items.at(0)), "0:100 %@0,0 0,0|") << "no disc off the scale";
}

} // namespace
