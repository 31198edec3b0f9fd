#include "chart_fixture.h"

#include <MelkarCommon/bars/expenditure_graph.h>
#include <MelkarCommon/bars/simulation.h>
#include <MelkarCommon/registry/catalogue.h>
#include <MelkarCommon/registry/shown_by.h>
#include <frame/contents_text.h>

namespace {

using melkar::AxisSide;
using melkar::Contents;
using melkar::MarkKind;
using melkar::ShownBy;
using melkar::ShownItem;

class BarContents : public ChartTest {};

/// The picture is that of the whole chart in bar_graph_test.cpp: each area and text is one of its record's.
TEST_F(BarContents, WholeChart) {
    auto graph = Make<CBarGraph>();
    EXPECT_TRUE(ShownBy(graph).area == CRect()) << "it never drew";
    graph.m_dChartInterval = 500;
    graph.SetPrintTarget(1);
    graph.SetPrintAverage(1);
    graph.m_strAverage = "503.9";
    graph.m_saTargets.Add("334");
    DrawRecorded(graph, "a\nb\n0,d1,334.6\n1,d2,1000\n");
    const Contents shown = ShownBy(graph);
    EXPECT_EQ(shown.kind + "|" + shown.title + "|" + shown.unit + "|" + Text(shown.area),
              "bar|Steps|steps|100,50 1092,524");
    ASSERT_THAT(shown.axes, SizeIs(2));
    EXPECT_EQ(shown.axes[0].label, "steps");
    EXPECT_EQ(shown.axes[0].to, 1000);
    EXPECT_EQ(shown.axes[0].step, 500);
    EXPECT_EQ(shown.axes[1].label, "Day");
    ASSERT_THAT(shown.items, SizeIs(2));
    const auto& [reached, without] = std::tie(shown.items[0], shown.items[1]);
    EXPECT_EQ(reached.caption + "|" + Figures(reached), "d1|0:334@285,325 510,425|") << "cut as on the picture";
    EXPECT_EQ(reached.figures[0].balloon, "d1\n334.6") << "but not in its balloon";
    EXPECT_EQ(reached.reached, true);
    EXPECT_EQ(without.caption + "|" + Figures(without), "d2|0:1000@735,125 960,425|");
    EXPECT_EQ(without.status, 1);
    EXPECT_EQ(without.reached, std::nullopt);
    ASSERT_THAT(shown.marks, SizeIs(2));
    EXPECT_EQ(Text(shown.marks[0]), "mean|503.9|173,273 1073,277");
    EXPECT_EQ(Text(shown.marks[1]), "goal|334|173,322 623,326");
}

TEST_F(BarContents, Days) {
    const std::tuple<const char*, const char*, std::string, std::string, bool> cases[] = {
        {"above the scale: drawn to its end", "0,d,1001", "1001", "0:1001@398,125 848,425!|", false},
        {"no data: the figure isn't written, its bar stands", "2,d,250", "", "0:250@398,350 848,425|", false},
        {"nothing at all", "0,d", "0", "", true},
    };
    for (const auto& [why, day, text, figures, missing] : cases) {
        auto graph = Make<CBarGraph>();
        graph.m_nChartMaxBig = 0;
        DrawRecorded(graph, std::string("a\nb\n") + day + "\n");
        const ShownItem item = ShownBy(graph).items.at(0);
        EXPECT_EQ(item.text, text) << why;
        EXPECT_EQ(Figures(item), figures) << why;
        EXPECT_EQ(item.isMissing, missing) << why;
    }
}

/// Neither scale nor bars are there, but one can say which days are meant.
TEST_F(BarContents, AMessageInPlaceOfTheChart) {
    auto graph = Make<CBarGraph>();
    DrawRecorded(graph, "a\nb\n4,d1,\n4,d2,\n");
    const Contents shown = ShownBy(graph);
    EXPECT_THAT(shown.messages, ElementsAre("no\nrecords"));
    EXPECT_THAT(shown.axes, IsEmpty());
    ASSERT_THAT(shown.items, SizeIs(2));
    EXPECT_EQ(shown.items[1].caption, "d2");
    EXPECT_TRUE(shown.items[1].isMissing);
}

/// A host's surface shows the picture where it was drawn, with its clicks there.
TEST_F(BarContents, AreasAnswerClicks) {
    HDC const view = CreateMemorySurface(1200, 700);
    {
        CBarGraph graph(nullptr, view, "OWN", view, nullptr, nullptr);
        graph.Draw(kArea, DataFile("a\nb\n0,d1,334\n1,d2,1000\n").data());
        const CRect second = ShownBy(graph).items.at(1).figures.at(0).area;
        EXPECT_EQ(graph.OnClick(CPoint(second.left, second.top)), 1);
        EXPECT_EQ(graph.OnClick(CPoint(second.left, second.top - 1)), -1);
        EXPECT_EQ(graph.OnClick(CPoint(second.left - 1, second.top)), -1);
    }
    DeleteDC(view);
}

TEST_F(BarContents, PartsOfAStackAndTheBand) {
    WriteProfile("AVERAGE_INTAKE_LABEL=intake\nEX1_LABEL=total\nEX2_LABEL=act");
    auto graph = Make<CExpenditureGraph>();
    DrawRecorded(graph, "skipped\nA,B,1000,3,4000,77\n0,a,2000,500\n0,b,5000,500\n", kWideArea);
    const Contents shown = ShownBy(graph);
    EXPECT_EQ(shown.kind + "|" + shown.whole + "|" + shown.series.at(1).name, "expenditure|total|act");
    EXPECT_EQ(Figures(shown.items.at(0)), "0:500@285,388 510,425|1:1500@285,275 510,388|");
    EXPECT_EQ(shown.items[0].text, "2000");
    EXPECT_EQ(shown.items[0].value, 2000);
    EXPECT_EQ(Text(shown.items[0].area), "285,275 510,425");
    EXPECT_EQ(Figures(shown.items.at(1)), "0:500@735,388 960,425|1:4500@735,125 960,388!|")
        << "the sum leaves the scale";
    ASSERT_THAT(shown.marks, SizeIs(1));
    EXPECT_EQ(Text(shown.marks[0]), "intake|1000|173,350 1073,425");
}

/// Dots of four days stand at 285, 510, 735 and 960; 60 is the bottom of the right scale, 80 its top.
TEST_F(BarContents, LinesStandBehindTheBars) {
    WriteProfile("LINESCOLOR0_RGB=7,0,0\nVLINEAXSLABEL=kg\nCHARTLINEMIN=60\nCHARTLINEMAX=80\nCHARTLINEINTERVAL=5");
    auto graph = Make<CLineGraph>();
    graph.m_saLineValues = Texts({"60", "81", "70", ""});
    DrawRecorded(graph, "a\nb\n0,a,1000\n0,b,\n1,c,1000\n0,d,1000\n", kWideArea);
    const Contents shown = ShownBy(graph);
    EXPECT_EQ(shown.series.at(1).name, "kg");
    EXPECT_EQ(shown.series[1].axis, AxisSide::Right);
    EXPECT_EQ(shown.axes.at(2).from, 60);
    EXPECT_THAT(Figures(shown.items.at(0)), EndsWith("|1:60@281,421 289,429|"));
    EXPECT_EQ(Figures(shown.items.at(1)), "1:81@506,121 514,129!|");
    EXPECT_FALSE(shown.items[1].isMissing);
    EXPECT_THAT(Figures(shown.items.at(2)), Not(HasSubstr("|1:"))) << "an excluded day has no dot";
    EXPECT_THAT(Figures(shown.items.at(3)), Not(HasSubstr("|1:")));
}

/// As in simulation_test.cpp: top 72, bottom 56; centres of four rows at 285, 510, 735 and 960.
TEST_F(BarContents, ThePlanHasPlacesOfItsOwn) {
    WriteProfile("WEIGHTSTRING=kg\nTARGETWEIGHTSTRING=plan\nIS_PRINTTARGET=1\nTARGETLABEL=goal\n");
    auto graph = Make<CSimulation>();
    m_files.Write("bin/data.csv.sim", "skipped\n20250302,70,kept,60\n20250301,70,70\n20250302,69.5,69\n20250303,,68\n"
                                      "20250304,50,60\n");
    DrawRecorded(graph, "skipped\nA,B\n,,345\n0,a,a,,,,,,,300,,250\n0,b,b,,,,,,,300,,200\n", kWideArea);
    const Contents shown = ShownBy(graph);
    EXPECT_THAT(shown.marks, IsEmpty()) << "the bars' target isn't painted here";
    ASSERT_THAT(shown.items, SizeIs(2 + 4));
    EXPECT_EQ(shown.items[0].reached, false);
    EXPECT_EQ(shown.items[2].caption + "|" + Figures(shown.items[2]), "20250301|1:70@276,154 294,172|");
    EXPECT_EQ(Figures(shown.items[4]), "2:68@735,198 736,201|") << "the line begins behind its start";
    EXPECT_EQ(Figures(shown.items[5]), "1:50@0,0 0,0!|2:60@960,348 961,351|") << "too light for the scale: no square";
}

/// A class of a host's is what it derives from, until it says more.
TEST_F(BarContents, AHostsClass) {
    class Own : public CBarGraph {
    public:
        using CBarGraph::CBarGraph;
        Contents Shown() const {
            Contents contents = CBarGraph::Shown();
            contents.texts.emplace_back("more");
            return contents;
        }
    };
    auto graph = Make<Own>();
    DrawRecorded(graph, "a\nb\n0,d1,334\n");
    EXPECT_EQ(ShownBy(graph).kind, "bar");
    const std::optional<Contents> own = melkar::ContentsOf<Own>(graph);
    ASSERT_TRUE(own);
    EXPECT_THAT(own->texts, ElementsAre("more"));
    EXPECT_EQ(melkar::ContentsOf<CLineGraph>(graph), std::nullopt) << "no such graph";
}

} // namespace
