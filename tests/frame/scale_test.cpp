#include <MelkarCommon/frame/scale.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

using melkar::ScalePixels;

TEST(ScaleTest, WhereFiguresStand) {
    // Stacked and line figures stand from the bottom, single bars from 0.
    const std::tuple<const char*, ScalePixels, double, int, int> cases[] = {
        {"a fraction of a pixel is cut towards the bottom", {{0, 1000}, 100, 400}, 999.9, 101, 101},
        {"exactly the top", {{0, 1000}, 100, 400}, 1000, 100, 100},
        {"above the top, beyond an int", {{0, 1000}, 100, 400}, 1e308, 100, 100},
        {"below a raised scale", {{500, 1000}, 100, 400}, 400, 400, 400},
        {"no number", {{0, 1000}, 100, 400}, NAN, 400, 400},
        {"the bottom of a raised scale has a height from 0", {{500, 1000}, 100, 400}, 500, 400, 250},
        {"negative on a scale that begins below 0", {{-100, 1000}, 100, 400}, -50, 387, 415},
        {"far below 0: off any surface, but an int", {{-2147483648.0, 1}, 100, 400}, -2e9, 380, 1 << 24},
        {"no range: its one value", {{10, 10}, 100, 400}, 10, 400, 100},
        {"a top of 0", {{0, 0}, 100, 400}, 0, 400, 400},
    };
    for (const auto& [why, scale, value, fromBottom, fromZero] : cases) {
        EXPECT_EQ(melkar::FigureY(scale, value), fromBottom) << why;
        EXPECT_EQ(melkar::FigureFromZeroY(scale, value), fromZero) << why;
    }
}

/// Scale line, target and average round each in its own way.
TEST(ScaleTest, WhereLinesStand) {
    const std::tuple<const char*, ScalePixels, double, int, int, int> cases[] = {
        {"a fraction puts the target a pixel higher", {{0, 1000}, 125, 425}, 334, 325, 324, 325},
        {"the average is cut before it is scaled", {{0, 1000}, 125, 425}, 503.9, 274, 273, 275},
        {"no range", {{7, 7}, 125, 425}, 7, 425, 425, 425},
        {"the whole range of an int", {{-2147483648.0, 2147483647.0}, 0, 32000}, 2147483647.0, 0, 0, 0},
    };
    for (const auto& [why, scale, value, line, target, average] : cases) {
        EXPECT_EQ(melkar::ScaleLineY(scale, value), line) << why;
        EXPECT_EQ(melkar::TargetY(scale, value), target) << why;
        EXPECT_EQ(melkar::AverageY(scale, value), average) << why;
    }
    const int line = melkar::ScaleLineY({{0, 1e308}, -453, -53}, 5e307);
    EXPECT_TRUE(line >= -453 && line <= -53) << "a product beyond a double must not leave the canvas";
    const melkar::Scale ten{0, 10};
    EXPECT_TRUE(ten.Holds(0) && ten.Holds(10));
    EXPECT_FALSE(ten.Holds(10.5) || ten.Holds(NAN));
}

TEST(ScaleTest, Walk) {
    const std::tuple<const char*, double, double, double, int, double> cases[] = {
        {"the interval divides the range", 0, 1000, 200, 6, 1000},
        {"no range", 5, 5, 10, 1, 5},
        {"upside down", 10, 0, 1, 0, 9},
        {"a line on each pixel row", 0, 300, 1, 301, 300},
        // 2e9 lines x 20 pixels on 300 rows: each 133,333,334th at most; the next round number is 200 million.
        {"bounded by the pixels", 0, 2e9, 1, 11, 2e9},
    };
    for (const auto& [why, min, max, interval, count, last] : cases) {
        const melkar::ScaleWalk walk = melkar::WalkScale({{min, max, interval}, 100, 400}, 20);
        EXPECT_EQ(walk.count, count) << why;
        EXPECT_EQ(walk.At(walk.count - 1), last) << why;
    }
    // Of a canvas far higher than any surface no more than 32767 rows count.
    EXPECT_LE(melkar::WalkScale({{0, 2147483647.0, 1}, -(1 << 24), 1 << 24}, 1).count, 32768);
    for (const double interval : {5e-324, 0.0, -1.0, double(NAN)})
        for (const int height : {-5, 0, 300})
            EXPECT_LE(melkar::WalkScale({{-2147483648.0, 2147483647.0, interval}, 100, 100 + height}, 0).count, 302);
}

TEST(ScaleTest, Labels) {
    const std::tuple<const char*, double, const char*> cases[] = {
        {"whole: without decimals", 60, "60"},
        {"a fraction", -2.25, "-2.2"},
        {"whole beyond an int", 3e9, "3000000000"},
        {"a 0 has no sign", -0.0, "0"},
    };
    for (const auto& [why, value, label] : cases)
        EXPECT_EQ(melkar::ScaleLabel(value, 1), label) << why;
}

} // namespace
