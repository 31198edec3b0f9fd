#include <bars/chart_fixture.h>

#include <gmock/gmock.h>

#include <stdexcept>

namespace {

using testing::ElementsAre;
using testing::SizeIs;

/// The frame alone, with statuses from the test.
class Frame : public CGraph {
public:
    using CGraph::CGraph;
    using CGraph::m_hMemDC, CGraph::m_nTitleSpace, CGraph::m_rcCanvas, CGraph::m_rcGraph;
    using CGraph::m_rcTitle, CGraph::m_Title;
    void SetCanvasRect() override {
        if (m_throws)
            throw std::runtime_error("a step that fails");
        CGraph::SetCanvasRect();
    }
    bool m_throws = false;
};

class FrameTest : public ChartTest {
protected:
    Frame Make() { return {nullptr, m_record, "STEPS", nullptr, nullptr, nullptr}; }
};

TEST_F(FrameTest, Messages) {
    const struct Case {
        const char* why;
        std::vector<DWORD> statuses;
        const char* painted; ///< '4' no records, '2' no data, '9' excluded: the red of the message's colour
    } kCases[] = {
        {"no day", {}, "4"},
        {"no data", {2, 3, 2}, "2"},
        {"one excluded", {2, 1, 3}, "9"},
        {"no records and others", {4, 1, 2}, ""},
        {"a day with figures", {2, 0, 2}, ""},
        {"an unknown status is a day with figures", {1, 7}, ""},
    };
    auto graph = Make();
    for (const Case& c : kCases) { // one graph: a former judgement must not last
        graph.m_dwaStatus.RemoveAll();
        for (const DWORD status : c.statuses)
            graph.m_dwaStatus.Add(status);
        std::string painted;
        for (const std::string& line : LinesWith(DrawRecorded(graph, ""), "text"))
            if (line.ends_with("0000") && (painted.empty() || painted.back() != line[line.size() - 5]))
                painted += line[line.size() - 5];
        EXPECT_EQ(painted, c.painted) << c.why;
        EXPECT_EQ(graph.DrawNoRecordsMessage(), *c.painted == '4' ? -1 : 0) << c.why;
    }
}

TEST_F(FrameTest, Layout) {
    const struct Case {
        const char* why;
        CRect area;
        int titleSpace;
        CRect canvas;
    } kCases[] = {
        {"a chart's place", kArea, 3, CRect(173, 125, 1073, 501)}, // 524 - 474 / 20
        {"no margins below 50 and 20", CRect(0, 0, 49, 19), 3, CRect(73, 75, 49, 19)},
        {"with 50 and 20 one pixel", CRect(0, 0, 50, 20), 3, CRect(73, 75, 49, 19)},
    };
    for (const Case& c : kCases) {
        auto graph = Make();
        graph.m_nTitleSpace = c.titleSpace;
        DrawRecorded(graph, "", c.area);
        EXPECT_EQ(graph.m_rcCanvas, c.canvas) << c.why;
    }
}

TEST_F(FrameTest, Title) {
    auto graph = Make();
    graph.m_Title.m_strText = std::string(300, 'x').c_str();
    EXPECT_THAT(DrawRecorded(graph, "")[1], testing::HasSubstr("\" 102,51 6120x50 ")); // 255 characters of 24
    WriteProfile("TITLECOLOR_RGB=200,200,200\n");                                      // the background's
    auto hidden = Make();
    EXPECT_THAT(LinesWith(DrawRecorded(hidden, ""), "text \"Steps\""), SizeIs(0));
    EXPECT_EQ(hidden.m_rcTitle, CRect(102, 51, 222, 101)) << "keeps its room";
    EXPECT_EQ(hidden.m_rcCanvas.top, 125);
}

TEST_F(FrameTest, Failures) {
    Frame graph(nullptr, nullptr, "STEPS", nullptr, nullptr, nullptr);
    EXPECT_EQ(graph.Draw(kArea, nullptr), 201);
    EXPECT_EQ(graph.m_rcGraph, CRect()) << "nothing has changed";
    const HDC shared = CreateMemorySurface(1200, 600);
    const std::size_t before = LiveObjectCount();
    {
        Frame failing(nullptr, shared, "STEPS", shared, nullptr, nullptr);
        failing.m_throws = true;
        EXPECT_EQ(failing.Draw(kArea, nullptr), -999);
        failing.m_throws = false;
        EXPECT_EQ(failing.Draw(kArea, nullptr), 0);
        failing.SetDirectOutput(1); // the surface of before is let go, the caller's is kept
        EXPECT_EQ(failing.Draw(kArea, nullptr), 0);
        EXPECT_EQ(failing.m_hMemDC, shared);
        EXPECT_EQ(failing.CreateCompatibleDC(shared), shared);
    }
    EXPECT_EQ(LiveObjectCount(), before);
    DeleteDC(shared);
}

TEST_F(FrameTest, Surfaces) {
    const HDC first = CreateRecordingSurface(1200, 600);
    const HDC second = CreateRecordingSurface(1200, 600);
    Frame graph(nullptr, m_record, "STEPS", nullptr, nullptr, first);
    graph.Initialize(nullptr, m_record, first, second, nullptr);
    graph.Initialize(nullptr, m_record, nullptr, nullptr, nullptr); // null keeps the former ones
    EXPECT_EQ(graph.GetGMemDC(), first);
    EXPECT_EQ(graph.GetGMemDCCir(), second);
    EXPECT_EQ(graph.GetGMemDCBalloon(), first);
    graph.m_nViewMode = 1;
    graph.Draw(kArea, nullptr);
    EXPECT_EQ(GetRecording(first), "");
    EXPECT_NE(GetRecording(second), "");
    graph.m_nViewMode = 2;
    graph.Draw(kArea, nullptr);
    EXPECT_EQ(GetRecording(first), GetRecording(second));
    DeleteDC(first);
    DeleteDC(second);
    EXPECT_EQ(CGraph::GetViewMode(205), 5);
    EXPECT_EQ(CGraph::GetViewMode(-205), -5);
}

} // namespace
