#include <MelkarCommon/circadian/circadian_layout.h>

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

using namespace melkar;

// A sheet of 900 x 160 with lines of 19 (labels, figures) and 23 pixels (date): panels 86 pixels high, so that neither
// a level (8.6) nor half of one (4.3) is whole.
constexpr CRect kGraph(100, 50, 1000, 210);
constexpr CRect kLeft(142, 77, 850, 163);
constexpr CRect kRight(880, 77, 960, 163);

TEST(CircadianLayout, ClassBordersLieHalfALevelOutsideOfTheBounds) {
    // 86 x 3.2 / 10 is 27.52, 86 x 6.8 / 10 is 58.48
    const BorderLines lines = BorderLinesOf(kLeft, {3.2, 6.8});
    EXPECT_EQ(lines.lower, 139) << "163 - 27.52 + 4 = 139.48";
    EXPECT_EQ(lines.upper, 100) << "163 - 58.48 - 4 = 100.52";

    const CRect panel(142, 77, 850, 167); // 90 high: half a level is 4.5
    const std::tuple<const char*, int, int, int> cases[] = {
        {"truncated with the half level: 58.5 and 31.5", 0, 109, 136},
        {"truncated without it: 54 + 4 and 36 - 4", 1, 109, 135},
        {"any other language is like 1", 7, 109, 135},
    };
    for (const auto& [why, lang, upper, lower] : cases) {
        const ClassBands bands = ClassBandsOf(kGraph, panel, {4.0, 6.0}, lang);
        EXPECT_EQ(bands.vigorous, CRect(100, 81, 138, upper)) << why;
        EXPECT_EQ(bands.moderate, CRect(100, upper, 138, lower)) << why;
        EXPECT_EQ(bands.light, CRect(100, lower, 138, 163)) << why;
    }
    EXPECT_EQ(ClassLabelStart({100, 81, 138, 108}, 65), CPoint(109, 126)) << "94 + 32: reads upwards around the middle";
}

TEST(CircadianLayout, HoursStandHalfALineBelowThePanel) {
    EXPECT_EQ(HourBox(kLeft, 1), CRect(171, 163, 171, 179)) << "29.5 pixels an hour";
    EXPECT_EQ(HourBox(kLeft, 23).left, 820) << "678.5: not 23 x 29";
    const CRect figure = HourFigureOf({820, 163, 845, 182}); // 25 x 19 once measured
    EXPECT_EQ(figure, CRect(808, 172, 833, 191));
    const Tick tick = HourTickOf(kLeft, figure);
    EXPECT_EQ(tick.x, 820);
    EXPECT_EQ(tick.from, 160) << "a fifth of the figure's height";
    EXPECT_EQ(tick.to, 166);
}

TEST(CircadianLayout, Events) {
    const std::tuple<const char*, const char*, int, const char*> cases[] = {
        {"hours x 100 + minutes", "1230", 750, "12:30"},
        {"end of the day", "2400", 1440, "24:00"},
        {"behind it: told as it stands", "2401", 1441, "2401"},
        {"before it", "-5", -5, "-5"},
        {"empty", "", -1, ""},
        {"nothing", "0", -1, "0"},
        {"null", nullptr, -1, ""},
        {"just after midnight", "5", 5, "00:05"},
        {"no hour has 99 minutes", "1299", 819, "13:39"},
    };
    for (const auto& [why, event, minute, time] : cases) {
        EXPECT_EQ(EventMinute(event).value_or(-1), minute) << why;
        EXPECT_EQ(EventTime(event), time) << why;
    }

    EXPECT_EQ(EventBoxOf(kGraph, kLeft, 1440, 15), CRect(843, 178, 858, 193)) << "centred on the right edge";
    EXPECT_EQ(EventBoxOf(kGraph, kLeft, 0, 15).left, 135) << "overhangs the left edge by half of it";
    EXPECT_EQ(EventBoxOf({100, 50, 1000, 190}, kLeft, 0, 15), CRect(135, 175, 150, 190)) << "up by the excess";
    EXPECT_EQ(EventBoxOf(kGraph, kLeft, 2147483647, 15).left, 1055846261) << "no overflow on the way: 708 x t / 1440";
}

TEST(CircadianLayout, BarsStandLevelWithTheProfile) {
    const std::tuple<const char*, int, double, CRect> cases[] = {
        {"half a level to one and a half, less a pixel at each end: 12.9 and 4.3", 1, 3.2, {880, 152, 886, 158}},
        {"the highest: 81.7 and 73.1", 9, 3.2, {880, 83, 886, 89}},
        {"two pixels a minute, truncated", 9, 39.9, {880, 83, 959, 89}},
        {"40 minutes fill the panel", 9, 40, {880, 83, 960, 89}},
        {"more stay within it", 9, 1e300, {880, 83, 960, 89}},
        {"no figure, no width", 9, std::nan(""), {880, 83, 880, 89}},
    };
    for (const auto& [why, level, minutes, bar] : cases)
        EXPECT_EQ(LevelBarOf(kRight, level, minutes), bar) << why;
    EXPECT_EQ(LevelFigureOf(kRight, 9, 10, 19), CRect(867, 77, 877, 96)) << "163 - 9 - 77.4";

    const CRect bar(880, 152, 886, 158);
    EXPECT_EQ(BarFigureBox(kRight, bar), CRect(889, 155, 960, 158));
    const BarFigure fits = BarFigureOf(kRight, bar, {889, 155, 960, 174});
    EXPECT_EQ(fits.box, CRect(889, 146, 960, 165)) << "up to the panel's right edge; half its height up";
    EXPECT_FALSE(fits.inside);
    const BarFigure wide = BarFigureOf(kRight, bar, {889, 155, 961, 174});
    EXPECT_EQ(wide.box, CRect(880, 146, 886, 165)) << "from the panel's left to the bar's end";
    EXPECT_TRUE(wide.inside);
}

TEST(CircadianLayout, ScaleOfMinutes) {
    EXPECT_EQ(MinuteLines(kRight, 20, 40), std::vector<int>{20}) << "neither 0 nor the end";
    EXPECT_EQ(MinuteLines({960, 0, 880, 9}, 20, 40), std::vector<int>{20}) << "no room between the panels";
    EXPECT_TRUE(MinuteLines(kRight, 0, 40).empty()) << "would never end";
    EXPECT_EQ(MinuteLines(kRight, 1, 2147483647).size(), 80U) << "no more than pixels";
    EXPECT_EQ(MinuteX(kRight, 15, 40), 910);
    EXPECT_EQ(MinuteX(kRight, 15, 0), 880) << "no scale: no division";
    EXPECT_EQ(MinuteFigureOf(kRight, 920, {0, 0, 21, 19}), CRect(910, 166, 931, 185)) << "a fifth of its height below";
}

} // namespace
