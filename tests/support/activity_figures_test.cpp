#include <frame/host_fixture.h>

#include <MelkarCommon/support/activity_figures.h>

#include <tuple>

namespace {

TEST(ActivityFigures, LevelsAndMets) {
    const double mets[] = {-1, 1.8, 2.3, 2.9, 3.6, 4.3, 5.2, 6.1, 7.1, 8.3, -1};
    const int whole[] = {-1, 1, 2, 2, 3, 4, 5, 6, 7, 8, -1};
    for (int level = 0; level <= 10; ++level) {
        EXPECT_EQ(Intensity2MetsDouble(level), mets[level]) << level;
        EXPECT_EQ(Intensity2MetsInt(level), whole[level]) << level;
    }
    const int levels[] = {-1, -1, 2, 4, 5, 6, 7, 8, 9, -1};
    for (int n = 0; n <= 9; ++n) {
        EXPECT_EQ(MetsInt2Intensity(n), levels[n]) << n;
        EXPECT_EQ(MetsDouble2Intensity(n + 0.9), levels[n]) << n;
    }
    EXPECT_EQ(MetsDouble2Intensity(2.0), 2);
    for (const int nonsense : {INT_MIN, INT_MAX})
        EXPECT_EQ(Intensity2MetsInt(nonsense) + MetsInt2Intensity(nonsense), -2);
}

TEST(ActivityFigures, ThreeBands) {
    const auto nine = Texts({"1", "2", "3", "4", "5", "6", "7", "8", "9"});
    const std::tuple<const char*, CStringArray, int, int, double, double, double> cases[] = {
        {"bounds belong to the middle", nine, 3, 5, 3, 12, 30},
        {"no middle", nine, 4, 3, 6, 0, 39},
        {"bounds out of range", nine, -7, 99, 0, 45, 0},
        {"far out of range: all is vigorous", nine, INT_MIN, INT_MIN, 0, 0, 45},
        {"far out of range: all is light", nine, INT_MAX, INT_MAX, 45, 0, 0},
        // 0.3 + 0.3 + 0.4 of 0.9; 0.3 + 0.5 + 0.3 of 1.0; 0.4 + 0.2 + 0.2 of 0.9; 0.1 + 0.1 + 0 of 0.3
        {"the largest gives up what is too much: vigorous", Texts({"0.26", "0.26", "0.36"}), 2, 2, 0.3, 0.3, 0.3},
        {"moderate", Texts({"0.26", "0.46", "0.26"}), 2, 2, 0.3, 0.4, 0.3},
        {"light, and takes what is missing", Texts({"0.44", "0.24", "0.24"}), 2, 2, 0.5, 0.2, 0.2},
        {"of equals the lightest", Texts({"0.14", "0.14", "0.04"}), 2, 2, 0.2, 0.1, 0},
        {"no totals at all", {}, 3, 6, 0, 0, 0},
        {"a tenth entry isn't a level", Texts({"", "", "", "", "", "", "", "", "5", "7"}), 3, 6, 0, 0, 5},
    };
    for (auto [why, totals, p, q, light, moderate, vigorous] : cases) {
        double found[] = {-1, -1, -1};
        CalcLMV(&found[0], &found[1], &found[2], totals, p, q);
        EXPECT_NEAR(found[0], light, 1e-9) << why;
        EXPECT_NEAR(found[1], moderate, 1e-9) << why;
        EXPECT_NEAR(found[2], vigorous, 1e-9) << why;
    }
}

TEST(ActivityFigures, IsThereData) {
    const std::tuple<const char*, CStringArray, int, int> cases[] = {
        {"none", {}, 0, 0},
        {"the third is filled; an empty one isn't \"0\"", Texts({"0", "", "5"}), 1, 2},
        {"all zero", Texts({"0", "0"}), 1, 0},
        {"all empty", Texts({"", ""}), 0, 1},
        {"text, not value", Texts({"0", "00"}), 1, 2},
    };
    for (auto [why, entries, filled, notZero] : cases) {
        EXPECT_EQ(ExistData(&entries), filled) << why;
        EXPECT_EQ(ExistExcludedData(&entries), notZero) << why;
    }
    EXPECT_EQ(ExistData(nullptr) + ExistExcludedData(nullptr), 0);
}

TEST(ActivityFigures, IsThereDataInAFile) {
    const TempWorkdir files;
    const std::string commas(1019, ','); // with "x" before, "3" and a line feed behind it a line of 1022
    const std::tuple<const char*, std::string, int, int> cases[] = {
        {"the third", "h\nh\n3,a\n3,b\n0,c\n", 0, 3},
        {"head lines don't count", "0\n0\n", 0, 0},
        {"all without data", "h\nh\n3\n3", 0, 0},
        {"a blank row has status 0", "h\nh\n\n3\n", 0, 1},
        {"no such field: 0", "h\nh\n3\n", 5, 1},
        {"as long as a line may be", "h\nh\nx" + commas + "3\n", 1019, 0},
        {"longer: its line feed is a row of its own", "h\nh\n,x" + commas + "3\n", 1020, 2},
        {"empty", "", 0, 0},
    };
    for (const auto& [why, content, index, row] : cases)
        EXPECT_EQ(ExistData(files.Write("bin/days.csv", content).c_str(), index), row) << why;
    EXPECT_EQ(ExistData("missing.csv", 0) + ExistData(nullptr, 0), 0);
}

} // namespace
