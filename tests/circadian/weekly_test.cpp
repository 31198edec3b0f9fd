#include <MelkarCommon/circadian/weekly_circadian.h>
#include <MelkarCommon/circadian/weekly_file.h>
#include <MelkarCommon/circadian/weekly_layout.h>
#include <frame/host_fixture.h>

#include <limits>
#include <regex>

namespace {

TEST(WeeklyFile, Weekday) {
    const std::tuple<const char*, const char*, int> cases[] = {
        {"a Monday", "20260302", 1},
        {"a Sunday", "20260301", 7},
        {"a leap day, a Saturday", "20200229", 6},
        {"the day is the last two characters", "20260399902", 1},
        {"no such day", "20260229", 0},
        {"no date", "Monday", 0},
        {"nothing", "", 0},
    };
    for (const auto& [why, date, weekday] : cases)
        EXPECT_EQ(melkar::WeekdayOf(date), weekday) << why;
}

// Area 10 to 80: seven rows of 10, three of 23.3.
TEST(WeeklyLayout, Rows) {
    const CRect area(5, 10, 25, 80);
    const auto tops = [&](int firstDay, int rows) {
        std::string text;
        for (int day = 1; day <= 7; ++day) {
            const CRect row = melkar::ScreenRow(area, day, firstDay, rows);
            text.append(std::to_string(row.top)).append("-").append(std::to_string(row.bottom)).append(" ");
        }
        return text;
    };
    EXPECT_EQ(tops(1, 7), "10-20 20-30 30-40 40-50 50-60 60-70 70-80 ");
    EXPECT_EQ(tops(3, 7), "10-10 10-10 10-20 20-30 30-40 40-50 50-60 ") << "from a Wednesday";
    EXPECT_EQ(tops(6, 1), "10-10 10-10 10-10 10-10 10-10 10-80 80-80 ") << "one row: the first date";
    EXPECT_EQ(tops(1, 3), "10-33 33-56 56-80 80-80 80-80 80-80 80-80 ");
    constexpr int kMost = std::numeric_limits<int>::max();
    EXPECT_EQ(melkar::ScreenRow({0, -kMost, 9, kMost}, 1, 1, 1).bottom, kMost) << "beyond an int in between";
    EXPECT_EQ(melkar::PrintRow({0, 10, 9, 30}, 7), CRect(0, 27, 9, 30)) << "20 x 6 / 7 is cut";
}

TEST(WeeklyLayout, DaysOnAPage) {
    const auto days = [](int page, int firstDay, long count) {
        std::string text;
        for (int day = 1; day <= 7; ++day)
            text += melkar::IsOnPage(day, page, firstDay, count) ? static_cast<char>('0' + day) : '.';
        return text;
    };
    EXPECT_EQ(days(0, 1, 7), "1234567");
    EXPECT_EQ(days(0, 4, 4), "...4567") << "whatever the count";
    EXPECT_EQ(days(0, 7, 7), "......7");
    EXPECT_EQ(days(1, 4, 3), "12.....") << "the line that ends the count isn't drawn";
    EXPECT_EQ(days(1, 1, 1), "1......");
    EXPECT_EQ(days(1, 1, 0), "1......");
    EXPECT_EQ(days(2, 4, 7), "123456.");
    EXPECT_EQ(days(1, 4, 210), "123456.") << "a file that can't be opened counts like one";
    EXPECT_EQ(days(-1, 1, 210), "1......");
    EXPECT_EQ(days(-1, 2, 210), ".......");
}

/// Writes down what it hands to its graphs.
class Week : public CWeeklyCircadian {
public:
    using CWeeklyCircadian::CWeeklyCircadian;

