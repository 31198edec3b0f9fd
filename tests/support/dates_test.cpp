#include <MelkarCommon/platform/tests/temp_workdir.h>

#include <MelkarCommon/platform/datetime.h>
#include <MelkarCommon/platform/desktop.h>
#include <MelkarCommon/platform/values/locales.h>
#include <MelkarCommon/support/dates.h>
#include <MelkarCommon/support/keep_locale.h>
#include <MelkarCommon/support/support.h>

#include <gtest/gtest.h>

#include <clocale>

namespace {

/// Puts the locale of the process back to "C" behind a test that changes it.
struct Dates : testing::Test {
    void TearDown() override { std::setlocale(LC_ALL, "C"); }
    static std::string ProcessLocale() { return std::setlocale(LC_ALL, nullptr); }
};

TEST_F(Dates, Formatting) {
    const char* const cases[][4] = {
        {"with a time behind it", "20081231235959", "%m/%d/%Y", "12/31/2008"},
        {"the day of the week and of the year", "20080229", "%a %j %U", "Fri 060 08"},
        {"too short", "2008", "%Y", "2008"},
        {"no leap year", "20090229", "%Y", "20090229"},
        {"before the first year", "00990101", "%d.%m.", "00990101"},
        {"a format that yields nothing", "20081231", "%Z", ""},
        {"other bytes pass", "20081231", "%Y\xE5\xB9\xB4\xFF", "2008\xE5\xB9\xB4\xFF"},
    };
    for (const auto& [why, date, format, text] : cases)
        for (const char* locale : {"", "C", "no_SUCH"})
            EXPECT_EQ(FormatDate(date, format, locale), text) << why << ", locale " << locale;
}

TEST_F(Dates, LongFormats) {
    const std::string tenThousand(10000, '-');
    EXPECT_EQ(FormatDate("20081231", (tenThousand + "%d").c_str(), ""), (tenThousand + "31").c_str());
    EXPECT_EQ(FormatDate("20081231", "%65536d", "").GetLength(), 65536);
    EXPECT_EQ(FormatDate("20081231", "%65537d", ""), "");
}

TEST_F(Dates, FormatsOfTheProfile) {
    const TempWorkdir work;
    EXPECT_EQ(FormatDateEx("20081231", "D", ""), "12/31/2008") << "no file";
    for (const auto& [format, text] : {std::pair{"%d", "31"}, {"%m", "12"}}) { // each as it stands now
        work.Write("conf/config.cnf", std::string("[SYSTEM]\nD=") + format + "\n");
        EXPECT_EQ(FormatDateEx("20081231", "d", ""), text);
    }
    {
        const melkar::SharedDateFormats sheet;
        EXPECT_EQ(FormatDateEx("20081231", "D", ""), "12");
        work.Write("conf/config.cnf", "[SYSTEM]\nD=%Y\n");
        EXPECT_EQ(FormatDateEx("20081231", "D", ""), "12") << "one state of the file";
        const melkar::HostDirectory elsewhere("/");
        EXPECT_EQ(FormatDateEx("20081231", "D", ""), "12/31/2008") << "another host's";
    }
    EXPECT_EQ(FormatDateEx("20081231", "D", ""), "2008") << "the next sheet";
    const std::string longest(99, '-');
    work.Write("conf/config.cnf", "[SYSTEM]\nD=" + longest + "%d\n");
    EXPECT_EQ(FormatDateEx("20081231", "D", ""), longest.c_str());
    EXPECT_EQ(FormatDateEx("20081231", "None", ""), "12/31/2008") << "no key";
}

TEST_F(Dates, InALocale) {
    for (const char* name : {"ja_JP.UTF-8", "ja_JP"})
        EXPECT_EQ(FormatDate("20081231", "%b%d(%a)", name), "12月31(水)") << name;
    EXPECT_EQ(FormatDate("20081231", "%a", "de_DE@euro"), "Mi");
    EXPECT_EQ(FormatDate("20081231", "%a", ""), "Wed"); // nothing stays behind

    const melkar::ScopedFormatLocale german("de_DE");
    EXPECT_EQ(FormatDate("20081231", "%a", ""), "Mi");
    for (int i = 0; i < 40; ++i) // more than are kept at a time
        FormatDate("20081231", "%a", ("xx_" + std::to_string(i)).c_str());
    EXPECT_EQ(FormatDate("20081231", "%a", ""), "Mi");
}

TEST_F(Dates, DayNames) {
    char name[4];
    EXPECT_EQ(GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_NOUSEROVERRIDE | LOCALE_SABBREVDAYNAME7, name, 4), 4);
    EXPECT_STREQ(name, "Sun");
    EXPECT_EQ(GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SABBREVDAYNAME1, name, 3), 0) << "no room for the NUL";
    EXPECT_EQ(melkar::AbbreviatedDayNames("ja_JP")[0], "月");
}

TEST_F(Dates, ProcessLocaleIsCAfterwards) {
    ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr);
    FormatDate("2008", "%Y", "C");
    EXPECT_EQ(ProcessLocale(), "de_DE.UTF-8"); // too short a date touches nothing
    EXPECT_EQ(FormatDate("20081231", "%a", ""), "Mi") << "without a name: as the process stands";
    EXPECT_EQ(ProcessLocale(), "de_DE.UTF-8");
    {
        const melkar::KeepLocale keep;
        { const melkar::KeepLocale inner; }
        EXPECT_EQ(FormatDate("20081231", "%a", "ja_JP"), "水");
        EXPECT_EQ(ProcessLocale(), "de_DE.UTF-8") << "kept";
    }
    FormatDate("20081231", "%Y", "ja_JP");
    EXPECT_EQ(ProcessLocale(), "C");
}

} // namespace
