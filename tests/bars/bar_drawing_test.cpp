#include "chart_fixture.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class BarDrawing : public ChartTest {
protected:
    static std::string Days(int count) {
        std::string file = "a\nb\n";
        for (int day = 0; day < count; ++day)
            file += "0,d" + std::to_string(day) + ",500\n";
        return file;
    }
    static std::vector<std::string> Brief(std::vector<std::string> lines) {
        for (const CRect& thick : {CRect(100, 62, 160, 0), CRect(173, 275, 1073, 0), CRect(1025, 88, 965, 1),
                                   CRect(173, 324, 398, 1), CRect(848, 324, 1073, 1)}) {
            std::vector<std::string> rows = FourRows(thick.left, thick.right, thick.top);
            for (std::string& row : rows)
                row = "line " + row + (thick.bottom ? " #FF0000 w1 dot 3,3" : " #0000FF w1 dash 18,6");
            const auto at = std::search(lines.begin(), lines.end(), rows.begin(), rows.end());
            if (at == lines.end())
                continue;
            std::ostringstream brief;
            brief << (thick.bottom ? "dot " : "dash ") << thick.left << " to " << thick.right << " at " << thick.top;
            *at = brief.str();
            lines.erase(at + 1, at + 4);
        }
        for (std::string& line : lines)
            for (const std::string_view end : {" \"Fixed 20\" #000000", " #010203 w1"})
                if (line.ends_with(end))
                    line.resize(line.size() - end.size());
        return lines;
    }
    static std::string Joined(const std::vector<std::string>& lines) {
        std::string text;
        for (const std::string& line : lines)
            text += line + "\n";
        return text;
    }
};

/// All steps in their order. Slots of 225, bars of 112: middles at 285, 510, 735 and 960.
TEST_F(BarDrawing, WholeChart) {
    auto graph = Make<CBarGraph>();
    graph.SetPrintTarget(1);
    graph.SetPrintAverage(1);
    graph.m_strAverage = "503.9"; // 503 x 300 / 1000 = 150 above the bottom
    for (const char* target : {"334", "1001", "334", "334"})
        graph.m_saTargets.Add(target); // 425 - 100.2 is cut to 324
    // Texts without their common end, lines without the common pen; a thick line is told by its place and height.
    EXPECT_THAT(
        Brief(DrawRecorded(graph, "a\nb\n0,d1,250\n1,d2,1000\n2,d3,\n0,d4,334\n")),
        ElementsAre(
            "fill 100,50 992x474 #C8C8C8", "text \"Steps\" 102,51 120x50 \"Fixed 40 bold\" #000063",
            "fill 173,125 900x300 #FAFAFA",
            // scale: label ends 5 left of the canvas, its middle on the line
            "text \"0\" 156,413 12x25", "line 173,425 1073,425", "text \"250\" 132,338 36x25", "line 173,350 1073,350",
            "text \"500\" 132,263 36x25", "line 173,275 1073,275", "text \"750\" 132,188 36x25",
            "line 173,200 1073,200", "text \"1000\" 120,113 48x25", "line 173,125 1073,125",
            // bars: only the last has reached its target
            "fill 229,350 112x75 #008000", "fill 454,125 112x300 #008000", "fill 904,325 112x100 #00FF00",
            // frame
            "line 173,125 1073,125", "line 1073,125 1073,425", "line 1073,425 173,425", "line 173,425 173,125",
            // average: its legend in the graph's corner, 100 and 50 from that of the surface
            "dash 100 to 160 at 62", "dash 173 to 1073 at 275", "text \"  mean: 503.9 steps\" 165,50 228x25",
            // target: none on the second day (above the scale) and on the third (no figure)
            "text \"goal\" 1025,76 48x25", "dot 1025 to 965 at 88", "dot 173 to 398 at 324", "dot 848 to 1073 at 324",
            // figures: on the canvas colour above the bar; inside a full bar without it; none on a day without data
            "fill 267,324 36x25 #FAFAFA", "text \"250\" 267,324 36x25", "text \"1000\" 486,126 48x25",
            "fill 942,299 36x25 #FAFAFA", "text \"334\" 942,299 36x25",
            // dates: half a zero's height below the canvas; ticks 0.3 of it up and down
            "text \"d1\" 273,437 24x25", "line 285,432 285,417", "text \"d2\" 498,437 24x25", "line 510,432 510,417",
            "text \"d3\" 723,437 24x25", "line 735,432 735,417", "text \"d4\" 948,437 24x25", "line 960,432 960,417",
            // (125 + 425 + 60) / 2; 524 - 2 x 25
            "text \"steps\" 101,305 60x25 \"Fixed 20\" #000000 angle 900", "text \"Day\" 605,474 36x25"));
}

