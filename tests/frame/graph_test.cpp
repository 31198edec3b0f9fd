#include <bars/chart_fixture.h>

#include <stdexcept>

namespace {

/// The frame alone, with statuses from the test.
class Frame : public CGraph {
public:
    using CGraph::CGraph;
    void SetCanvasRect() override {
        if (m_throws)
            throw std::runtime_error("a step that fails");
        CGraph::SetCanvasRect();
    }
    bool m_throws = false;
};

class FrameTest : public ChartTest {};

TEST_F(FrameTest, Messages) {
    const std::tuple<const char*, std::vector<DWORD>, std::string> cases[] = {
        {"no records", {4, 4}, "no records "},
        {"no data", {2, 3, 2}, "no data "},
        {"one excluded", {2, 1, 3}, "excluded "},
    };
    auto graph = Make<Frame>();
    for (const auto& [why, statuses, message] : cases) { // one graph: a former judgement must not last
        graph.m_dwaStatus.RemoveAll();
        for (const DWORD status : statuses)
            graph.m_dwaStatus.Add(status);
        std::string painted;
        for (const std::string& line : LinesWith(DrawRecorded(graph, ""), "text", "0000"))
            painted += line.substr(6, line.find('"', 6) - 6) + " ";
        EXPECT_EQ(painted, message) << why;
        EXPECT_EQ(graph.DrawNoRecordsMessage(), message == "no records " ? -1 : 0) << why;
    }
    // Two lines of 43 x 1.25 = 54 (32 points are 43 pixels, 26 a character), the block in the middle of the height.
    graph.m_dwaStatus.RemoveAll();
    EXPECT_THAT(LinesWith(DrawRecorded(graph, ""), "text \"", "#040000"),
                ElementsAre("text \"no\" 570,233 52x54 \"Fixed 43\" #040000",
                            "text \"records\" 505,287 182x54 \"Fixed 43\" #040000"));
}

/// What derived classes find on the surface behind the frame's steps; of red texts on opaque green.
TEST_F(FrameTest, TitleAndMessagesLeaveBlackAndTheirMode) {
    auto graph = Make<Frame>();
    DrawRecorded(graph, "");
    graph.m_bNoRecords = graph.m_bNoData = 1;
    EXPECT_EQ(LeftBy([&] { graph.DrawTitle(); }), "transparent 0 green");
    graph.m_Title.m_nBkMode = OPAQUE;
    EXPECT_EQ(LeftBy([&] { graph.DrawTitle(); }), "opaque 0 green");
    EXPECT_EQ(LeftBy([&] { graph.DrawNoDataMessage(); }), "opaque 0 green") << "in the mode that it finds";
    EXPECT_EQ(LeftBy([&] {
                  SetBkMode(m_record, TRANSPARENT);
                  graph.DrawNoDataMessage();
              }),
              "transparent 0 green");
    EXPECT_EQ(LeftBy([&] {
                  SetBkMode(m_record, TRANSPARENT);
                  graph.DrawNoRecordsMessage();
              }),
              "opaque 0 green");
    EXPECT_THAT(LinesOf(GetRecording(m_record)).back(), StartsWith("text \"records\""));
}

TEST_F(FrameTest, Layout) {
    auto graph = Make<Frame>();
    DrawRecorded(graph, "", CRect(0, 0, 49, 19));
    EXPECT_EQ(graph.m_rcCanvas, CRect(73, 75, 49, 19)) << "no margins below 50 and 20";
    graph.m_nTitleSpace = 4; // half a title more
    graph.m_Title.m_strText = std::string(300, 'x').c_str();
    EXPECT_THAT(DrawRecorded(graph, "")[1], HasSubstr("\" 102,51 6120x50 ")); // 255 characters of 24
    EXPECT_EQ(graph.m_rcCanvas, CRect(173, 150, 1073, 501));                  // 524 - 474 / 20
    const std::string record = GetRecording(m_record);
    EXPECT_EQ(graph.MeasureText("ab", DT_CENTER), graph.MeasureText("ab", DT_CENTER | DT_CALCRECT));
    EXPECT_EQ(graph.MeasureText("ab", DT_CENTER).Width(), 2 * graph.MeasureText("a", DT_CALCRECT).Width());
    EXPECT_EQ(GetRecording(m_record), record) << "measuring paints nothing, whatever its flags";
    WriteProfile("TITLECOLOR_RGB=200,200,200\n");
    auto hidden = Make<Frame>();
    EXPECT_TRUE(LinesWith(DrawRecorded(hidden, ""), "text \"Steps\"").empty()) << "in the background's colour";
    EXPECT_EQ(hidden.m_rcCanvas.top, 125) << "keeps its room";
}

TEST_F(FrameTest, Failures) {
    Frame graph(nullptr, nullptr, "OWN", nullptr, nullptr, nullptr);
    EXPECT_EQ(graph.Draw(kArea, nullptr), 201);
    EXPECT_EQ(graph.m_rcGraph, CRect()) << "nothing has changed";
    auto failing = Make<Frame>();
    failing.m_throws = true;
    EXPECT_EQ(failing.Draw(kArea, nullptr), -999);
    failing.m_throws = false;
    failing.SetDirectOutput(1); // the surface of before is let go, the caller's is kept
    EXPECT_EQ(failing.Draw(kArea, nullptr), 0);
    EXPECT_EQ(failing.m_hMemDC, m_record);
}

TEST_F(FrameTest, Surfaces) {
    const HDC first = CreateRecordingSurface(1200, 600);
    const HDC second = CreateRecordingSurface(1200, 600);
    Frame graph(nullptr, m_record, "OWN", nullptr, nullptr, first);
    graph.Initialize(nullptr, m_record, first, second, nullptr);
    graph.Initialize(nullptr, m_record, nullptr, nullptr, nullptr); // null keeps the former ones
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
}

} // namespace
