#include <MelkarCommon/gauges/gauge_layout.h>

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace {

using melkar::GaugeFigurePlace;

constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

TEST(GaugeLayout, ClassOfAFigure) {
    const std::tuple<const char*, double, double, double, std::vector<double>, int, int> cases[] = {
        {"below the first bound", 18.4, 15, 30, {18.5, 25, 30}, 2, 0},
        {"on a bound: the next class", 18.5, 15, 30, {18.5, 25, 30}, 2, 1},
        {"on the top of the scale", 30, 15, 30, {18.5, 25, 30}, 2, 3},
        {"below the scale, but below a bound as well", 3, 15, 30, {18.5, 25, 30}, 2, 0},
        {"below the scale and no bound above it", 3, 15, 30, {0, 0, 0}, 2, -1},
        {"above the scale, but a bound lies above it", 65, 0, 60, {10, 20, 99}, 0, 2},
        {"between the last bound and the top: the former one", 40, 0, 60, {10, 20, 30}, 1, 1},
        {"bounds in no order: the first above it", 15, 0, 60, {10, 50, 20}, 0, 1},
        {"no number: the former one", kNotANumber, 0, 60, {10, 20, 30}, 2, 2},
    };
    for (const auto& [why, value, min, max, bounds, former, cls] : cases)
        EXPECT_EQ(melkar::ClassOf(value, min, max, bounds, former), cls) << why;
}

TEST(GaugeLayout, WhereFiguresAndBoundsStand) {
    const std::tuple<const char*, double, double, double, int, int> cases[] = {
        {"inside", 15, 45, 22.5, 175, 175},
        {"just below the scale: cut before or behind the left end is added", 15, 45, 14.99, 99, 100},
        {"above it: not clamped", 15, 45, 60, 550, 550},
        {"upside down", 45, 15, 37.5, 175, 175},
        {"no range: no division", 15, 15, 20, 100, 100},
        {"no number", 15, 45, kNotANumber, 100, 100},
        {"beyond all bounds", 15, 45, 1e308, 1 << 24, 1 << 24},
        {"the whole range of an int", -2147483648.0, 2147483647.0, 2147483647.0, 400, 400},
    };
    for (const auto& [why, min, max, value, figure, bound] : cases) {
        const melkar::GaugeScale scale{min, max, 100, 400};
        EXPECT_EQ(scale.FigureX(value), figure) << why;
        EXPECT_EQ(scale.BoundX(value), bound) << why;
    }
}

TEST(GaugeLayout, WhereTheFigureOfABarStands) {
    const CRect band(10, 4, 310, 36);
    EXPECT_EQ(melkar::PlaceGaugeFigure(band, 110, 100), GaugeFigurePlace::InBar) << "exactly as wide as the bar";
    EXPECT_EQ(melkar::PlaceGaugeFigure(band, 110, 101), GaugeFigurePlace::BehindBar);
    EXPECT_EQ(melkar::PlaceGaugeFigure(band, 260, 50), GaugeFigurePlace::CutOff)
        << "exactly as wide as the room behind it";
    EXPECT_EQ(melkar::PlaceGaugeFigure(band, 1 << 24, 50), GaugeFigurePlace::CutOff);
    EXPECT_EQ(melkar::BarBand({0, 0, 300, 39}), CRect(0, 3, 300, 36)) << "3.9 is cut";
    EXPECT_EQ(melkar::DiscBand({0, 11, 300, 110}, {0, 28, 300, 110}), CRect(0, 64, 300, 106)) << "121 / 2, 99 / 20";
}

} // namespace