/// Each series on the one below, from the bottom of the scale; the figure is the sum.
TEST_F(BarDrawing, Stack) {
    WriteProfile("CHARTMIN=200\n");
    struct Stacked : Open<CBarGraph> {
        explicit Stacked(HDC dc) : Open(nullptr, dc, "STEPS", nullptr, nullptr, nullptr) {
            m_nSeriesCount = 2;
            CBarGraph::ReadIniFile(const_cast<char*>("..\\conf\\graph.cnf"));
        }
    } graph(m_record);
    // 160 of 4800 units are 10 of 300 pixels; on the second day the first series lies below the scale.
    const auto lines = DrawRecorded(graph, "a\nb\n0,d,360,240\n4,e,100,1e9\n");
    EXPECT_THAT(
        LinesWith(lines, "fill", "0000"),
        ElementsAre("fill 285,415 225x10 #0A0000", "fill 285,400 225x15 #140000", "fill 735,125 225x300 #140000"));
    EXPECT_THAT(LinesWith(lines, "text \"600\""), ElementsAre("text \"600\" 379,374 36x25 \"Fixed 20\" #000000"));
    EXPECT_THAT(LinesWith(lines, "text \"1000000100\""), SizeIs(1));
}

TEST_F(BarDrawing, Figures) {
    const struct Case {
        const char *why, *day;
        int decimals, transparent;
        const char* text;
        bool onCanvasColor;
    } kCases[] = {
        {"cut without decimals", "0,,234.56", 0, 0, "234", true},
        {"rounded to decimals", "0,,234.56", 1, 0, "234.6", true},
        {"six decimals count", "0,,233.9999999", 0, 0, "234", true},
        {"no room above: inside the bar", "0,,910", 0, 0, "910", false},
        {"an excluded day", "1,,", 0, 0, "0", true},
        {"a day without data has none", "3,,234", 0, 0, "", false},
        {"negative", "0,,-7.9", 0, 0, "-7", true},
        {"beyond an int", "0,,1e308", 0, 0, "2147483647", false},
    };
    for (const Case& c : kCases) {
        auto graph = Make<CBarGraph>();
        graph.m_nDecimals = c.decimals;
        graph.m_bValueTransparent = c.transparent;
        const std::string record = Joined(DrawRecorded(graph, "a\nb\n" + std::string(c.day) + "\n"));
        // Between the end of the frame and the tick stand the background and the figure.
        const std::size_t from = record.find("173,125 #010203 w1\n") + 19;
        const std::string figure = record.substr(from, record.find("line", from) - from);
        EXPECT_EQ(figure.find("text \"" + std::string(c.text) + "\"") != std::string::npos, *c.text != 0) << c.why;
        EXPECT_EQ(figure.starts_with("fill"), c.onCanvasColor) << c.why;
    }
}

TEST_F(BarDrawing, ScaleLines) {
    auto graph = Make<CBarGraph>();
    graph.m_dChartInterval = 2.5;
    graph.m_nChartMin = -5;
    graph.m_nChartMax = 7;
    graph.m_nDecimals = 1;
    graph.m_bCoach = 1;
    const auto lines = DrawRecorded(graph, "a\nb\n0,d,5\n");
    // -5, -2.5, 0, 2.5, 5: the last step below the top; every second one has a label
    EXPECT_THAT(LinesWith(lines, "line 173,", "1073,425 #010203 w1"), SizeIs(1));
    EXPECT_THAT(LinesWith(lines, "line 173,", "1073,175 #010203 w1"), SizeIs(1)); // 425 - 10 x 300 / 12
    EXPECT_THAT(LinesWith(lines, "text \"-2.5\""), ElementsAre("text \"-2.5\" 120,351 48x25 \"Fixed 20\" #000000"));
    EXPECT_THAT(LinesWith(lines, "text \"2.5\""), SizeIs(1));
    EXPECT_THAT(LinesWith(lines, "text \"-5\""), IsEmpty());

    graph.m_dChartInterval = -1;
    DrawRecorded(graph, "a\nb\n0,d,5\n");
    EXPECT_EQ(graph.m_dChartInterval, 10);
}