    long SetDayData(int day, double from, double to, CString date, int status, int steps, int actCal, int totalCal,
                    double time, CStringArray* events, CStringArray* levels, double* intensity, int toroken,
                    float exercise) override {
        weekdays += std::to_string(day);
        std::ostringstream text;
        text << from << "-" << to << " " << date.GetString() << " " << status << " " << steps << " " << actCal << " "
             << totalCal << " " << time << " " << toroken << " " << exercise << " |";
        for (int i = 0; i < levels->GetSize(); ++i)
            text << (*levels)[i].GetString() << ",";
        text << "|";
        for (int i = 0; i < events->GetSize(); ++i)
            text << (*events)[i].GetString() << ",";
        text << "|";
        for (int i = 0; i < 720; ++i)
            if (intensity[i] != 0)
                text << i << ":" << intensity[i] << " ";
        lastDay = text.str();
        CWeeklyCircadian::SetDayData(day, from, to, date, status, steps, actCal, totalCal, time, events, levels,
                                     intensity, toroken, exercise);
        events->Add("not the next day's");
        return 0;
    }

    std::string weekdays; ///< a digit for each line
    std::string lastDay;
};

class WeeklyTest : public HostTest {
protected:
    WeeklyTest() { WriteProfile("0"); }

    void WriteProfile(const std::string& language) {
        m_files.Write("conf/graph.cnf",
                      "[COMMON]\nLANG=" + language + "\nFONT=Fixed\nBASECOLOR_RGB=200,200,200\n[OWN]\n");
    }
};

TEST_F(WeeklyTest, ScreenColumns) {
    auto week = Make<Week>();
    const std::string line =
        Row(786, "1=20260304 15=-1 23=30 54=0630 57= 64=9.0 65=9.01 66=-0.1 67=0.25 68=nan 783=8.5 785=2.5", "#");
    std::string file = DataFile("skipped\n20260304,second\nskipped\n" + line);
    EXPECT_EQ(week.ReadDataFile(file.data()), 0);
    EXPECT_EQ(week.m_nFirstDay, 3);
    EXPECT_EQ(week.m_strHeaderField1, "second");
    EXPECT_EQ(week.weekdays, "3");
    // 8 units of a fifteenth of a minute; the events as they stand
    EXPECT_EQ(week.lastDay,
              "4-6 20260304 0 5 11 12 0.533333 784 2.5 |0,1.067,1.133,1.200,1.267,1.333,1.400,1.467,2.000,|"
              "0630,55,56,,58,59,60,61,62,63,|0:9 3:0.25 719:8.5 ");
    EXPECT_THAT(m_files.Read("log/graph.log"), HasSubstr("CWeeklyCircadian::ReadDataFile"));

    WriteProfile("2");
    auto other = Make<Week>();
    EXPECT_EQ(other.ReadDataFile(DataFile("\n20260304\n\n0,short").data()), 0);
    EXPECT_EQ(other.lastDay, "3.2-6.8 short 0 0 0 0 0 0 0 |0.000,0.000,0.000,0.000,0.000,0.000,0.000,0.000,0.000,|"
                             ",,,,,,,,,,|");
}

TEST_F(WeeklyTest, PrintColumns) {
    auto week = Make<Week>();
    const std::string line = Row(786, "0=20260304 5=-3 6=-0.5 7=12.50 8=45 13=x 14= 24=9.0 25=1.5 743=7 785=1e99", "#");
    EXPECT_EQ(week.ReadWeekDataFile(DataFile("skipped\n20260304,second,2,3.5,6.5\n" + line).data(), 0), 3);
    EXPECT_EQ(week.m_strHeaderField1, "second");
    EXPECT_EQ(week.lastDay, "3.5-6.5 20260304 1 2 3 4 3 744 3.40282e+38 |0,-0.5,12.50,45,9,10,11,12,x,|"
                            ",15,16,17,18,19,20,21,22,23,|0:9 1:1.5 719:7 ");
    EXPECT_EQ(week.ReadWeekDataFile(DataFile("\n20260304,,,0,\n\nshort").data(), 0), 4);
    EXPECT_EQ(week.lastDay, "4-6 short 0 0 0 0 0 0 0 |,,,,,,,,,|,,,,,,,,,,|");
    EXPECT_EQ(week.ReadWeekDataFile(DataFile("\n20260304,,,0,7\nshort").data(), 0), 3);
    EXPECT_THAT(week.lastDay, HasSubstr("4-7 short"));
}

TEST_F(WeeklyTest, ScreenFileEndsWithTheSunday) {
    const std::string days = "0,a\n0,b\n0,c\n";
    const std::tuple<const char*, std::string, std::string, int> cases[] = {
        {"a line behind Sunday isn't read", "\n20260307\n\n" + days, "67", 6},
        {"fewer than a week", "\n20260302\n\n" + days, "123", 1},
        {"an empty line is a day", "\n20260302\n\n\n\n", "12", 1},
        {"no days", "\n20260304\n", "", 3},
        {"no date: the graphs are left alone", "\nnone\n\n" + days, "", 5},
        {"no header", "", "", 5},
        {"4999 characters are one line", "\n20260302\n\n" + std::string(4998, '1') + "\n", "1", 1},
        {"what is behind them is another", "\n20260302\n\n" + std::string(4999, '1') + "\n", "12", 1},
    };
    for (const auto& [why, content, weekdays, firstDay] : cases) {
        auto week = Make<Week>();
        week.m_nFirstDay = 5;
        EXPECT_EQ(week.ReadDataFile(DataFile(content).data()), 0) << why;
        EXPECT_EQ(week.weekdays, weekdays) << why;
        EXPECT_EQ(week.m_nFirstDay, firstDay) << why;
    }
    auto week = Make<Week>();
    EXPECT_EQ(week.ReadDataFile(m_missing), 210);
    EXPECT_EQ(week.ReadWeekDataFile(m_missing, 0), 210);
    EXPECT_EQ(week.m_nFirstDay, 1);
    EXPECT_THAT(m_files.Read("log/graph.log"), HasSubstr("CODE = [210]"));
}

/// A line for each digit: the status of its day; 8 stands for a week's eighth line.
std::string PrintFile(const std::string& firstDate, const std::string& statuses) {
    std::string content = "head\n" + firstDate + ",,,4,6\n";
    for (const char status : statuses)
        content.append(status == '8' ? "" : "20260302,").append(status == '8' ? 0 : 1, status).append("\n");
    return content;
}

TEST_F(WeeklyTest, PagesAndTheirCounters) {
    constexpr char kMonday[] = "20260302";
    constexpr char kWednesday[] = "20260304";
    const std::tuple<const char*, const char*, const char*, int, long, const char*> cases[] = {
        {"seven days", kMonday, "0142222", 0, 7, "1234567"},
        {"none of them has data", kMonday, "2323232", 0, -1, "1234567"},
        {"nor the days from a Wednesday on", kWednesday, "23232", 0, -1, "34567"},
        {"one has", kWednesday, "23132", 0, 7, "34567"},
        {"no lines", kWednesday, "", 0, -1, ""},
        {"the eighth line ends a page", kMonday, "00000008", 0, -1, "12345678"},
        {"the line behind it is dropped", kMonday, "0000000800", 0, -1, "12345678"},
        {"second page", kWednesday, "000008000", 1, 3, "345678123"},
        {"counted from its Monday", kWednesday, "0000080222", 1, 4, "3456781234"},
        {"no data on it", kWednesday, "000008232", 1, -1, "345678123"},
        {"the first page has none", kMonday, "222222280", 1, 1, "123456781"},
        {"third page of two: where the file ends", kMonday, "0000000800", 2, 2, "1234567812"},
        {"pages below 0", kMonday, "0000000", -1, -1, ""},
        {"no date", "20261301", "0000000", 0, -1, ""},
    };
    for (const auto& [why, firstDate, statuses, page, result, weekdays] : cases) {
        auto week = Make<Week>();
        EXPECT_EQ(week.ReadWeekDataFile(DataFile(PrintFile(firstDate, statuses)).data(), page), result) << why;
        EXPECT_EQ(week.weekdays, weekdays) << why;
    }
    auto week = Make<Week>();
    EXPECT_EQ(week.ReadWeekDataFile(DataFile(PrintFile(kMonday, "") + std::string(5118, '1') + "\n").data(), 0), 1);
    EXPECT_EQ(week.ReadWeekDataFile(DataFile(PrintFile(kMonday, "") + std::string(5119, '1') + "\n").data(), 0), 2);
}

/// Fills of whole rows, as "top+height", white ones with a "w" before them.
std::string Rows(HDC record, int width) {
    const std::regex fill("fill 0,(\\d+) " + std::to_string(width) + "x(\\d+) #(FFFFFF|C8C8C8)\n");
    const std::string text = GetRecording(record);
    std::string rows;
    for (std::sregex_iterator row(text.begin(), text.end(), fill), end; row != end; ++row)
        rows.append((*row)[3] == "FFFFFF" ? "w" : "").append((*row)[1]).append("+").append((*row)[2]).append(" ");
    return rows;
}

TEST_F(WeeklyTest, DrawsTheRowsOfItsDays) {
    auto week = Make<Week>();
    for (CCircadianGraph& day : week.m_Day)
        day.SetDirectOutput(1);
    std::string file = DataFile("\n20260306\n\n0,20260306\n0,20260307\n");
    EXPECT_EQ(week.Draw({0, 0, 900, 705}, file.data()), 0);
    EXPECT_EQ(Rows(m_record, 900), "0+100 100+101 201+101 ") << "the day behind the last line is drawn, too";
    EXPECT_THAT(GetRecording(m_record), HasSubstr("text \"03/06/2026\" 0,1 ")) << "each graph has its day";
    EXPECT_THAT(GetRecording(m_record), HasSubstr("text \"03/07/2026\" 0,101 "));
    week.m_nRows = 0;
    EXPECT_EQ(week.Draw({0, 3, 700, 5}, file.data()), 0);
    EXPECT_EQ(week.m_nRows, 1);
    EXPECT_EQ(Rows(m_record, 700), "3+2 ");
    week.m_nRows = 7;
    week.Draw({0, 0, 600, 4}, file.data());
    EXPECT_EQ(Rows(m_record, 600), "0+1 ") << "rows of no height are left out";
    EXPECT_EQ(week.Draw({0, 0, 500, 70}, m_missing), 0);
    EXPECT_EQ(Rows(m_record, 500), "0+10 10+10 20+10 ");
}

TEST_F(WeeklyTest, PrintsWeekdaysInTheirPlaces) {
    auto week = Make<Week>();
    for (CCircadianGraph& day : week.m_Day)
        day.SetDirectOutput(1);
    std::string file = DataFile(PrintFile("20260305", "0444"));
    EXPECT_EQ(week.DrawWeek({0, 0, 900, 705}, file.data(), 0), 0);
    EXPECT_EQ(Rows(m_record, 900), "w0+100 w100+101 w201+101 302+100 402+101 503+101 604+101 ");
    EXPECT_EQ(week.DrawWeek({0, 0, 800, 70}, file.data(), -1), -1);
    EXPECT_EQ(Rows(m_record, 800), "") << "nothing to print, nothing painted";
    EXPECT_EQ(week.DrawWeek({0, 0, 700, 70}, m_missing, 3), 0);
    EXPECT_EQ(Rows(m_record, 700), "0+10 10+10 20+10 30+10 40+10 50+10 w60+10 ");
}

TEST_F(WeeklyTest, GraphsTakeSurfacesAndCopyToTheRow) {
    HDC first = CreateRecordingSurface(900, 700);
    HDC second = CreateRecordingSurface(900, 700);
    auto week = Make<Week>();
    EXPECT_EQ(week.GetGMemDC(), nullptr);
    week.Initialize(nullptr, first, first, second, nullptr);
    week.Initialize(nullptr, first, nullptr, nullptr, second);
    EXPECT_EQ(week.GetGMemDC(), first);
    EXPECT_EQ(week.GetGMemDCCir(), second);
    EXPECT_EQ(week.GetGMemDCBalloon(), second);
    std::string file = DataFile("\n20260307\n\n0,20260307\n0,20260308\n");
    week.Draw({10, 0, 910, 700}, file.data());
    EXPECT_THAT(GetRecording(first), HasSubstr("copy 10,100 900x100"));
    EXPECT_EQ(GetRecording(second), "");
    week.Show2Dialog(1);
    week.Draw({10, 0, 910, 700}, file.data());
    EXPECT_THAT(GetRecording(second), HasSubstr("copy 10,0 900x100"));
    DeleteDC(first);
    DeleteDC(second);
}

} // namespace
