#include "doubt_places.h"

#include <MelkarCommon/checker/doubts.h>
#include <MelkarCommon/platform/tests/temp_workdir.h>
#include <MelkarCommon/registry/catalogue.h>
#include <MelkarCommon/registry/data_reference.h>
#include <MelkarCommon/registry/key_reference.h>

#include <gmock/gmock.h>

#include <set>
#include <string>
#include <vector>

namespace {

using melkar::Doubt;
using testing::HasSubstr;

/// A file of a kind, drawn with its starting profile.
struct Mistake {
    const char* what;
    const char* kind;
    std::string_view file;
    const char* places; ///< of all doubts
    const char* says;   ///< in one of them
};

using namespace std::string_view_literals;

/// A day of 744 columns.
const std::string kLateEvent = "h\n20260302\n20260303,0" + std::string(13, ',') + "2561" + std::string(729, ',') + "\n";

const Mistake kMistakes[] = {
    {"a decimal comma", "bar", "h\nh\n0,a,128,5\n", "3:3 decimal-comma", "\"128,5\": a decimal comma?"},
    {"of the only column", "pie", "312,5\n", "1:1 decimal-comma", "\"312,5\""},
    {"a note behind the figures", "bar", "h\nh\n0,a,128,x\n", "3:0 more-columns", "4 columns; of this kind of file 3"},
    {"a column more than decimals", "bar", "h\nh\n0,a,128,5,1\n", "3:0 more-columns", ""},
    {"too few columns", "bar", "h\nh\n0,a\n", "3:0 columns", "2 columns; this kind takes 3"},
    {"n/a", "bar", "h\nh\n0,a,n/a\n", "3:3 number", "not a number: \"n/a\""},
    {"a figure above the scale", "bar", "h\nh\n0,a,14001\n0,b,14000\n", "3:3 off-scale", "from 0 to 14000: \"14001\""},
    {"one below it", "line", "h\nh\n0,a,1,69\n0,b,1,\n", "3:4 off-scale", "the line is off its scale from 70 to 76"},
    {"above the top of the file", "steps", "h\n,,,,,,,500,,1\n0,a,,,501\n0,b,,,500\n", "3:5 off-scale", "to 500"},
    {"a day that never was", "week-print", "h\n20260230\n", "2:1 date", "20260230"},
    {"a leap year", "week-print", "h\n20240229\n", "", ""},
    {"dates that go back", "week-print", "h\n20260302\n20260303,1\n20260302,1\n", "4:1 date-order",
     "after \"20260303\""},
    {"a date twice", "week-print", "h\n20260302\n20260303,1\n20260303,1\n", "4:1 date-order", ""},
    {"an event at 25:61", "week-print", kLateEvent, "3:15 time", "2561"},
    {"a status beyond 4", "bar", "h\nh\n5,a,1\n", "3:1 status-beyond", "\"5\""},
    {"a status in words", "bar", "h\nh\nok,a,1\n", "3:1 status", "not the status of a day"},
    {"no head rows", "bar", "0,a,1\n0,b,2\n", "2:0 head", "figures in a head row"},
    {"semicolons", "bar", "h\nh\n0;a;1\n0;b;x\n", "3:0 separator", "between semicolons"},
    {"tabs", "bar", "h\nh\n0\ta\t1\n", "3:0 separator", "between tabs"},
    {"JSON", "bar", "\n {\"day\": 1}", "0:0 not-rows", "JSON"},
    {"a spreadsheet", "bar", "PK\x03\x04\x14\0"sv, "0:0 not-rows", "save it as CSV"},
    {"UTF-16", "bar", "h\0\n\0"sv, "0:0 bytes", "UTF-16"},
    {"signs that no code page has", "bar", "h\nh\n0,\x81,1\n", "3:0 encoding", "of the CHARSET of the profile"},
    {"what CHARSET 0 reads", "bar", "h\nh\n0,M\xE4rz,1\n", "", ""},
    {"a value without a colour", "pie", "1\n2\n3\n4\n", "4:0 no-color", "has 3 colours"},
    {"a colour in words", "plot", "h\n1,70,5,red,0\n", "2:4 color", "#RRGGBB"},
    {"a size below 0", "plot", "h\n1,70,-5,#000000,0\n", "2:3 range", "the size can be"},
    {"another kind's file", "circle", "1\n2\n", "2:0 rows", "ends behind 2 rows"},
    {"no file", "bar", "", "", ""},
};

class DataDoubts : public testing::Test {
protected:
    std::vector<Doubt> Of(const char* kind, std::string_view file, const melkar::DataFileUse& more = {}) const {
        m_files.Write("conf/graph.cnf", melkar::StarterProfile(kind, "OWN"));
        melkar::DataFileUse use = more;
        use.kind = kind;
        use.section = "OWN";
        return melkar::DataDoubts(m_files.Write("bin/data.csv", file), use);
    }

    TempWorkdir m_files;
};

TEST_F(DataDoubts, TellMistakes) {
    for (const Mistake& mistake : kMistakes) {
        const std::vector<Doubt> doubts = Of(mistake.kind, mistake.file);
        EXPECT_EQ(PlacesOf(doubts), mistake.places) << mistake.what;
        std::string texts;
        for (const Doubt& doubt : doubts)
            texts += doubt.text + "\n";
        EXPECT_THAT(texts, HasSubstr(mistake.says)) << mistake.what;
    }
}

TEST_F(DataDoubts, DependOnWhatTheHostDecides) {
    melkar::DataFileUse use;
    use.series = 2;
    EXPECT_EQ(PlacesOf(Of("bar", "h\nh\n0,a,8000,6001\n0,b,8000,6000\n", use)), "3:3 off-scale") << "a stack of both";
    use.page = 2;
    const std::string day = "20260302,1\n\n";
    EXPECT_EQ(PlacesOf(Of("week-print", "h\n20260302\n" + day, use)), "0:0 no-page");
    use.page = 1;
    EXPECT_EQ(PlacesOf(Of("week-print", "h\n20260302\n" + day + "20260309,1\n", use)), "") << "the second week";
    EXPECT_EQ(PlacesOf(melkar::DataDoubts("none.csv", {"bar", "", "", 0, 0})), "0:0 unreadable");
    EXPECT_EQ(PlacesOf(melkar::DataDoubts("none.csv", {"bra", "", "", 0, 0})), "0:0 no-kind");
    m_files.Write("bin/a.csv", "h\nh\n0,M\xE4rz,999999\n");
    EXPECT_EQ(PlacesOf(melkar::DataDoubts("a.csv", {"bar", "", "", 0, 0})), "3:0 encoding") << "no scale is known";
}

TEST_F(DataDoubts, AreNoneAboutExamples) {
    for (const melkar::KindRow& row : melkar::Catalogue())
        for (const melkar::DataTable& table : melkar::FilesReadBy(row))
            if (*row.kind && !table.columns.empty()) {
                m_files.Write("bin/data.csv.sim", melkar::ExampleFile(melkar::FilesReadBy(row).back()));
                const std::string example = melkar::ExampleFile(melkar::FilesReadBy(row).front());
                EXPECT_EQ(PlacesOf(Of(row.kind, example)), "") << row.kind;
            }
}

} // namespace