TEST_F(BarDrawing, DateStrip) {
    const struct Case {
        int days;
        std::vector<int> labelled;
    } kCases[] = {{7, {0, 1, 2, 3, 4, 5, 6}}, {8, {0, 2, 4, 6}}, {14, {0, 2, 4, 6, 8, 10, 12}}, {15, {0, 3, 6, 9, 12}}};
    for (const Case& c : kCases) {
        auto graph = Make<CBarGraph>();
        const auto lines = DrawRecorded(graph, Days(c.days));
        std::vector<int> labelled;
        for (const std::string& line : LinesWith(lines, "text \"d"))
            labelled.push_back(std::stoi(line.substr(7)));
        EXPECT_EQ(labelled, c.labelled) << c.days;
        int ticks = 0;
        for (const std::string& line : LinesWith(lines, "line "))
            ticks += line.find(",417 ") != std::string::npos;
        EXPECT_EQ(ticks, static_cast<int>(c.labelled.size())) << c.days;
    }
    auto graph = Make<CBarGraph>();
    graph.m_bDateStrip = 0;
    EXPECT_THAT(LinesWith(DrawRecorded(graph, Days(3)), "text \"d"), IsEmpty());
    EXPECT_EQ(graph.m_rcCanvas, CRect(173, 125, 1073, 425)) << "the room is kept";
    graph.m_bDateStrip = 1;
    graph.m_nDateEscapement = 900;
    EXPECT_THAT(LinesWith(DrawRecorded(graph, Days(1)), "text \"d"),
                // bottom: 451 - 48 x 1.05; a caption of 24 x 25 reaches 25 across and 24 down
                ElementsAre("text \"d0\" 611,425 24x25 \"Fixed 20\" #000000 angle 900"));
}

/// The other strip: every day has a tick, a long one if the calendar gives it a caption.
TEST_F(BarDrawing, DateStripByCalendar) {
    struct Calendar : Open<CBarGraph> {
        using Open::Open;
        long DrawDate() override { return DrawDateDailyCoach(); }
    };
    const struct Case {
        int days, firstWeekday;
        std::vector<int> captioned;
    } kCases[] = {
        {7, 3, {0, 1, 2, 3, 4, 5, 6}},
        {8, 1, {0, 7}},
        {60, 0, {1, 8, 15, 22, 29, 36, 43, 50, 57}},
        {61, 1, {0, 31, 60}},
    };
    for (const Case& c : kCases) {
        Calendar graph(nullptr, m_record, "STEPS", nullptr, nullptr, nullptr);
        graph.m_nFirstWeekday = c.firstWeekday;
        std::string file = "a\nb\n";
        for (int day = 0; day < c.days; ++day) { // of January, February (29) and March 2008
            const int date = day < 31 ? 20080101 + day : day < 60 ? 20080201 + day - 31 : 20080301 + day - 60;
            file += "0," + std::to_string(date) + ",1\n";
            graph.m_saDateEnds.Add(day == 0 ? "20080102" : std::to_string(date).c_str());
        }
        const auto lines = DrawRecorded(graph, file);
        std::vector<int> captioned;
        int ticks = 0;
        for (const std::string& line : LinesWith(lines, "line ")) {
            const bool isLong = line.find(",433 ") != std::string::npos; // 425 + 0.35 x 25
            if (isLong)
                captioned.push_back(ticks);
            ticks += isLong || line.find(",428 ") != std::string::npos;
        }
        EXPECT_EQ(ticks, c.days);
        EXPECT_EQ(captioned, c.captioned) << c.days;
        const std::string record = Joined(lines);
        const int ends = c.captioned[0] == 0 ? 2 : 0; // the first slot is a period
        EXPECT_EQ(LinesWith(lines, "text \"01/01/200801/02/2008\" ").empty(), ends == 0) << c.days;
        EXPECT_EQ(std::count(record.begin(), record.end(), '/'), 2 * static_cast<int>(c.captioned.size()) + ends)
            << c.days;
    }
}

