#include <MelkarCommon/quadrant/quadrant_layout.h>

#include <gtest/gtest.h>

#include <climits>

namespace {

using melkar::QuadrantScale;

TEST(QuadrantLayout, SideOfTheSquare) {
    constexpr CRect graph(0, 0, 500, 400);
    const struct Case {
        const char* why;
        melkar::SquareRoom room;
        int side;
    } cases[] = {
        {"300 below the title, 60 too low: three lines less", {graph, {73, 100}, 5, 20, 100}, 240},
        {"one more unit: four lines less", {graph, {73, 101}, 5, 20, 100}, 220},
        {"it fits", {graph, {73, 40}, 5, 20, 100}, 300},
        {"73 + 300 is 173 too wide: nine lines less", {graph, {73, 40}, 5, 20, 300}, 120},
        {"a line without height: as large as fits", {graph, {73, 100}, 5, 0, 100}, 300},
        {"no room", {{0, 0, 50, 40}, {73, 100}, 5, 20, 100}, 0},
        {"beyond all bounds", {{INT_MIN, INT_MIN, INT_MAX, INT_MAX}, {INT_MAX, INT_MAX}, 5, INT_MAX, INT_MAX}, 0},
    };
    for (const Case& c : cases)
        EXPECT_EQ(melkar::SquareSide(c.room), c.side) << c.why;
}

TEST(QuadrantLayout, WhereValuesStand) {
    const struct Case {
        const char* why;
        QuadrantScale scale;
        int value, offset, dividing;
    } cases[] = {
        {"a fraction is cut", {0, 70, 50}, 20, 85, 214},
        {"a scale that begins below 0", {-10, 50, -10}, 20, 150, 0},
        {"upside down", {50, 0, 20}, 20, 180, 180},
        {"no range: in the middle", {7, 7, 7}, 7, 0, 150},
        {"the whole range of an int", {INT_MIN, INT_MAX, INT_MAX}, INT_MAX, 300, 300},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.scale.Offset(c.value, 300), c.offset) << c.why;
        EXPECT_EQ(c.scale.DividingOffset(300), c.dividing) << c.why;
    }
    EXPECT_EQ(melkar::CenteredOn({20, 30}, {0, 0, 9, 15}), CRect(16, 23, 25, 38));
    EXPECT_EQ(melkar::ShareBox({0, 0, 790, 600}, {100, 50, 400, 350}, 17), CRect(410, 309, 751, 350));
}

TEST(QuadrantLayout, SharesAddUp) {
    const struct Case {
        const char* why;
        melkar::QuadrantCounts counts;
        std::array<const char*, 4> texts;
    } cases[] = {
        {"the first of equals takes what is missing", {1, 1, 1, 0}, {"33.4% ", "33.3% ", "33.3% ", "0.0% "}},
        {"the largest gives up what is too much", {1, 1, 1, 5}, {"12.5% ", "12.5% ", "12.5% ", "62.5% "}},
        {"6.25 is 6.2, three of it: the largest gets 81.4", {1, 1, 1, 13}, {"6.2% ", "6.2% ", "6.2% ", "81.4% "}},
        {"all in one", {0, 0, 7, 0}, {"0.0% ", "0.0% ", "100.0% ", "0.0% "}},
        {"nothing counted", {0, 0, 0, 0}, {"", "", "", ""}},
        {"less than nothing", {-5, 1, 1, 1}, {"", "", "", ""}},
        {"a sum beyond an int", {INT_MAX, INT_MAX, INT_MAX, INT_MAX}, {"25.0% ", "25.0% ", "25.0% ", "25.0% "}},
    };
    for (const Case& c : cases) {
        const auto texts = melkar::ShareTexts(c.counts);
        for (std::size_t i = 0; i < texts.size(); ++i)
            EXPECT_EQ(texts[i], c.texts[i]) << c.why << ", cell " << i;
    }
}

} // namespace
