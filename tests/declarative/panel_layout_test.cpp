#include <MelkarCommon/declarative/panel_layout.h>
#include <MelkarCommon/declarative/pie_layout.h>
#include <MelkarCommon/declarative/plot_layout.h>
#include <MelkarCommon/support/figure_format.h>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <sstream>

using namespace melkar;

namespace {

constexpr CRect kGraph(60, 50, 340, 251); // 280 x 201

TEST(PanelLayout, RatesStayWithinTheAxis) {
    const std::tuple<const char*, float, float, float, float> cases[] = {
        {"inside", 30, 20, 40, 0.5F},       {"below", 19, 20, 40, 0},
        {"above", 41, 20, 40, 1},           {"an axis that runs down", 30, 40, 20, 0.5F},
        {"no range: above", 21, 20, 20, 1}, {"no range: on it", 20, 20, 20, 0},
        {"no range: below", 19, 20, 20, 0}, {"no number", NAN, 20, 40, 0},
    };
    for (const auto& [why, value, min, max, rate] : cases)
        EXPECT_EQ(RateOf(value, min, max), rate) << why;
}

TEST(PanelLayout, ScalesReachHalfAStepBeyondTheAxis) {
    const double step = DivisionsOf(kGraph.Height(), 4).step; // 50.25, half of it 25.125
    const ScaleBoxes left = LeftScaleBoxes(kGraph, step, {5, 30, 12});
    EXPECT_EQ(left.figures, CRect(25, 24, 55, 276)) << "50 - 25.125 and 251 + 25.125, both truncated";
    const ScaleBoxes below = BottomScaleBoxes(kGraph, DivisionsOf(kGraph.Width(), 4).step, {5, 0, 12});
    EXPECT_EQ(below.caption, CRect(25, 256, 375, 268)) << "without figures the caption takes their place";
    EXPECT_EQ(BandUpwards(left.figures, step, 4), CRect(25, 24, 55, 75)) << "276 - 251.25 and 276 - 201";
}

TEST(PanelLayout, NoMoreDivisionsThanPixels) {
    const std::tuple<const char*, int, int, int> cases[] = {
        {"as many as pixels", 200, 200, 1},
        {"one more", 201, 200, 2},
        {"none", 0, 200, 1},
        {"no more than any surface has", INT_MAX, 1 << 24, 65539},
        {"no pixels", 5, 0, 5},
        {"fewer than none", -3, 200, 1},
    };
    for (const auto& [why, count, extent, stride] : cases)
        EXPECT_EQ(StrideOf(count, extent), stride) << why;
    EXPECT_EQ(DivisionsOf(200, 0).step, 200) << "a scale without divisions has one";
}

TEST(PanelLayout, NotesAndCaptionsStandOnWholeUnits) {
    EXPECT_EQ(NoteRow(CRect(10, 20, 110, 120), 3, 2), CRect(10, 86, 110, 119)) << "one unit stays free at the bottom";
    // 12 wide and 252 high; a text of 41 x 20: 13 + (12 - 20) / 2 and 276 - (252 - 41) / 2.
    EXPECT_EQ(UpwardCaptionAt(CRect(13, 24, 25, 276), 41, 20), CPoint(9, 171));
}

TEST(PlotLayout, JoinsRunFromRimToRim) {
    const std::tuple<const char*, CPoint, CPoint, int, int, CPoint, CPoint> cases[] = {
        {"to the right", {100, 50}, {200, 50}, 10, 10, {105, 50}, {195, 50}},
        {"to the left", {200, 50}, {100, 50}, 10, 20, {195, 50}, {110, 50}},
        {"upwards on a slope of 3 to 4", {0, 100}, {75, 0}, 10, 10, {3, 96}, {72, 4}},
        {"an odd size is halved downwards", {100, 50}, {200, 50}, 11, 1, {105, 50}, {200, 50}},
        {"circles that overlap", {100, 50}, {104, 50}, 10, 10, {105, 50}, {99, 50}},
    };
    for (const auto& [why, from, to, fromSize, toSize, start, end] : cases) {
        const auto join = JoinOf(from, fromSize, to, toSize);
        ASSERT_TRUE(join) << why;
        EXPECT_EQ(join->from, start) << why;
        EXPECT_EQ(join->to, end) << why;
    }
    EXPECT_FALSE(JoinOf({5, 5}, 10, {5, 5}, 10)) << "no direction";
}

// Singles lie 2^-16 (0.0000153) apart from 128 to 256, a quarter of that from 32 to 64.
TEST(PlotLayout, PointsAreCutToPixels) {
    EXPECT_EQ(PlotAt(kGraph, 0.25F, 0.5F), CPoint(130, 150)) << "251 - 100.5";
    EXPECT_EQ(PlotAt({60, 100, 340, 300}, 0.7F, 0.3F), CPoint(256, 240)) << "0.69999999 x 280 rounds to 196";
}

TEST(PieLayout, SlicesRunFromTheLastToTheFirst) {
    const auto shown = [](std::vector<double> values, double least) {
        std::string text;
        for (const PieSlice& slice : PieSlicesOf(values, least))
            text += std::to_string(slice.index) + ":" + std::to_string(std::lround(slice.from * 180 / 3.1415926535)) +
                    "-" + std::to_string(std::lround(slice.to * 180 / 3.1415926535)) + " ";
        return text;
    };
    EXPECT_EQ(shown({1, 2, 1}, 0), "2:0-90 1:90-270 0:270-360 ");
    EXPECT_EQ(shown({1, 99}, 0.05), "1:0-356 ") << "the share left out stays in the sum";
    EXPECT_EQ(shown({1, 0, 3}, 0.25), "2:0-270 0:270-360 ") << "exactly the least share; a value of 0";
    EXPECT_EQ(shown({0, 0}, 0), "") << "no sum";
    EXPECT_EQ(shown({}, 0), "");
    EXPECT_EQ(shown({-1, 3}, 0), "1:0-540 ") << "a negative value lowers the sum";
    EXPECT_EQ(shown({INFINITY, 1}, 0), "");
}

// A pie of 100 pixels: the rim lies 50 from (50, 50), cut to whole units; 1 of 1440 is a quarter of a degree.
TEST(PieLayout, SlicesOfOneDirectionShowNothing) {
    const std::tuple<const char*, std::vector<double>, const char*> cases[] = {
        // the radials of the slices that show
        {"at 12 o'clock: (50, 1) to (50, 0)", {1, 39, 1400}, "2:50,0>58,1 1:58,1>50,1 "},
        {"at 6 o'clock: (50, 100) to (50, 99)", {719, 1, 720}, "2:50,0>50,100 0:50,99>50,0 "},
        {"at 9 o'clock: (0, 50) to (1, 50)", {1079, 1, 360}, "2:50,0>0,50 0:1,50>50,0 "},
        {"thin, but of two directions", {45, 1, 314}, "2:50,0>85,16 1:85,16>85,15 0:85,15>50,0 "},
        {"halves have two", {1, 1}, "1:50,0>50,100 0:50,100>50,0 "},
        {"the whole sum", {5}, "0:50,0>50,0 "},
        {"all of it but a sliver", {1439, 1}, "0:50,1>50,0 "},
    };
    const PieSquare pie = PieSquareOf(CRect(0, 0, 100, 100));
    for (const auto& [why, values, radials] : cases) {
        std::ostringstream shown;
        for (const PieSlice& slice : PieSlicesOf(values, 0))
            if (const auto ends = PieRadialsOf(pie, slice))
                shown << slice.index << ":" << ends->from.x << "," << ends->from.y << ">" << ends->to.x << ","
                      << ends->to.y << " ";
        EXPECT_EQ(shown.str(), radials) << why;
    }
    // 2 x sin and cos of 152 degrees are 0.94 and -1.76: from (2, 0) to (2, 3)
    EXPECT_TRUE(PieRadialsOf(PieSquareOf(CRect(0, 0, 4, 4)), {0, 0, 2.65})) << "straight up and straight down";
}

TEST(PieLayout, LabelsStandHalfWayOutInTheLargestSquare) {
    EXPECT_EQ(PieSquareOf(CRect(10, 20, 210, 121)).box, CRect(60, 20, 160, 121)) << "half of 101 is 50 to either side";
    const PieSquare pie = PieSquareOf(CRect(0, -50, 100, 150));
    EXPECT_EQ(PieRimAt(pie, 0), CPoint(50, 0));
    EXPECT_EQ(PieRimAt(pie, 3.1415926535 / 2), CPoint(0, 50)) << "counter-clockwise: to the left";
    EXPECT_EQ(PieLabelBox({0, 50}, pie.Middle(), pie.radius, 8), CRect(9, 42, 41, 58));
}

TEST(FigureFormat, TakesOneConversionOfADoubleAndNothingElse) {
    for (const char* format : {"%.0f", "%5.1f kcal", "100%% of %g", "%-+ #08.3e", "%lf", "%99.30G"})
        EXPECT_TRUE(IsFigureFormat(format)) << format;
    for (const char* format : {"", "kg", "%d", "%s", "%n", "%*f", "%.*f", "%f %f", "%Lf", "%100f", "%.31f", "%1$f", "%",
                               "%f%", "%99999999999f", "%hf", "%c"})
        EXPECT_FALSE(IsFigureFormat(format)) << format;
    EXPECT_EQ(FigureFormat("%.1f kg", "%g").Of(71.25), "71.2 kg");
    EXPECT_EQ(FigureFormat("", "%g").Of(71), "") << "an empty format shows nothing";
    EXPECT_EQ(FigureFormat("%s", "%g").Of(71.5), "71.5") << "the default stands in";
}

} // namespace