TEST_F(BarDrawing, SingleSeriesAsALine) {
    auto graph = Make<CBarGraph>();
    graph.m_bPolyline = 1;
    EXPECT_THAT(LinesWith(DrawRecorded(graph, "a\nb\n0,d,250\n0,e,500\n0,f,1000\n"), "line", "w4"),
                ElementsAre("line 323,350 623,275 #010203 w4", "line 623,275 923,125 #010203 w4"));
    EXPECT_EQ(graph.m_oaBarRects[0]->bottom, 350);
}

TEST_F(BarDrawing, MessagesAndMissingDays) {
    auto graph = Make<CBarGraph>();
    const auto none = DrawRecorded(graph, "a\nb\n");
    // Once by the frame, once by the chart, which then stops: no canvas, and nothing behind the text.
    EXPECT_THAT(LinesWith(none, "text \"no\""), SizeIs(2));
    EXPECT_THAT(LinesWith(none, "fill"), SizeIs(1));
    EXPECT_THAT(LinesWith(DrawRecorded(graph, "a\nb\n2,d,9\n3,e,\n"), "text \"no data\""), SizeIs(3));
    const auto excluded = DrawRecorded(graph, "a\nb\n2,d,9\n1,e,250\n");
    EXPECT_THAT(LinesWith(excluded, "text \"excluded\""), SizeIs(3));
    std::string missing = "nothing.csv";
    EXPECT_EQ(graph.Draw(kArea, missing.data()), 0);
    std::vector<std::string> both = excluded;
    both.insert(both.end(), excluded.begin(), excluded.end());
    EXPECT_EQ(Lines(), both) << "the former figures once more";
}

/// Whatever profile, figures and place: a picture, at once, or a refusal.
TEST_F(BarDrawing, StandsAnything) {
    const char* kScales[] = {"CHARTMAX=0\n",
                             "CHARTMAX=5\nCHARTMIN=5\n",
                             "CHARTMAX=-5\nCHARTMAX_BIG=-9\n",
                             "CHARTMAX=2000000000\nCHARTMIN=-2000000000\nCHARTINTERVAL=1\n",
                             "CHARTMAX=1\nCHARTMIN=-2147483648\nCHARTMAX_BIG=0\n",
                             "VALUESIZE=4000\nTITLESIZE=2147483647\nHAXSLABEL=\nTITLELABEL=\n"};
    const CRect kPlaces[] = {{0, 0, 300, 200},   {5, 5, 5, 5},         {300, 200, 0, 0},
                             {-50, -50, 40, 30}, {0, 0, 1 << 24, 300}, {-2147483647 - 1, 0, 2147483647, 9}};
    const std::string file = DataFile("a\nb\n0,d,nan\n0,e,1e308\n0,f,-1e308\n0,g,-3\n7,h,1e999\n-9,,\n");
    for (const char* scale : kScales) {
        WriteProfile(std::string("IS_PRINTTARGET=1\nIS_PRINTAVERAGE=1\n") + scale);
        for (const CRect& place : kPlaces) {
            for (const int direct : {0, 1}) {
                const HDC record = CreateRecordingSurface(400, 300);
                const HDC shared = CreateMemorySurface(400, 300);
                Open<CBarGraph> graph(nullptr, record, "STEPS", shared, nullptr, shared);
                graph.m_saTargets.SetAtGrow(5, "nan");
                graph.m_saTargets.SetAtGrow(1, "1e308");
                graph.m_strAverage = "-1e300";
                graph.SetDirectOutput(direct);
                const long result = graph.Draw(place, const_cast<char*>(file.c_str()));
                EXPECT_TRUE(result == 0 || result == -999) << scale << place.right;
                graph.OnMouseMove(CPoint(150, 60));
                graph.OnMouseMove(2147483647L * 4, -5);
                const std::string text = GetRecording(record);
                EXPECT_LT(std::count(text.begin(), text.end(), '\n'), 1000) << scale;
                DeleteDC(record);
                DeleteDC(shared);
            }
        }
    }
}

} // namespace
