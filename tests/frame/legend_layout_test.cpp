#include <MelkarCommon/frame/legend_layout.h>

#include <gtest/gtest.h>

namespace {

using melkar::LegendSpacing;

TEST(LegendLayout, EntriesToAnEdgeAndFromOne) {
    const CRect size(7, 7, 37, 22); // 30 x 15, wherever it was measured
    const auto to = melkar::LegendEntryTo(100, 5, size, {3, 15});
    EXPECT_EQ(to.text, CRect(70, 5, 100, 20));
    EXPECT_EQ(to.sample, CRect(52, 5, 67, 20));
    const auto from = melkar::LegendEntryFrom(10, 5, size, {5, 60});
    EXPECT_EQ(from.sample, CRect(10, 5, 70, 20));
    EXPECT_EQ(from.text, CRect(75, 5, 105, 20));
    const auto square = melkar::SquareLegendEntry({10, 5}, 8, size);
    EXPECT_EQ(square.sample, CRect(10, 5, 18, 13)) << "one line, however many the text has";
    EXPECT_EQ(square.text, CRect(18, 5, 48, 20));
}

TEST(LegendLayout, EndsOfASampleTruncateEachOnItsOwn) {
    // 70 - 7.5 = 62.5 and 70 - 37.5 = 32.5
    EXPECT_EQ(melkar::LegendSampleOf(CRect(70, 0, 100, 15), LegendSpacing{7.5, 30}), CRect(32, 0, 62, 15));
    EXPECT_EQ(melkar::LegendSampleOf(CRect(7, 0, 9, 15), LegendSpacing{7.5, 1}), CRect(-1, 0, 0, 15));
}

} // namespace
