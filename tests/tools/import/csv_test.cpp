#include "imported.h"

#include "tools/melkar/import/figures.h"
#include "tools/melkar/import/moments.h"
#include "tools/melkar/import/plan.h"

#include <MelkarCommon/registry/data_check.h>

#include <gmock/gmock.h>

#include <tuple>

namespace melkar::importer {
namespace {

using namespace std::string_literals;
using testing::HasSubstr;

Request Steps() {
    Request request;
    request.kind = "bar";
    request.date = "day";
    request.figures = {"n"};
    request.caption = "MM-DD";
    return request;
}

/// The rows behind the head of two.
std::string RowsOf(const Imported& made) {
    const std::size_t second = made.file.find('\n', made.file.find('\n') + 1);
    return made.file.empty() ? "" : made.file.substr(second + 1);
}

// One row for each way in which programs write the same two days, and for each that must not be guessed.
TEST(ImportCsv, TakesWhatProgramsWrite) {
    const std::string two = "0,03-01,5\n0,03-02,1234.5\n";
    const std::tuple<const char*, std::string, std::string, std::string> cases[] = {
        {"plain", "day,n\n2026-03-01,5\n2026-03-02,1234.5\n", two, "2 days, 20260301 to 20260302, from 2 rows"},
        {"mark of order, CR LF, no end",
         "\xEF\xBB\xBF"
         "day,n\r\n20260301,5\r\n2026/03/02,1234.5",
         two, "2 days"},
        {"semicolons and decimal commas", "day;x;n\n2026-03-01;;5\n2026-03-02;;1.234,5\n", two,
         "in:3: chosen: decimal commas in column \"n\""},
        {"tabs", "n\tday\n5\t2026-03-01\n1234.5\t2026-03-02\n", two, "columns between tabs"},
        {"quoted: commas, breaks and quotes",
         "day,note,n\n2026-03-01,\"a \"\"b\"\",\n\nc\",5\n2026-03-02,,\"1,234.5\"\n", two, "2 rows"},
        {"a unit in brackets", "Day,n (lb)\n2026-03-01,5\n2026-03-02,1234.5\n", two, "2 rows"},
        {"times, out of order", "day,n\n2026-03-02T23:59:59+09:00,1234.5\n2026-03-01 08:15:00.25,5\n", two, "2 rows"},
        {"days of UTC are told", "day,n\n2026-03-01T08:00Z,5\n2026-03-02,1234.5\n", two, "in:2: chosen: times in UTC"},
        {"an hour that isn't", "day,n\n2026-03-01,5\n2026-03-02,1234.5\n2026-03-01 24:30,9\n", two,
         "in:4: skipped: not a date"},
        {"missing in the middle", "day,n\n2026-03-01,5\n2026-03-04,7\n", "0,03-01,5\n4,03-02,\n4,03-03,\n0,03-04,7\n",
         "in:3: filled: 20260302 to 20260303 are missing: status 4"},
        {"a row without a figure", "day,n\n2026-03-01,\n2026-03-02,n/a\n2026-03-03,7\n",
         "2,03-01,\n2,03-02,\n0,03-03,7\n", "in:3: skipped: no figure in column \"n\": \"n/a\""},
        {"a day again: the last row holds", "day,n\n2026-03-01,4\n2026-03-01,5\n2026-03-02,1234.5\n", two,
         "in:2: skipped: figure of 20260301 stands again on line 3"},
        {"a day again, by an earlier time", "day,n\n2026-03-01 09:00,5\n2026-03-01 08:00,4\n2026-03-02,1234.5\n", two,
         "in:3: skipped: figure of 20260301 stands again on line 2"},
        {"a decimal comma without quotes", "day,n\n2026-03-01,128,5\n2026-03-01,5\n2026-03-02,1234.5\n", two,
         "in:2: skipped: 3 columns, and the head has 2: a decimal comma"},
        {"the 30th of February", "day,n\n2026-03-01,5\n2026-02-30,5\n2026-03-02,1234.5\n", two,
         "in:3: skipped: not a date"},
        {"day and month in doubt", "day,n\n01/02/2026,5\n", "", "--date-format DD/MM/YYYY or MM/DD/YYYY"},
        {"one or a thousand", "day;n\n2026-03-01;1.234\n2026-03-02;9.876\n", "",
         "line 2: 1.234 may be one or a thousand"},
        {"the same between commas", "day,n\n2026-03-01,1.234\n", "0,03-01,1.234\n", "1 row"},
        {"both styles", "day;n\n2026-03-01;1,5\n2026-03-02;1.5\n", "", "points (line 3) and decimal commas (line 2)"},
        {"a gap of years", "day,n\n2026-03-01,5\n2036-03-01,5\n", "", "line 3: 3652 days are missing"},
        {"a column that isn't there", "day;steps\n2026-03-01;5\n", "",
         "no column \"n\"; there are: \"day\", \"steps\""},
        {"a name twice", "day,n,n\n", "", "two columns are called \"n\""},
        {"a quote that never closes", "day,n\n2026-03-01,\"5\n2026-03-02,6\n", "", "line 2: a quote that isn't closed"},
        {"UTF-16",
         "\xFF\xFE"
         "d\0a\0"s,
         "", "this is text in UTF-16"},
        {"a NUL", "day,n\n2026-03-01,5\0\n"s, "", "line 2: a NUL"},
        {"a spreadsheet", "PK\x03\x04..", "", "save the sheet as CSV"},
        {"a head alone", "day,n\n", "", "no row could be used"},
        {"nothing", "", "", "there are: none"},
    };
    for (const auto& [why, text, rows, said] : cases) {
        const Imported made = Import("csv", text, Steps());
        EXPECT_EQ(RowsOf(made), rows) << why << '\n' << made.said;
        EXPECT_THAT(made.said, HasSubstr(said)) << why;
    }
}

TEST(ImportCsv, OptionsSayWhatTheFileDoesNot) {
    const std::tuple<const char*, void (*)(Request&), std::string, std::string, std::string> cases[] = {
        {"day first", [](Request& r) { r.dateFormat = "D.M.YY"; }, "day;n\n1.3.26;5\n02.03.26 14:00;6\n",
         "0,03-01,5\n0,03-02,6\n", "2 rows"},
        {"names of months", [](Request& r) { r.dateFormat = "DDD, MMM DD YYYY"; }, "day;n\nSunday, march 1 2026;5\n",
         "0,03-01,5\n", "1 row"},
        {"afternoon", [](Request& r) { r.dateFormat = "MM/DD/YYYY"; },
         "day,n\n3/1/2026 1:00 pm,5\n3/1/2026 12:30 AM,4\n", "0,03-01,5\n", "in:3: skipped"},
        {"no year", [](Request& r) { r.dateFormat = "DD.MM."; }, "day,n\n", "", "--date-format needs"},
        {"a thousand", [](Request& r) { r.decimals = "comma"; }, "day;n\n2026-03-01;1.234\n", "0,03-01,1234\n",
         "1 row"},
        {"sums", [](Request& r) { r.sum = true; }, "day,n\n2026-03-01,0.1\n2026-03-01,0.2\n", "0,03-01,0.3\n",
         "from 2 rows"},
        {"sums without those of weights",
         [](Request& r) {
             r.sum = true;
             r.units = {"kg"};
         },
         "day,n\n2026-03-01,70\n2026-03-01,71\n", "0,03-01,71\n", "in:2: skipped"},
        {"a range is filled to its ends",
         [](Request& r) {
             r.from = "20260301";
             r.to = "2026-03-03";
         },
         "day,n\n2025-01-01,9\n2026-03-02,5\n", "4,03-01,\n0,03-02,5\n4,03-03,\n", "1 of them left out"},
        {"pounds to kilograms", [](Request& r) { r.become = {"kg"}; }, "day,n [lb]\n2026-03-01,154.3\n",
         "0,03-01,69.989\n", "1 row"}, // 154.3 x 0.45359237
        {"joules to calories",
         [](Request& r) {
             r.units = {"KJ"};
             r.become = {"kcal"};
         },
         "day,n\n2026-03-01,8368\n", "0,03-01,2000\n", "1 row"},
        {"below zero where that can't be", [](Request& r) { r.units = {"kg"}; }, "day,n\n2026-03-01,-1\n2026-03-02,5\n",
         "2,03-01,\n0,03-02,5\n", "in:2: skipped: figure below zero"},
        {"steps aren't weights",
         [](Request& r) {
             r.units = {"steps"};
             r.become = {"kg"};
         },
         "day,n\n2026-03-01,1\n", "", "steps can't be converted to kg"},
        {"one calorie, or a thousand",
         [](Request& r) {
             r.units = {"CAL"};
             r.become = {"kJ"};
         },
         "day,n\n", "", "unknown unit: CAL"},
        {"an unknown kind", [](Request& r) { r.kind = "panel"; }, "day,n\n", "", "nothing is imported for this kind"},
        {"a comma in captions", [](Request& r) { r.caption = "D, M"; }, "day,n\n2026-03-01,1\n", "",
         "--caption takes no"},
    };
    for (const auto& [why, change, text, rows, said] : cases) {
        Request request = Steps();
        change(request);
        const Imported made = Import("csv", text, request);
        EXPECT_EQ(RowsOf(made), rows) << why << '\n' << made.said;
        EXPECT_THAT(made.said, HasSubstr(said)) << why;
    }
}

// Weights of the file beside it are carried by nobody, the plan is; what the table of the kind doesn't name isn't
// there; a scale holds all of its figures, whichever was named first.
TEST(ImportCsv, EachKindGetsItsColumns) {
    const std::string text = "day,a,b,c\n2026-03-01,5,70,20\n2026-03-03,7,1080,\n";
    const std::tuple<const char*, std::vector<std::string>, std::string> cases[] = {
        {"bar", {"a", "b"}, "imported\nstatus,day,figure\n0,1/3,5,70\n4,2/3,,\n0,3/3,7,1080\n"},
        {"line", {"a", "b", "line=c"}, "imported\nstatus,day,figure,,line\n0,1/3,5,70,20\n4,2/3,,,\n0,3/3,7,1080,\n"},
        {"steps", {"a"}, "imported\n20260301,20260303,,,,,,1000,,6\n0,1/3,,,5\n4,2/3,,,\n0,3/3,,,7\n"},
        {"expenditure", {"part=a", "b"}, "imported\n20260301,20260303,,,2000,0\n0,1/3,70,5\n4,2/3,,\n0,3/3,1080,7\n"},
        {"activity",
         {"a", "target=c"},
         "imported\n20260301,20260303\n,,6\n0,20260301,20260301,,,,,,,20,,5\n4,20260302,20260302,,,,,,,20,,\n"
         "0,20260303,20260303,,,,,,,20,,7\n"},
        {"plot", {"a"}, "x,y,size,colour,connect\n0,5,12,#264668,0\n2,7,12,#264668,1\n"},
        {"pie", {"a", "b"}, "12\n1150\n"},
        {"bmi", {"a"}, "figure\n7\n"},
    };
    for (const auto& [kind, figures, file] : cases) {
        Request request = Steps();
        request.kind = kind;
        request.figures = figures;
        request.caption = "D/M";
        const Imported made = Import("csv", text, request);
        EXPECT_EQ(made.file, file) << kind << '\n' << made.said;
    }
    Request plan = Steps();
    plan.kind = "simulation";
    EXPECT_THAT(Import("csv", text, plan).said, HasSubstr("needs --figure plan=COLUMN (kg)"));
    plan.kind = "week";
    EXPECT_THAT(Import("csv", text, plan).said, HasSubstr("melkar import epochs"));
}

} // namespace
} // namespace melkar::importer
