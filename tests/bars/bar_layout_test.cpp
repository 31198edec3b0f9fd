#include <MelkarCommon/bars/bar_layout.h>

#include <gtest/gtest.h>

namespace {

TEST(BarLayout, BarsAndSlots) {
    const struct Case {
        const char* why;
        int left, right, day, days;
        int slot, barLeft, barRight;
    } cases[] = {
        {"divisions truncate each by itself", 173, 1073, 3, 7, 558, 590, 654},
        {"the slot behind the last day ends the canvas", 173, 1073, 7, 7, 1073, 1105, 1169},
        {"narrower than two pixels a day", 0, 13, 6, 7, 11, 11, 11},
        {"a canvas whose right lies left of its left", 50, 40, 1, 2, 45, 44, 42},
        {"a product beyond an int", 0, 1 << 24, 1000, 2000, 8388608, 8390705, 8394899},
    };
    for (const Case& c : cases) {
        const CRect canvas(c.left, 0, c.right, 100);
        const melkar::BarSpan bar = melkar::BarOf(canvas, c.day, c.days);
        EXPECT_EQ(melkar::SlotLeft(canvas, c.day, c.days), c.slot) << c.why;
        EXPECT_EQ(bar.left, c.barLeft) << c.why;
        EXPECT_EQ(bar.right, c.barRight) << c.why;
    }
}

} // namespace
