#include "panel_fixture.h"

#include <MelkarCommon/declarative/circle_graph_base.h>
#include <MelkarCommon/declarative/fixed_text.h>
#include <MelkarCommon/declarative/plot_graph.h>
#include <MelkarCommon/registry/shown_by.h>
#include <frame/contents_text.h>

#include <stdexcept>

namespace {

class Plots : public PanelTest {
protected:
    Plots() {
        WriteProfile(
            "GRAPH_HORIZONTAL_MAX=10\nGRAPH_VERTICAL_MAX_L=100\nGRAPH_VERTICAL_MAX_R=50\nVERTICAL_SCALE_L=true\n");
    }

    std::vector<std::string> DrawPlots(CPlotGraph& graph) {
        char none[] = "";
        graph.SetDirectOutput(1);
        EXPECT_EQ(graph.Draw(kPanel, none, none), 0);
        return LinesOf(GetRecording(m_record));
    }
};

// The graph area is (160, 100) to (440, 300): 28 units for 1 across, 2 for 1 upwards.
TEST_F(Plots, PointsStandByTheLeftScaleAndAreClampedToTheArea) {
    auto graph = Make<CPlotGraph>();
    graph.AddPlot(CPlot(5, 50, 11, 0x0000FF, 1));
    graph.AddPlot(10, 120);
    const auto discs = LinesWith(DrawPlots(graph), "ellipse");
    EXPECT_THAT(discs, Contains(StartsWith("ellipse 300,200 5x5 fill #FF0000"))) << "11 / 2 to either side";
    EXPECT_THAT(discs, Contains(StartsWith("ellipse 440,100 5x5 fill #FF0000"))) << "above the range: on its edge";
    EXPECT_EQ(graph.Plot(1).Size(), 10);
    EXPECT_EQ(graph.Plot(1).Color(), 0xFFU);
    EXPECT_EQ(graph.Plot(2).Size() + graph.Plot(-1).Size(), 0);
    graph.m_bVScaleL = 0;
    EXPECT_THAT(LinesWith(DrawPlots(graph), "ellipse"), Contains(StartsWith("ellipse 300,100 "))) << "by the right one";
}

TEST_F(Plots, TheLaterOfTwoPointsAsksForTheLine) {
    auto graph = Make<CPlotGraph>();
    for (const int connect : {1, 0, 1, 1})
        graph.AddPlot(CPlot(float(graph.PlotSize() < 3 ? graph.PlotSize() : 2), 0, 10, 0, connect));
    // From x 188 to 216 on the bottom edge, 5 units short at either end; the last two stand at one place.
    EXPECT_THAT(LinesWith(DrawPlots(graph), "line"), ElementsAre(StartsWith("line 193,300 211,300 #000000 w3")));
}

TEST_F(Plots, PointsFollowThePanelAndNoPointIsDrawnWithoutIt) {
    auto graph = Make<CPlotGraph>();
    char none[] = "";
    EXPECT_THROW(graph.DrawOnePlot(kPanel, 0, 1), std::out_of_range);
    EXPECT_THROW(graph.DrawOnePlot(kPanel, -1, 1), std::out_of_range);
    graph.Initialize(nullptr, nullptr, nullptr, nullptr, nullptr);
    graph.AddPlot(1, 1);
    EXPECT_EQ(graph.Draw(kPanel, none, none), 201);
}

TEST_F(Plots, ADerivedClassReadsItsPointsAndNamesThem) {
    class Named : public CPlotGraph {
    public:
        using CPlotGraph::CPlotGraph;
        long ReadPlotDataFile(char* file) override {
            steps << file << " ";
            AddPlot(5, 50);
            AddPlot(10, 0);
            return -1; // not looked at
        }
        void DrawPlotLabel(int x, int y, int index) override { steps << index << ":" << x << "," << y << " "; }
        void DrawAfterPlot(CRect graph) override { steps << "after " << graph.left << "," << graph.top; }
        std::ostringstream steps;
    };
    Named graph(nullptr, m_record, "OWN", nullptr, nullptr, nullptr);
    graph.SetDirectOutput(1);
    char none[] = "", points[] = "points";
    EXPECT_EQ(graph.Draw(kPanel, none, points), 0);
    EXPECT_EQ(graph.steps.str(), "points 0:300,200 1:440,300 after 160,100");
}

class CirclePanel : public PanelTest {};

// The pie is (200, 100) to (400, 300), its middle (300, 200), its radius 100.
TEST_F(CirclePanel, SlicesAndLabelsRunFromTheLastCounterClockwise) {
    WriteProfile("GRAPH_VALUE_RGB1=1,0,0\nGRAPH_VALUE_RGB2=2,0,0\nGRAPH_VALUE_RGB4=4,0,0\nGRAPH_VALUE_FONT=20\n"
                 "GRAPH_VALUE_UNIT= min\n");
    auto graph = Make<CCircleGraphBase>(0.1F);
    graph.SetValue(12.7F, 0);
    graph.SetValue(38.1F, 1);
    graph.SetValue(1, 2); // black: the row of colours ended at the missing third
    const auto lines = DrawRecorded(graph);
    EXPECT_THAT(LinesWith(lines, "slice"), ElementsAre(HasSubstr("#020000"), HasSubstr("#010000")))
        << "the third is below the least share";
    EXPECT_THAT(LinesWith(lines, "text"), ElementsAre(StartsWith("text \"38min\""), StartsWith("text \"13min\"")))
        << "blanks around a value are dropped, and it is rounded by the default format";
    EXPECT_FLOAT_EQ(graph.GetRate(12.7), 12.7F / 51.8F);
}

TEST_F(CirclePanel, OneSliceIsTheWholeDiscAndNothingDrawsNothing) {
    WriteProfile("GRAPH_VALUE_RGB1=1,0,0\nGRAPH_VALUE_FONT=20\n");
    auto graph = Make<CCircleGraphBase>(0.0F);
    EXPECT_THAT(LinesWith(DrawRecorded(graph), "slice"), IsEmpty());
    graph.SetValue(5, 0);
    const auto lines = DrawRecorded(graph);
    EXPECT_THAT(lines, Contains(StartsWith("ellipse 300,200 100x100 fill #010000")));
    // Straight below the middle: (300, 250), a box 66 x 40 about it, the text of 10 x 20 in its middle.
    EXPECT_THAT(lines, Contains(StartsWith("text \"5\" 295,240 10x20")));
}

TEST_F(PanelTest, TextStandsWhereItsFormatSays) {
    WriteProfile("ADVICE=Walk more\nADVICE_FONT=20\nADVICE_RGB=1,0,0\nPLAIN=x\n");
    const std::tuple<const char*, UINT, int, int> cases[] = {
        {"top", 0, 0, 100},
        {"bottom", DT_BOTTOM, 10, 270},
        {"the middle wins over the bottom", DT_VCENTER | DT_BOTTOM, 10, 190},
        {"a negative margin reaches out", 0, -10, 90},
    };
    for (const auto& [why, format, margin, top] : cases) {
        CFixedText graph(nullptr, m_record, "OWN", "ADVICE", nullptr, nullptr, nullptr, format, margin);
        const std::string at = std::to_string(160 + margin) + "," + std::to_string(top);
        EXPECT_THAT(LinesWith(DrawRecorded(graph), "text"),
                    ElementsAre(AllOf(StartsWith("text \"Walk more\" " + at + " 90x20"), HasSubstr("#010000"))))
            << why;
    }
    CFixedText plain(nullptr, m_record, "OWN", "PLAIN", nullptr, nullptr, nullptr, 0, 0);
    EXPECT_THAT(DrawRecorded(plain), Contains(StartsWith("text \"x\" 160,100 10x20 \"Fixed")))
        << "size 20 and the panel's face unless keys say otherwise";
    char profile[] = "..\\conf\\graph.cnf";
    EXPECT_EQ(plain.ReadIniFile(profile, "NONE"), 0);
    EXPECT_THAT(LinesWith(DrawRecorded(plain), "text \"x\""), IsEmpty()) << "a missing key: an empty text";
}

/// As the points above stand: 28 units for 1 across, 2 for 1 upwards. Red is the second row of the note box.
TEST_F(Plots, TellWhatTheyShow) {
    WriteProfile("GRAPH_HORIZONTAL_MAX=10\nGRAPH_VERTICAL_MIN_L=0.1\nGRAPH_VERTICAL_MAX_L=100.1\n"
                 "VERTICAL_SCALE_L=true\nVERTICAL_SCALE_WIDTH_L=40\nGRAPH_VERTICAL_DIVIDE_L=4\nVERTICAL_LABEL_L=kg\n"
                 "TITLE_LABEL=Weight\nTITLE_HEIGHT=40\nHORIZONTAL_LABEL=week\nHORIZONTAL_LABEL_HEIGHT=20\n"
                 "NOTE_SHOW=true\nNOTE_LABEL1=blue\nNOTE_LABEL2=red\nNOTE_MARK_RGB1=0,0,9\nNOTE_MARK_RGB2=255,0,0\n");
    auto graph = Make<CPlotGraph>();
    graph.AddPlot(CPlot(5, 50.1F, 11, 0x0000FF, 1));
    graph.AddPlot(CPlot(2.5F, 120, 10, 0x00FF00, 0));
    DrawPlots(graph);
    const melkar::Contents shown = melkar::ShownBy(graph);
    EXPECT_EQ(shown.kind + "|" + shown.title, "plot|Weight");
    ASSERT_THAT(shown.axes, SizeIs(2));
    EXPECT_EQ(shown.axes[0].label + "|" + shown.axes[1].label, "|week") << "a caption without room isn't painted";
    EXPECT_EQ(shown.axes[0].from, 0.1) << "not that of a float in double";
    EXPECT_EQ(shown.axes[0].step, 25);
    EXPECT_EQ(shown.axes[1].to, 10);
    ASSERT_THAT(shown.items, SizeIs(2));
    EXPECT_EQ(shown.items[0].caption + "|" + Figures(shown.items[0]), "5|1:50.1@295,195 305,205|");
    EXPECT_EQ(shown.items[1].caption + "|" + Figures(shown.items[1]), "2.5|2:120@225,95 235,105!|");
    ASSERT_THAT(shown.series, SizeIs(3));
    EXPECT_EQ(shown.series[0].name + "|" + shown.series[1].name + "|" + shown.series[2].name, "blue|red|");
    EXPECT_THAT(shown.messages, IsEmpty()) << "a panel judges no days";
}

/// Counter-clockwise from twelve o'clock in (200, 100) to (400, 300): the second slice to six o'clock, the first back.
TEST_F(CirclePanel, TellsItsSlices) {
    WriteProfile("GRAPH_VALUE_RGB1=1,0,0\nGRAPH_VALUE_RGB2=2,0,0\nGRAPH_VALUE_FONT=20\nGRAPH_VALUE_UNIT= min\n"
                 "NOTE_SHOW=true\nNOTE_LABEL1=b\nNOTE_LABEL2=a\nNOTE_MARK_RGB1=2,0,0\nNOTE_MARK_RGB2=1,0,0\n");
    auto graph = Make<CCircleGraphBase>(0.1F);
    graph.SetValue(12.7F, 0);
    graph.SetValue(12.7F, 1);
    graph.SetValue(0, 2);
    DrawRecorded(graph);
    const melkar::Contents shown = melkar::ShownBy(graph);
    EXPECT_EQ(shown.kind, "pie");
    EXPECT_THAT(shown.axes, IsEmpty()) << "the profile's scales aren't painted";
    ASSERT_THAT(shown.items, SizeIs(3));
    EXPECT_EQ(shown.items[0].caption + "|" + shown.items[0].text + "|" + Figures(shown.items[0]),
              "a|13min|1:13min@300,100 400,300|")
        << "by the colour, not by the row";
    EXPECT_EQ(shown.items[1].caption + "|" + Figures(shown.items[1]), "b|0:13min@200,100 300,300|");
    EXPECT_EQ(shown.items[2].text + "|" + Figures(shown.items[2]), "|2:0min@0,0 0,0|") << "not shown";
}

TEST_F(PanelTest, TellsItsText) {
    WriteProfile("ADVICE=Walk more\nADVICE_FONT=20\nTITLE_LABEL=T\n");
    CFixedText text(nullptr, m_record, "OWN", "ADVICE", nullptr, nullptr, nullptr, DT_VCENTER, 0);
    DrawRecorded(text);
    const melkar::Contents shown = melkar::ShownBy(text);
    EXPECT_EQ(shown.kind + "|" + shown.title, "text|") << "a title without height isn't painted";
    EXPECT_THAT(shown.texts, ElementsAre("Walk more"));
    EXPECT_THAT(shown.axes, IsEmpty());
}

} // namespace
