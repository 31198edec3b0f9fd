#include <MelkarCommon/bars/bar_layout.h>

#include <gtest/gtest.h>

namespace {

TEST(BarLayout, BarsAndSlots) {
    struct Case {
        const char* why;
        int left, right, day, days;
        int slot, barLeft, barRight;
    };
    const Case kCases[] = {
        {"one day", 100, 200, 0, 1, 100, 125, 175},
        {"divisions truncate each by itself", 173, 1073, 3, 7, 558, 590, 654},
        {"the slot behind the last day ends the canvas", 173, 1073, 7, 7, 1073, 1105, 1169},
        {"narrower than two pixels a day", 0, 13, 6, 7, 11, 11, 11},
        {"a canvas whose right lies left of its left", 50, 40, 1, 2, 45, 44, 42},
        {"a product beyond an int", 0, 1 << 24, 1000, 2000, 8388608, 8390705, 8394899},
    };
    for (const Case& c : kCases) {
        const CRect canvas(c.left, 0, c.right, 100);
        const melkar::BarSpan bar = melkar::BarOf(canvas, c.day, c.days);
        EXPECT_EQ(melkar::SlotLeft(canvas, c.day, c.days), c.slot) << c.why;
        EXPECT_EQ(bar.left, c.barLeft) << c.why;
        EXPECT_EQ(bar.right, c.barRight) << c.why;
    }
}

TEST(BarLayout, BarUnderAPoint) {
    CObArray bars; // two days of two series on a canvas that ends at 100
    for (const CRect& bar :
         {CRect(10, 50, 20, 100), CRect(10, 30, 20, 50), CRect(40, 100, 50, 100), CRect(40, 60, 50, 100)})
        bars.Add(bar);
    struct Case {
        const char* why;
        int x, y, bar;
    };
    const Case kCases[] = {
        {"gap on the left", 9, 99, -1},   {"left edge", 10, 99, 0},
        {"right edge counts", 20, 99, 0}, {"behind it", 21, 99, -1},
        {"top edge counts", 15, 50, 0},   {"the series above", 15, 49, 1},
        {"its top", 15, 30, 1},           {"above the stack", 15, 29, -1},
        {"on the bottom", 15, 100, -1},   {"a bar of no height lets through", 45, 99, 3},
        {"right of all", 51, 99, -1},     {"between the days", 30, 99, -1},
    };
    for (const Case& c : kCases)
        EXPECT_EQ(melkar::BarAt(bars, c.x, c.y, 100), c.bar) << c.why;
    EXPECT_EQ(melkar::BarAt(CObArray(), 10, 10, 100), -1);
}

TEST(BarLayout, TurnedTexts) {
    const melkar::TurnedExtent level = melkar::ExtentOf(120, 20, 0);
    EXPECT_EQ(level.across, 120);
    EXPECT_EQ(level.down, 20);
    const melkar::TurnedExtent upright = melkar::ExtentOf(120, 20, 900);
    EXPECT_NEAR(upright.across, 20, 0.001);
    EXPECT_NEAR(upright.down, 120, 0.001);
    EXPECT_NEAR(melkar::ExtentOf(120, 20, 300).down, 20 * 0.8660254 + 60, 0.001);
}

} // namespace
