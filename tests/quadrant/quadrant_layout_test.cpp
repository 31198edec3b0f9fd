#include <MelkarCommon/quadrant/quadrant_layout.h>

#include <gtest/gtest.h>

#include <climits>

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

} // namespace
