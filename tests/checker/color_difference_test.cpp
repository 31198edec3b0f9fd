#include <MelkarCommon/checker/color_difference.h>

#include <MelkarCommon/platform/types.h>

#include <gtest/gtest.h>

namespace {

using melkar::Sight;

TEST(ColorDifference, Contrast) {
    // Luminances by hand: white 1, black 0, red 0.2126, grey 118 ((118/255 + 0.055) / 1.055)^2.4 = 0.1812.
    EXPECT_NEAR(melkar::ContrastOf(RGB(255, 255, 255), RGB(0, 0, 0)), 21, 1e-9);
    EXPECT_NEAR(melkar::ContrastOf(RGB(255, 0, 0), RGB(255, 255, 255)), 1.05 / 0.2626, 1e-9);
    EXPECT_NEAR(melkar::ContrastOf(RGB(118, 118, 118), RGB(255, 255, 255)), 1.05 / 0.2312, 2e-3);
    EXPECT_EQ(melkar::ContrastOf(RGB(1, 2, 3), RGB(1, 2, 3)), 1);
}

TEST(ColorDifference, AsSomebodySeesThem) {
    const struct {
        const char* why;
        COLORREF a, b;
        Sight sight;
        double distance, tolerance;
    } cases[] = {
        {"black to white is L* 100", RGB(0, 0, 0), RGB(255, 255, 255), Sight::Usual, 100, 0.05},
        {"sRGB red is L*a*b* 53.24, 80.09, 67.20: its chroma to a grey as light", RGB(255, 0, 0), RGB(127, 127, 127),
         Sight::Usual, 104.55, 0.1},
        // Columns of the published matrices as light, through XYZ to L*a*b* by hand; from black it is the length.
        {"red without red cones: light 0.152286, 0.114503, 0; L*a*b* 40.29, -3.67, 47.47", RGB(255, 0, 0), RGB(0, 0, 0),
         Sight::Protanopia, 62.37, 0.05},
        {"without green cones: 0.367322, 0.280085, 0; 59.74, -5.42, 63.84", RGB(255, 0, 0), RGB(0, 0, 0),
         Sight::Deuteranopia, 87.60, 0.05},
        {"blue without blue cones: 0, 0.147602, 0.303900; 42.38, -9.75, -30.40", RGB(0, 0, 255), RGB(0, 0, 0),
         Sight::Tritanopia, 53.06, 0.05},
        {"greys stay greys: each row of the matrices is 1 in all", RGB(90, 90, 90), RGB(200, 200, 200),
         Sight::Protanopia, 42.4, 0.5},
        {"in grey only lightness counts", RGB(255, 0, 0), RGB(127, 127, 127), Sight::Grey, 0.2, 0.3},
    };
    for (const auto& one : cases)
        EXPECT_NEAR(melkar::DistanceOf(one.a, one.b, one.sight), one.distance, one.tolerance) << one.why;
}

} // namespace
