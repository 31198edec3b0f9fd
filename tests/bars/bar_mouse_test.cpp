#include "chart_fixture.h"

#include <MelkarCommon/bars/bar_layout.h>
#include <MelkarCommon/frame/scale.h>

namespace {

/// Two days of two series, drawn at (100, 50) onto a shared surface that records. Bars 285 to 510 and 735 to 960;
/// with a scale of 0 to 1000 on 300 pixels the first day's tops are at 350 and 275, the second's at 425 and 125.
class BarMouse : public ChartTest {
protected:
    BarMouse() {
        m_graph.m_nSeriesCount = 2;
        m_graph.Draw(kArea, DataFile("a\nb\n0,1/1,250,250\n0,1/2,0,1000\n").data());
    }
    ~BarMouse() override {
        DeleteDC(m_shared);
        DeleteDC(m_balloon);
    }

    HDC m_shared = CreateRecordingSurface(1200, 600);
    HDC m_balloon = CreateRecordingSurface(1200, 600);
    CBarGraph m_graph{nullptr, m_shared, "OWN", m_shared, nullptr, m_balloon};
};

TEST_F(BarMouse, HitTest) {
    const std::tuple<const char*, CPoint, long, long> cases[] = {
        {"left edge of the first bar", {285, 400}, 0, 0},
        {"right edge counts, as does the top", {510, 350}, 0, 0},
        {"above the stack", {400, 274}, -1, -1},
        {"second series of the second day, over one of no height", {800, 424}, 1, 3},
        {"bottom of the canvas", {800, 425}, -1, -1},
    };
    for (const auto& [why, point, day, bar] : cases) {
        EXPECT_EQ(m_graph.OnClick(point), day) << why;
        EXPECT_EQ(m_graph.OnMouseMove(point), bar) << why;
    }
    m_graph.m_bClickEnabled = 2;
    EXPECT_EQ(m_graph.OnClick(CPoint(400, 400)), -1);
    EXPECT_EQ(m_graph.OnMouseMove(CPoint(400, 400)), 0);
    m_graph.Draw(kArea, DataFile("a\nb\n").data());
    EXPECT_EQ(m_graph.OnMouseMove(CPoint(400, 400)), -1) << "no bar is left of the former picture";
}

/// Above the pointer, its text 3 right of it: 36 wide and two lines of 34 high (20 points are 27 pixels, 17 a
/// character), so 51 x 68 with its top at 303 - 68 - 6.
TEST_F(BarMouse, Balloon) {
    ::BitBlt(m_balloon, 0, 0, 1200, 600, m_shared, 0, 0, SRCCOPY);
    const auto recorded = [this](CPoint point) {
        const std::size_t before = GetRecording(m_shared).size();
        m_graph.OnMouseMove(point);
        return GetRecording(m_shared).substr(before);
    };
    const std::string clean = recorded(CPoint(200, 400)); // a gap: only the picture comes back
    EXPECT_TRUE(clean.starts_with("copy 100,50 992x474 from 100,50\n"));
    EXPECT_EQ(recorded(CPoint(400, 300)), clean + "fill 400,226 57x1 #010203\n"
                                                  "fill 400,299 57x1 #010203\n"
                                                  "fill 400,227 1x72 #010203\n"
                                                  "fill 456,227 1x72 #010203\n"
                                                  "fill 401,227 55x72 #FFFF80\n"
                                                  "text \"1/1\" 403,229 51x34 \"Fixed 27\" #000000\n"
                                                  "text \"250\" 403,263 51x34 \"Fixed 27\" #000000\n");
    EXPECT_NE(recorded(CPoint(400, 400)), clean) << "the first bar has one, too";
    m_graph.m_bHoverEnabled = 0;
    EXPECT_EQ(recorded(CPoint(400, 300)), clean);
}

/// A day from its second figure up to its first: 750 to 250 reaches from 200 to 350, 1000 to 1000 is nowhere.
TEST_F(BarMouse, DaysThatADerivedClassPlaces) {
    struct Spans : CBarGraph {
        Spans(HDC shared, HDC balloon) : CBarGraph(nullptr, shared, "OWN", shared, nullptr, balloon) {
            m_nSeriesCount = 2;
            m_fnDayText = [this](int day) { return m_saValues[2 * day] + "/" + m_saValues[2 * day + 1]; };
            m_fnDayRect = [this](int day) {
                const melkar::BarSpan span = melkar::BarOf(m_rcCanvas, day, Days());
                const auto y = [&](int series) { return melkar::FigureY(LeftScale(), FigureOf(day, series)); };
                return CRect(span.left, y(0), span.right, y(1));
            };
        }
    } graph(m_shared, m_balloon);
    const std::size_t before = GetRecording(m_shared).size();
    graph.Draw(kArea, DataFile("a\nb\n0,1/1,750,250\n0,1/2,1000,1000\n").data());
    const auto lines = LinesOf(GetRecording(m_shared).substr(before));
    EXPECT_THAT(LinesWith(lines, "fill", "#008000"), ElementsAre("fill 285,200 225x150 #008000"));
    EXPECT_THAT(LinesWith(lines, "text \"750/250\""),
                ElementsAre("text \"750/250\" 355,174 84x25 \"Fixed 20\" #000000"))
        << "above the bar, not their sum";
    const std::tuple<const char*, CPoint, long> cases[] = {
        {"left edge and top", {285, 200}, 0}, {"the last row", {509, 349}, 0},
        {"right of it", {510, 349}, -1},      {"below it, where other bars answer", {400, 350}, -1},
        {"above it", {400, 199}, -1},         {"a day without height", {800, 125}, -1},
    };
    for (const auto& [why, point, day] : cases) {
        EXPECT_EQ(graph.OnClick(point), day) << why;
        EXPECT_EQ(graph.OnMouseMove(point), day) << why; // no day but the first answers, and its bars begin with 0
    }
    graph.OnMouseMove(CPoint(400, 300));
    EXPECT_THAT(LinesOf(GetRecording(m_shared)).back(), StartsWith("text \"750/250\" 403,263 119x34"));
}

/// The forms without and with a point are one operation to a caller, whatever a derived class overrides.
TEST_F(BarMouse, Overloads) {
    struct Counting : CBarGraph {
        using CBarGraph::CBarGraph;
        using CBarGraph::OnClick;
        using CBarGraph::OnMouseMove;
        long OnClick(CPoint point) override { return m_last = point.x * 10 + point.y; }
        long OnMouseMove(CPoint point) override { return m_last = point.x * 10 - point.y; }
        long m_last = 0;
    };
    auto graph = Make<Counting>();
    CBarGraph& base = graph;
    EXPECT_EQ(base.OnClick() + base.OnMouseMove() + base.OnClick(3, 4), 0);
    EXPECT_EQ(graph.m_last, 34);
    EXPECT_EQ(base.OnMouseMove(3L, 4L), 0);
    EXPECT_EQ(graph.m_last, 26);
    EXPECT_EQ(base.OnClick(CPoint(1, 1)), 11);
}

} // namespace
