#include <MelkarCommon/circadian/circle_graph.h>
#include <MelkarCommon/circadian/circle_layout.h>
#include <MelkarCommon/registry/from_file.h>
#include <MelkarCommon/registry/shown_by.h>
#include <MelkarCommon/support/slice_box.h>
#include <frame/contents_text.h>
#include <frame/host_fixture.h>

namespace {

using melkar::ClassFigures;
using melkar::ShowsSlice;

std::string Text(const ClassFigures& figures) {
    std::ostringstream text;
    text << figures.light << " " << figures.moderate << " " << figures.vigorous;
    return text.str();
}

TEST(CircleShares, OfTheClasses) {
    const CStringArray nine = Texts({"1", "2", "4", "8", "16", "32", "64", "128", "256"});
    const std::tuple<const char*, CStringArray, int, int, const char*> cases[] = {
        {"usual bounds", nine, 4, 6, "7 56 448"},
        {"a moderate class of nothing", nine, 5, 4, "15 0 496"},
        {"ends before it begins: likewise", nine, 5, 1, "15 0 496"},
        {"below the first level", nine, INT_MIN, 6, "0 63 448"},
        {"beyond the last one", nine, 4, INT_MAX, "7 504 0"},
        {"all beyond it", nine, INT_MAX, INT_MAX, "511 0 0"},
        {"fewer levels than bounds", Texts({"1", "2"}), 4, 6, "3 0 0"},
        {"no levels", {}, 4, 6, "0 0 0"},
        {"no numbers", Texts({"x", "nan", "inf", "", "1e999", "0.5"}), 1, 6, "0 0.5 0"},
    };
    for (const auto& [why, levels, from, to, minutes] : cases)
        EXPECT_EQ(Text(melkar::MinutesOf(levels, from, to)), minutes) << why;
    EXPECT_EQ(Text(melkar::SharesOf({1, 2, 5})), "12.5 25 62.5");
    EXPECT_EQ(Text(melkar::SharesOf({-1, 2, 1})), "0 100 50") << "a share isn't below 0";
    EXPECT_EQ(Text(melkar::SharesOf({})), "0 0 0");
}

TEST(CircleShares, AddUpToAHundred) {
    constexpr double kThird = 100 / 3.0;
    constexpr double kSixth = 100 / 6.0;
    const std::tuple<const char*, ClassFigures, const char*> cases[] = {
        {"of equals the light one takes it", {kThird, kThird, kThird}, "33.4 33.3 33.3"},
        {"moderate the largest", {kSixth, 4 * kSixth, kSixth}, "16.7 66.6 16.7"},
        {"vigorous the largest", {kSixth, kSixth, 4 * kSixth}, "16.7 16.7 66.6"},
        {"light the largest", {4 * kSixth, kSixth, kSixth}, "66.6 16.7 16.7"},
        {"the two larger ones alike: the first", {0.34, 49.83, 49.83}, "0.3 49.9 49.8"},
        {"nothing stays nothing", {}, "0 0 0"},
    };
    for (const auto& [why, shares, rounded] : cases)
        EXPECT_EQ(Text(melkar::RoundedShares(shares)), rounded) << why;
}

TEST(CircleLayout, Areas) {
    const melkar::CircleAreas below = melkar::LegendBelow({10, 20, 410, 320});
    EXPECT_EQ(below.circle, CRect(120, 50, 300, 230)) << "3/5 of the height";
    EXPECT_EQ(below.legend, CRect(10, 230, 410, 320));
    EXPECT_EQ(melkar::LegendBelow({10, 20, 110, 320}).circle, CRect(31, 80, 89, 138)) << "3/5 of the width - 2";
    const melkar::CircleAreas beside = melkar::LegendBeside({10, 20, 610, 320});
    EXPECT_EQ(beside.circle, CRect(190, 80, 430, 320));
    EXPECT_EQ(beside.legend, CRect(430, 20, 610, 320));
    EXPECT_EQ(melkar::LegendBeside({10, 20, 110, 320}).circle, CRect(610, 220, 710, 320)) << "not beyond the width";
}

// The full circle ends a millionth early: 100 x sin is 99.99..., cut to 99, and half of it 49.
TEST(CircleLayout, Marks) {
    const melkar::CircleMarks quarters = melkar::MarksOf({0, 0, 100, 100}, {2, 1, 1});
    EXPECT_EQ(quarters.top, CPoint(50, 0));
    EXPECT_EQ(quarters.vigorousEnd, CPoint(1, 50)) << "counter-clockwise from twelve o'clock";
    EXPECT_EQ(quarters.moderateEnd, CPoint(50, 99));
    EXPECT_EQ(melkar::MarksOf({0, 0, 100, 100}, {0, 0, 1}).vigorousEnd, CPoint(50, 1));

    EXPECT_FALSE(ShowsSlice({50, 0}, {50, 1}, 0.99));
    EXPECT_TRUE(ShowsSlice({50, 0}, {49, 1}, 0.1)) << "across and down count together";
    EXPECT_TRUE(ShowsSlice({50, 0}, {50, 0}, 1.0)) << "all of the time";
}

// 100 / 17 lines leave one free below and above: (1 + 0.2) x 17 is 20.4, (1 + 1.2) x 17 37.4, then 56.1, 54.4, 73.1.
TEST(CircleLayout, Legend) {
    const melkar::LegendSizes sizes{17, 50, 40, 60};
    const melkar::CircleLegend beside = melkar::LegendOf({5, 230, 405, 330}, sizes, false);
    EXPECT_EQ(beside.light.entry.sample, CRect(13, 293, 30, 310));
    EXPECT_EQ(beside.moderate.entry.sample, CRect(13, 274, 30, 293));
    EXPECT_EQ(beside.vigorous.entry.sample, CRect(13, 257, 30, 276));
    EXPECT_EQ(beside.moderate.entry.text, CRect(30, 274, 80, 293));
    EXPECT_EQ(beside.moderate.percent, CRect(88, 274, 128, 293)) << "80 + 8.5, 80 + 40 + 8.5";
    EXPECT_EQ(beside.moderate.minutes, CRect(143, 274, 203, 293)) << "128 + 15.3";
    const melkar::CircleLegend centred = melkar::LegendOf({5, 230, 405, 330}, sizes, true);
    EXPECT_EQ(centred.light.entry.sample, CRect(114, 293, 131, 310)) << "half of 405 - 203";
    EXPECT_EQ(centred.vigorous.minutes, CRect(244, 257, 304, 276));
    melkar::LegendOf({5, 230, 405, 330}, {0, 0, 0, 0}, true); // a line without height divides nothing
}

class CircleTest : public HostTest {
protected:
    CircleTest()
        : HostTest("[COMMON]\nFONT=Fixed\nTARGETSIZE=15\nNORECORDS_MESSAGE=none\nBASECOLOR_RGB=200,200,200\n"
                   "[OWN]\nTITLELABEL=Active\nTITLESIZE=15\nTITLECOLOR_RGB=0,0,9\nMIN=min\nLIGHTLABEL=low\n"
                   "MODERATELABEL=mid\nVIGOROUSLABEL=high\nLIGHTCOLOR_RGB=1,0,0\nMODERATECOLOR_RGB=2,0,0\n"
                   "VIGOROUSCOLOR_RGB=3,0,0\n") {}

