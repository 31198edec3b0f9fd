#include "imported.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <sstream>
#include <tuple>

namespace melkar::importer {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::size_t kIntensity = 64; // columns of the screen's file
constexpr std::size_t kLevels = 15;
constexpr std::size_t kTime = 8;

std::vector<std::string> FieldsOf(const std::string& line) {
    std::vector<std::string> fields(1);
    for (const char letter : line)
        if (letter == ',')
            fields.emplace_back();
        else
            fields.back() += letter;
    return fields;
}

/// Fields of each row behind the head rows.
std::vector<std::vector<std::string>> DaysOf(const Imported& made, int heads) {
    std::istringstream lines(made.file);
    std::vector<std::vector<std::string>> days;
    for (std::string line; std::getline(lines, line);)
        if (--heads < 0)
            days.push_back(FieldsOf(line));
    return days;
}

/// Epochs from midnight on, so many seconds each.
std::string Epochs(int seconds, const std::vector<const char*>& levels) {
    std::string text = "time,level\n";
    int at = 0;
    for (const char* level : levels) {
        char time[64];
        std::snprintf(time, sizeof time, "2026-03-04 00:%02d:%02d,", at / 60, at % 60);
        text += std::string(time) + level + "\n";
        at += seconds;
    }
    return text;
}

Request Week() {
    Request request;
    request.kind = "week";
    return request;
}

TEST(ImportEpochs, ACellShowsTheLevelOfMostOfItsTime) {
    const std::tuple<const char*, int, std::vector<const char*>, std::vector<std::string>, std::vector<std::string>>
        cases[] = {
            // first cells, then counts at the levels 1 to 9, of which 15 make a minute
            {"of two the higher",
             60,
             {"2", "6", "0", "0"},
             {"6", "0"},
             {"0", "15", "0", "0", "0", "15", "0", "0", "0"}},
            {"a burst doesn't make a run",
             30,
             {"1", "1", "1", "9"},
             {"1"},
             {"22.5", "0", "0", "0", "0", "0", "0", "0", "7.5"}},
            {"fractions of one level", 40, {"3.6", "4.4", "1"}, {"4"}, {"10", "0", "0", "20", "0", "0", "0", "0", "0"}},
            {"a tenth stays", 60, {"2.3", "2.2"}, {"2.3"}, {"0", "30", "0", "0", "0", "0", "0", "0", "0"}},
            {"rest is no level", 60, {"0.4", "0.4"}, {"0.4"}, {"0", "0", "0", "0", "0", "0", "0", "0", "0"}},
        };
    for (const auto& [why, seconds, levels, cells, counts] : cases) {
        const Imported made = Import("epochs", Epochs(seconds, levels), Week());
        const auto days = DaysOf(made, 3);
        ASSERT_EQ(days.size(), 1U) << why << '\n' << made.said;
        const auto& day = days[0];
        EXPECT_EQ(day.size(), 786U) << why;
        for (std::size_t i = 0; i < cells.size(); ++i)
            EXPECT_EQ(day[kIntensity + i], cells[i]) << why;
        EXPECT_EQ(std::vector<std::string>(&day[kLevels], &day[kLevels + 9]), counts) << why;
    }
}

TEST(ImportEpochs, TellsWhatTheSheetCant) {
    const std::string text =
        "time,level,n\n2026-03-07 23:56:00,4,10\n2026-03-07 23:57:00,5,20\n2026-03-07 23:57:00,9,99\n"
        "2026-03-07 23:58:00,12,30\n2026-03-09 00:00:00,1,40\n";
    Request request = Week();
    request.figures = {"steps=n"};
    const Imported made = Import("epochs", text, request);
    const auto days = DaysOf(made, 3);
    ASSERT_EQ(days.size(), 3U) << made.said;
    EXPECT_EQ(days[0][5], "60") << "steps of an epoch that stands twice count once";
    EXPECT_EQ(days[0][kTime], "30") << "two minutes at level 4 and above";
    EXPECT_EQ(days[0][785], "-1") << "no exercise amount";
    EXPECT_EQ(days[1][0], "4") << "a day without epochs";
    for (const char* said :
         {"in:4: skipped: not behind the epoch before it: 20260307 23:57", "in:5: skipped: a level beyond 0 to 9: 12",
          "in:3: filled: 20260307 from 00:00 to 23:56 has no epochs", "in:3: filled: 20260307 from 23:58 to 24:00",
          "in:6: filled: 20260308 is missing: status 4", "ends with 20260308", "epochs of 60 seconds",
          "nobody names a column of activity calories, total calories"})
        EXPECT_THAT(made.said, HasSubstr(said));
    EXPECT_THAT(Import("epochs", "time,level\n2026-03-07 00:00,1\n2026-03-07 00:05,1\n", Week()).said,
                HasSubstr("epochs of 300 seconds"));
    request.kind = "bar";
    EXPECT_THAT(Import("epochs", text, request).said, HasSubstr("melkar import csv"));
}

TEST(ImportEpochs, OtherKindsOfLevels) {
    const std::string text = "t,a\n2026-03-08 00:00,4\n2026-03-08 00:01,4\n2026-03-09 00:00,1\n2026-03-09 00:01,1\n";
    Request request = Week();
    request.kind = "week-print";
    request.date = "t";
    request.figures = {"a"};
    const auto days = DaysOf(Import("epochs", text, request), 2);
    ASSERT_EQ(days.size(), 3U);
    EXPECT_THAT(std::vector<std::string>(&days[0][0], &days[0][14]),
                ElementsAre("20260308", "0", "", "", "", "0", "0", "0", "2", "0", "0", "0", "0", "0"));
    EXPECT_EQ(days[1].size(), 1U) << "an empty row behind Sunday";
    EXPECT_EQ(days[2][24], "1");
    request.kind = "circle";
    EXPECT_EQ(Import("epochs", text, request).file, "2\n0\n0\n2\n0\n0\n0\n0\n0\n");
}

} // namespace
} // namespace melkar::importer
