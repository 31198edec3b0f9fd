#include "chart_fixture.h"

#include <MelkarCommon/bars/bar_layout.h>
#include <MelkarCommon/bars/simulation.h>

namespace {

std::string Days(int count) {
    std::string file = "a\nb\n";
    for (int day = 0; day < count; ++day)
        file += "0,d" + std::to_string(day) + ",500\n";
    return file;
}

class BarData : public ChartTest {};

TEST_F(BarData, AFileThatCantBeOpenedKeepsWhatIsThere) {
    auto graph = Make<CBarGraph>();
    Read(graph, "a\nb\n0,d,12\n");
    graph.m_saTargets.Add("5");
    std::string missing = "nothing.csv";
    for (char* path : {missing.data(), static_cast<char*>(nullptr)})
        EXPECT_EQ(graph.ReadDataFile(path), 101);
    EXPECT_EQ(Content(graph), "0 d 12|");
    EXPECT_THAT(m_files.Read("log/graph.log"), HasSubstr("CBarGraph::ReadDataFile"));
    Read(graph, "a\nb\n");
    EXPECT_EQ(graph.m_saTargets.GetSize(), 1) << "targets are not the file's";
    graph.ClearArrays();
    EXPECT_EQ(graph.m_saTargets.GetSize(), 0);
}

TEST_F(BarData, TheBigScaleStaysUntilReset) {
    auto graph = Make<CBarGraph>();
    graph.m_nSeriesCount = 2;
    const auto top = [&](const std::string& day) {
        Read(graph, "a\nb\n0,c,1,1\n" + day);
        graph.GetGraphMeasure();
        return graph.m_nChartMax;
    };
    EXPECT_EQ(top("0,d,999,1\n"), 1000) << "a day exactly at the top";
    EXPECT_EQ(top("0,d,nan,5000\n"), 1000);
    EXPECT_EQ(top("0,d,999,1.5\n"), 5000);
    EXPECT_EQ(graph.m_dChartInterval, 1000);
    graph.m_nChartMaxBig = graph.m_nChartIntervalBig = 1;
    graph.ResetGraphMeasure();
    EXPECT_EQ(graph.m_nChartMax, 1000);
    EXPECT_EQ(graph.m_dChartInterval, 250);
    EXPECT_EQ(graph.m_nChartMaxBig, 5000);
    EXPECT_EQ(graph.m_nChartIntervalBig, 1000);
    graph.m_nChartMaxBig = 0;
    EXPECT_EQ(top("0,d,999,1.5\n"), 1000) << "there is no big scale";
}

class BarDrawing : public ChartTest {};

/// All steps in their order. Slots of 450, bars of 225: middles at 397 and 847.
TEST_F(BarDrawing, WholeChart) {
    auto graph = Make<CBarGraph>();
    graph.m_dChartInterval = 500;
    graph.SetPrintTarget(1);
    graph.SetPrintAverage(1);
    graph.m_strAverage = "503.9"; // 503 x 300 / 1000 = 150 above the bottom
    graph.m_saTargets.Add("334"); // 425 - 100.2 is cut to 324; the second day has none
    EXPECT_THAT(DrawRecorded(graph, "a\nb\n0,d1,334\n1,d2,1000\n"),
                ElementsAre("fill 100,50 992x474 #C8C8C8", "text \"Steps\" 102,51 120x50 \"Fixed 40 bold\" #000063",
                            "fill 173,125 900x300 #FAFAFA",
                            // scale: label ends 5 left of the canvas, its middle on the line
                            "text \"0\" 156,413 12x25 \"Fixed 20\" #000000", "line 173,425 1073,425 #010203 w1",
                            "text \"500\" 132,263 36x25 \"Fixed 20\" #000000", "line 173,275 1073,275 #010203 w1",
                            "text \"1000\" 120,113 48x25 \"Fixed 20\" #000000", "line 173,125 1073,125 #010203 w1",
                            // bars: only the first has reached its target
                            "fill 285,325 225x100 #00FF00", "fill 735,125 225x300 #008000",
                            // frame
                            "line 173,125 1073,125 #010203 w1", "line 1073,125 1073,425 #010203 w1",
                            "line 1073,425 173,425 #010203 w1", "line 173,425 173,125 #010203 w1",
                            // average: its legend in the graph's corner, 100 and 50 from that of the surface
                            "thick 100,60 160 #0000FF w1 dash 18,6", "thick 173,273 1073 #0000FF w1 dash 18,6",
                            "text \"  mean: 503.9 steps\" 165,50 228x25 \"Fixed 20\" #000000",
                            // target: none on the second day
                            "text \"goal\" 1025,76 48x25 \"Fixed 20\" #000000", "thick 1025,86 965 #FF0000 w1 dot 3,3",
                            "thick 173,322 623 #FF0000 w1 dot 3,3",
                            // figures: on the canvas colour above the bar; inside a full bar without it
                            "fill 379,299 36x25 #FAFAFA", "text \"334\" 379,299 36x25 \"Fixed 20\" #000000",
                            "text \"1000\" 823,126 48x25 \"Fixed 20\" #000000",
                            // dates: half a zero's height below the canvas; ticks 0.3 of it up and down
                            "text \"d1\" 386,437 24x25 \"Fixed 20\" #000000", "line 397,432 397,417 #010203 w1",
                            "text \"d2\" 836,437 24x25 \"Fixed 20\" #000000", "line 847,432 847,417 #010203 w1",
                            // (125 + 425 + 60) / 2; 524 - 2 x 25
                            "text \"steps\" 101,305 60x25 \"Fixed 20\" #000000 angle 900",
                            "text \"Day\" 605,474 36x25 \"Fixed 20\" #000000"));
    EXPECT_EQ(graph.m_oaBarRects.GetSize(), 2) << "to be clicked at";
}

TEST_F(BarDrawing, Figures) {
    // The fills are graph, canvas, bars of some height, and figures on the canvas colour.
    const std::tuple<const char*, std::string, int, const char*, std::size_t> cases[] = {
        {"rounded to decimals", "0,,234.56", 1, "234.6", 6},
        {"six decimals count", "0,,233.9999999", 0, "234", 6},
        {"no room above: inside the bar", "0,,910", 0, "910", 5},
        {"a pixel of room above", "0,,909", 0, "909", 6},
        {"an excluded day", "1,,", 0, "0", 5},
        {"a day without data has none, the day before has", "3,,234", 0, "77", 5},
    };
    for (const auto& [why, day, decimals, figure, fills] : cases) {
        auto graph = Make<CBarGraph>();
        graph.m_nDecimals = decimals;
        const auto lines = DrawRecorded(graph, "a\nb\n0,,77\n" + day + "\n");
        const auto texts = LinesWith(lines, "text"); // the last ones: figure, both axis labels
        EXPECT_TRUE(texts.end()[-3].starts_with("text \"" + std::string(figure) + "\" ")) << why;
        EXPECT_THAT(LinesWith(lines, "fill"), SizeIs(fills)) << why;
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
    EXPECT_EQ(graph.m_oaBarRects[0]->top, 425 - 214) << "5 x 300 / 7: from 0, whatever the bottom";
    // -5, -2.5, 0, 2.5, 5: only every second one has a label
    EXPECT_EQ(TextsAt(lines, 120) + TextsAt(lines, 132) + TextsAt(lines, 156), "-2.5@3512.5@226");
    EXPECT_THAT(LinesWith(lines, "line 173,", "1073,175 #010203 w1"), SizeIs(1)); // 425 - 10 x 300 / 12

    graph.m_dChartInterval = -1;
    DrawRecorded(graph, "a\nb\n0,d,5\n");
    EXPECT_EQ(graph.m_dChartInterval, 10);
}

TEST_F(BarDrawing, DateStrip) {
    auto graph = Make<CBarGraph>();
    for (const auto& [days, labels] : {std::pair{7, "0123456"}, {8, "0246"}, {15, "036912"}}) {
        const auto lines = DrawRecorded(graph, Days(days));
        std::string labelled;
        for (const std::string& line : LinesWith(lines, "text \"d"))
            labelled.append(line, 7, line.find('"', 7) - 7);
        EXPECT_EQ(labelled, labels);
    }
    graph.m_bDateStrip = 0;
    EXPECT_THAT(LinesWith(DrawRecorded(graph, Days(3)), "text \"d"), IsEmpty());
    EXPECT_EQ(graph.m_rcCanvas, CRect(173, 125, 1073, 425)) << "the room is kept";
    graph.m_bDateStrip = 1;
    graph.m_nDateEscapement = 900;
    // bottom: 451 - 96 x 1.05; a caption of 72 x 25 reaches 25 across and 72 down
    EXPECT_THAT(LinesWith(DrawRecorded(graph, "a\nb\n0,longer,1\n"), "text \"longer\" 611,423 ", "angle 900"),
                SizeIs(1));
}

/// The other strip: every day has a tick, a long one if the calendar gives it a caption.
TEST_F(BarDrawing, DateStripByCalendar) {
    struct Calendar : CBarGraph {
        using CBarGraph::CBarGraph;
        long DrawDate() override { return DrawDateDailyCoach(); }
    };
    for (const auto& [days, firstWeekday, expected] : {std::tuple{7U, 3, "01 02 03 04 05 06 07 "},
                                                       {8U, 1, "01 08 "},
                                                       {60U, 0, "02 09 16 23 30 07 14 21 28 "},
                                                       {61U, 1, "01 01 01 "}}) {
        auto graph = Make<Calendar>();
        graph.m_nFirstWeekday = firstWeekday;
        std::string file = "a\nb\n";
        for (std::size_t day = 0; day < days; ++day) { // a January of 30 days, again and again
            const std::string date = std::to_string(20080101 + day % 30);
            file += "0," + date + ",1\n";
            graph.m_saDateEnds.Add(day == 0 ? "20080102" : date.c_str()); // the first slot is a period
        }
        const auto lines = DrawRecorded(graph, file);
        std::string captioned;
        for (const std::string& line : LinesWith(lines, "text \"01/"))
            captioned.append(line, 9, 2).append(" ");
        EXPECT_EQ(captioned, expected);
        const std::size_t captions = captioned.size() / 3;
        EXPECT_THAT(LinesWith(lines, "line", ",416 #010203 w1"), SizeIs(captions)) << "0.35 x 25 above 425";
        EXPECT_THAT(LinesWith(lines, "line", ",421 #010203 w1"), SizeIs(days - captions)) << "0.15 x 25";
        EXPECT_EQ(LinesWith(lines, "text \"01/01/200801/02/2008\" ").size(), captioned.starts_with("01") ? 1U : 0U);
    }
}

TEST_F(BarDrawing, SingleSeriesAsALine) {
    auto graph = Make<CBarGraph>();
    graph.m_bPolyline = 1;
    EXPECT_THAT(LinesWith(DrawRecorded(graph, "a\nb\n0,d,250\n0,e,500\n0,f,1000\n"), "line", "w4"),
                ElementsAre("line 323,350 623,275 #010203 w4", "line 623,275 923,125 #010203 w4"));
    EXPECT_EQ(graph.m_oaBarRects[0]->bottom, 350);
}

/// A step leaves the surface as it found it; what derived classes paint in the overlays' step finds it transparent.
TEST_F(BarDrawing, StepsLeaveTheSurfaceAsItWas) {
    class Overlay : public CSimulation {
    public:
        using CSimulation::CSimulation;
        void DrawTarget() override {
            mode = SetBkMode(m_hMemDC, TRANSPARENT);
            CSimulation::DrawTarget();
        }
        int mode = 0;
    };
    auto graph = Make<Overlay>();
    DrawRecorded(graph, "a\nA,B\n,,1\n0,a,a,,,,,,,3,,250\n");
    graph.m_bPrintAverage = graph.m_bLines = graph.m_nLineCount = 1;
    EXPECT_EQ(LeftBy([&] {
                  graph.DrawAverageIntake();
                  graph.DrawCanvasMeasure();
                  graph.DrawBarChart();
                  graph.DrawCanvas();
                  graph.DrawTargetAverage();
                  graph.DrawValueOnBar();
                  graph.DrawDate();
                  graph.DrawDateDailyCoach();
                  graph.DrawVAxsLabel();
                  graph.DrawHAxsLabel();
                  graph.DrawSecExs();
                  graph.CExpenditureGraph::DrawSecExs();
              }),
              "opaque red green");
    EXPECT_EQ(graph.mode, TRANSPARENT);
}

TEST_F(BarDrawing, MessagesAndMissingDays) {
    auto graph = Make<CBarGraph>();
    const auto none = DrawRecorded(graph, "a\nb\n");
    // Once by the frame, once by the chart, which then stops: no canvas, and nothing behind the text.
    EXPECT_THAT(LinesWith(none, "text \"no\""), SizeIs(2));
    EXPECT_THAT(LinesWith(none, "fill"), SizeIs(1));
    EXPECT_THAT(LinesWith(DrawRecorded(graph, "a\nb\n2,d,9\n3,e,\n"), "text \"no data\""), SizeIs(3));
    EXPECT_THAT(LinesWith(DrawRecorded(graph, "a\nb\n2,d,9\n1,e,250\n"), "text \"excluded\""), SizeIs(3));
}

} // namespace