    /// The minutes at the levels 1, 5 and 9. @return the record's lines
    std::vector<std::string> DrawLevels(CStringArray levels) {
        auto graph = Make<CCircleGraph>();
        EXPECT_EQ(graph.SetData(&levels), 0);
        return LinesOf(Record(graph, "", {0, 0, 600, 400}));
    }

    static CStringArray Classes(const char* light, const char* moderate, const char* vigorous) {
        return Texts({light, "", "", "", moderate, "", "", "", vigorous});
    }
};

TEST_F(CircleTest, SlicesOfWhatThereIs) {
    const std::tuple<const char*, CStringArray, std::size_t, const char*> cases[] = {
        // how many, the last one's colour
        {"three", Classes("2", "1", "1"), 3, "fill #020000"},
        {"one is the whole disc", Classes("", "", "5"), 1, "fill #030000"},
        {"no light time: no disc of it over the others", Classes("", "1", "1"), 2, "fill #020000"},
        {"a thousandth: its neighbours meet", Classes("1000", "1", "1000"), 2, "fill #030000"},
        {"less than a hundredth of a minute", Classes("0.004", "0.003", "0.002"), 0, ""},
    };
    for (const auto& [why, levels, count, last] : cases) {
        auto slices = DrawLevels(levels);
        std::erase_if(slices, [](const std::string& line) { return line.find(" fill") == std::string::npos; });
        ASSERT_EQ(slices.size(), count) << why;
        EXPECT_THAT(slices.empty() ? "" : slices.back(), HasSubstr(last)) << why;
    }
    EXPECT_THAT(m_files.Read("log/graph.log"), HasSubstr("CircleGraph S=50.000000 M=25.000000 V=25.000000"));
    // 600 x 400: a circle of 240 at (180, 40); 240 x sin is 239.99..., cut, halved to 119
    EXPECT_THAT(m_files.Read("log/graph.log"), HasSubstr("CircleGraph 0(300,40) SM(300,279), MV(181,160)"));
}

// Characters of 12 x 25 in a legend from (0, 280) to (600, 400), no line of it free: rows from 370, 343 and 318 on.
// Squares from 12 to 37, labels to 97, shares of 84 to 193, minutes of 108 to 323; all moves right by 138. Of 300
// minutes the shares are 8.67, 4.37 and 86.97: rounded they make 100.1, which the largest gives back.
TEST_F(CircleTest, LegendShowsSharesAndMinutes) {
    const auto lines = DrawLevels(Classes("26", "13.1", "260.9"));
    EXPECT_THAT(LinesWith(lines, "fill 150,"),
                ElementsAre("fill 150,370 25x25 #010000", "fill 150,343 25x27 #020000", "fill 150,318 25x27 #030000"));
    EXPECT_EQ(TextsAt(lines, 175), " low@370| mid@343| high@318");
    EXPECT_EQ(TextsAt(lines, 247), "  8.7 %@370|  4.4 %@343| 86.9 %@318");
    EXPECT_EQ(TextsAt(lines, 353), " 26.0 min@370| 13.1 min@343|260.9 min@318");
    EXPECT_EQ(TextsAt(DrawLevels({}), 247), "  0.0 %@370|  0.0 %@343|  0.0 %@318") << "nothing makes no hundred";
}

TEST(SliceBox, RoundASlice) {
    const CRect pie(100, 200, 200, 240); // its middle at 150, 220
    const CPoint right(200, 220), top(150, 200), left(100, 220), bottom(150, 240);
    const std::tuple<const char*, CPoint, CPoint, CRect> cases[] = {
        {"a quarter", right, top, {150, 200, 200, 220}},
        {"the other three", top, right, {100, 200, 200, 240}},
        {"a half whose ends are no utmost points", {160, 216}, {140, 224}, {100, 200, 185, 234}}, // 45 degrees
        {"over the seam of the angles", {140, 216}, {140, 224}, {100, 206, 150, 234}},
        {"one direction: all of it", top, {150, 190}, pie},
    };
    for (const auto& [why, from, to, box] : cases)
        EXPECT_EQ(melkar::SliceBox(pie, from, to), box) << why;
    EXPECT_EQ(melkar::SliceBox(pie, left, bottom), CRect(100, 220, 150, 240));
}

// A circle of 240 at (180, 40), vigorous time from twelve to nine o'clock, moderate to six: the rim is cut to 181 and
// 279, which moves the ends of a slice by less than a pixel.
TEST_F(CircleTest, TellsItsSlices) {
    auto graph = Make<melkar::SeparateCircleFromFile>();
    Record(graph, "2\n\n\n\n1\n\n\n\n1\n", {0, 0, 600, 400});
    EXPECT_EQ(melkar::ShownBy(graph).kind, "circle-separate");
    auto below = Make<melkar::CircleFromFile>();
    Record(below, "2\n\n\n\n1\n\n\n\n1\n", {0, 0, 600, 400});
    const melkar::Contents shown = melkar::ShownBy(below);
    EXPECT_EQ(shown.kind + "|" + shown.title, "circle|Active");
    ASSERT_THAT(shown.items, SizeIs(3));
    EXPECT_EQ(shown.items[0].caption + shown.items[0].text + Figures(shown.items[0]),
              "low  2.0 min0: 50.0 %@300,40 420,280|");
    EXPECT_EQ(shown.items[1].text + Figures(shown.items[1]), "  1.0 min1: 25.0 %@180,160 300,280|");
    EXPECT_EQ(shown.items[2].text + Figures(shown.items[2]), "  1.0 min2: 25.0 %@180,40 300,160|");
    EXPECT_EQ(shown.series.at(2).name, "high");
    Record(below, "2000\n\n\n\n1\n", {0, 0, 600, 400});
    EXPECT_EQ(Figures(melkar::ShownBy(below).items.at(1)), "1:  0.0 %@0,0 0,0|") << "too thin to be painted";
}

TEST_F(CircleTest, PieLeavesBlackAndTheLegendNothing) {
    auto graph = Make<CCircleGraph>();
    CStringArray levels = Classes("2", "1", "1");
    graph.SetData(&levels);
    Record(graph, "", {0, 0, 600, 400});
    EXPECT_EQ(LeftBy([&] { graph.DrawCircle(); }), "opaque 0 green");
    EXPECT_EQ(LeftBy([&] { graph.DrawSecExs(); }), "opaque red green");
}

} // namespace
