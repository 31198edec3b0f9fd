#include <MelkarCommon/platform/tests/record_of.h>

#include <MelkarCommon/support/marks.h>
#include <MelkarCommon/support/marks_layout.h>
#include <MelkarCommon/support/support.h>

#include <climits>
#include <cmath>
#include <numbers>

namespace {

constexpr double kSixthOfPi = std::numbers::pi / 6;

// The fill is followed by the outline, corner by corner.
TEST(Marks, TriangleAndDiamond) {
    EXPECT_EQ(RecordOf([](HDC dc) {
                  DrawTriangle(dc, {10, 20, 31, 50}, 0x0000FF, 0xFF0000, 2);
              }),
              "polygon 10,50 31,50 20,20 fill #FF0000\n"
              "line 10,50 31,50 #0000FF w2\nline 31,50 20,20 #0000FF w2\nline 20,20 10,50 #0000FF w2\n");
    EXPECT_EQ(RecordOf([](HDC dc) {
                  DrawDiamond(dc, {10, 20, 31, 51}, 0x0000FF, 0xFF0000, 1);
              }),
              "polygon 10,35 20,51 31,35 20,20 fill #FF0000\n"
              "line 10,35 20,51 #0000FF w1\nline 20,51 31,35 #0000FF w1\nline 31,35 20,20 #0000FF w1\n"
              "line 20,20 10,35 #0000FF w1\n");
    EXPECT_EQ(melkar::TriangleIn({-5, 0, 2, 9})[2], CPoint(-1, 0)) << "halves are cut towards 0";
    EXPECT_EQ(melkar::DiamondIn({INT_MAX, INT_MAX, INT_MAX, INT_MAX})[0], CPoint(INT_MAX, INT_MAX));
}

/// Along (0.6, 0.8), 100 long. A barb of 20 reaches 17.3 along and 10 across; the base of the head at the end is 17
/// from it, so that barb ends 83 along: (49.8, 66.4) plus or minus (8, 6).
TEST(Marks, ArrowHeads) {
    const std::string shaft = "line 100,100 160,180 #000000 w1\n";
    const std::string atFrom = "line 100,100 118,107 #000000 w1\nline 100,100 102,119 #000000 w1\n";
    const std::string atTo = "line 160,180 141,172 #000000 w1\nline 160,180 157,160 #000000 w1\n";
    const auto arrow = [](int headAtTo, int headAtFrom) {
        return RecordOf([&](HDC dc) { DrawArrow(dc, {100, 100}, {160, 180}, kSixthOfPi, 20, headAtTo, headAtFrom); });
    };
    EXPECT_EQ(arrow(0, 0), shaft);
    EXPECT_EQ(arrow(1, 0), shaft + atTo);
    EXPECT_EQ(arrow(0, 1), shaft + atFrom);
    EXPECT_EQ(arrow(1, 1), shaft + atFrom + atTo);
    const melkar::ArrowAxis flat({200, 50}, {100, 50});
    EXPECT_EQ(flat.BarbAtTo(kSixthOfPi, 20).x, 200 - 83) << "17 from the end, not 17.3";
    EXPECT_EQ(flat.BarbAtFrom(kSixthOfPi, 20).x, 200 - 17);
}

TEST(Marks, ArrowsThatPointNowhere) {
    const melkar::ArrowAxis nowhere({7, 9}, {7, 9});
    for (const POINT& point : {nowhere.End(), nowhere.BarbAtFrom(1, 20), nowhere.BarbAtTo(1, 20)})
        EXPECT_EQ(CPoint(point), CPoint(7, 9));
    for (const double nonsense : {double{NAN}, double{INFINITY}, -1e308})
        RecordOf([&](HDC dc) {
            DrawArrow(dc, {INT_MIN, INT_MIN}, {INT_MAX, INT_MAX}, nonsense, nonsense, 1, 1);
            DrawArrow(nullptr, {0, 0}, {1, 1}, kSixthOfPi, nonsense, 1, 1);
        });
}

TEST(Rectangles, RefusedOnesMakeNoPen) {
    EXPECT_EQ(RecordOf([](HDC surface) {
                  for (const RECT refused : {RECT{5, 5, 5, 9}, RECT{5, 5, 9, 5}, RECT{-9, 0, -1, 5}, RECT{0, -1, 5, 5}})
                      EXPECT_EQ(DrawRectangle(surface, refused, 0, 0, 1), -1);
              }),
              "");
}

} // namespace
