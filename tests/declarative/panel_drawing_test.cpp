#include "panel_fixture.h"

namespace {

/// The texts of a record with their places: "\"0\" 145,290".
std::vector<std::string> Places(const std::vector<std::string>& lines) {
    std::vector<std::string> places;
    for (const std::string& line : LinesWith(lines, "text"))
        places.push_back(line.substr(5, line.find(' ', line.find(' ', 5) + 1) - 5));
    return places;
}

class Panel : public PanelTest {
protected:
    /// A bare panel reads its keys on demand.
    std::vector<std::string> Draw(std::string_view keys, CRect area = kPanel) {
        WriteProfile(keys);
        auto graph = Make<CGraphBase>();
        ReadProfile(graph);
        return DrawRecorded(graph, area);
    }
};

TEST_F(Panel, HasAGroundAndTheGraphAreaItsOwnWithinFrames) {
    const auto lines = Draw("BASE_BORDER_RGB=9,0,0\nBASE_BORDER_WIDTH=3\n");
    EXPECT_THAT(lines, Contains("fill 103,53 394x294 #0A0A0A"));
    EXPECT_THAT(lines, Contains("fill 162,102 276x196 #141414"));
    EXPECT_THAT(LinesWith(lines, "fill", "#090000"), SizeIs(4));
    EXPECT_THAT(LinesWith(lines, "fill", "#000000"), SizeIs(4)) << "two wide and black, whatever the profile";
}

TEST_F(Panel, TitleHasAHeightOrIsntThere) {
    constexpr std::string_view keys = "TITLE_LABEL=Weight\nTITLE_OFFSET_LT=10,5\nTITLE_OFFSET_R=20\nTITLE_FONT=20\n"
                                      "TITLE_LABEL_RGB=1,0,0\nTITLE_BK_RGB=2,0,0\n";
    const auto with = Draw(std::string(keys) + "TITLE_HEIGHT=31");
    // (110, 55) to (480, 86): 370 wide, the text 60 of it; (55 + 86) / 2 - 20 / 2.
    EXPECT_THAT(with, Contains("fill 110,55 370x31 #020000"));
    EXPECT_THAT(LinesWith(with, "text"), ElementsAre(AllOf(StartsWith("text \"Weight\" 265,60 60x20"),
                                                           HasSubstr("bold"), HasSubstr("#010000"))));
    EXPECT_THAT(LinesWith(Draw(keys), "text"), IsEmpty());
}

// Four divisions of 200 are 50 each; the scale (125, 75) to (155, 325), its bands centred on 300, 250, 200, 150 and
// 100.
TEST_F(Panel, FiguresCentreOnTheirLinesAndCaptionsStandBeyond) {
    constexpr std::string_view left = "GRAPH_VERTICAL_DIVIDE_L=4\nGRAPH_VERTICAL_MAX_L=100\nVERTICAL_SCALE_L=TRUE\n"
                                      "VERTICAL_SCALE_OFFSET_L=5\nVERTICAL_SCALE_WIDTH_L=30\nVERTICAL_SCALE_FONT_L=20\n"
                                      "VERTICAL_SCALE_FORMAT_L=%.0f\nVERTICAL_LABEL_WIDTH_L=20\n"
                                      "VERTICAL_LABEL_FONT_L=20\nVERTICAL_LABEL_L=kg\n";
    // The caption reads upwards: 105 + (20 - 20) / 2, 325 - (250 - 20) / 2.
    EXPECT_THAT(Places(Draw(left)), ElementsAre("\"0\" 145,290", "\"25\" 135,240", "\"50\" 135,190", "\"75\" 135,140",
                                                "\"100\" 125,90", "\"kg\" 105,210"));
    EXPECT_THAT(LinesWith(Draw("VERTICAL_SCALE_L=yes\n" +
                               std::string(left).replace(left.find("VERTICAL_SCALE_L=TRUE"), 21, "X=1")),
                          "text"),
                IsEmpty())
        << "a switch is on by the word \"true\" alone";
}

// Two divisions a scale: steps of 100 and 140, the right scale (445, 50) to (475, 350) with its caption to 495, the one
// below (90, 304) to (510, 334) with its caption to 358.
TEST_F(Panel, FiguresAndCaptionsStandAtTheRightAndBelow) {
    constexpr std::string_view keys =
        "GRAPH_VERTICAL_DIVIDE_R=2\nGRAPH_VERTICAL_MAX_R=50\nVERTICAL_SCALE_R=true\nVERTICAL_SCALE_OFFSET_R=5\n"
        "VERTICAL_SCALE_WIDTH_R=30\nVERTICAL_SCALE_FONT_R=20\nVERTICAL_SCALE_FORMAT_R=%.0f\n"
        "VERTICAL_LABEL_WIDTH_R=20\nVERTICAL_LABEL_FONT_R=20\nVERTICAL_LABEL_R=kg\n"
        "GRAPH_HORIZONTAL_DIVIDE=2\nGRAPH_HORIZONTAL_MAX=10\nHORIZONTAL_SCALE_OFFSET=4\n"
        "HORIZONTAL_SCALE_HEIGHT=30\nHORIZONTAL_SCALE_FONT=20\nHORIZONTAL_SCALE_FORMAT=%.0f\n"
        "HORIZONTAL_LABEL_HEIGHT=24\nHORIZONTAL_LABEL_FONT=20\nHORIZONTAL_LABEL=day\n";
    EXPECT_THAT(Places(Draw(keys)),
                ElementsAre("\"0\" 465,290", "\"25\" 455,190", "\"50\" 455,90", "\"kg\" 475,210",    // right-aligned
                            "\"0\" 155,309", "\"5\" 295,309", "\"10\" 430,309", "\"day\" 285,336")); // centred
}

TEST_F(Panel, EachAxisHasLinesAndTicksBetweenItsEnds) {
    const auto lines =
        LinesWith(Draw("GRAPH_VERTICAL_DIVIDE_L=2\nGRAPH_VERTICAL_DIVIDE_WIDTH_L=6\nGRAPH_VERTICAL_GRID_L=true\n"
                       "GRAPH_VERTICAL_DIVIDE_R=3\nGRAPH_VERTICAL_DIVIDE_WIDTH_R=7\n"
                       "GRAPH_HORIZONTAL_DIVIDE=2\nGRAPH_HORIZONTAL_DIVIDE_HEIGHT=8\n"
                       "GRAPH_HORIZONTAL_GRID=True\n"),
                  "line");
    std::vector<std::string> places;
    for (const std::string& line : lines)
        places.push_back(line.substr(5, line.find(" w") - 5) + (line.find("dot") == std::string::npos ? "" : " dot"));
    EXPECT_THAT(places, ElementsAre("160,200 440,200 #1E1E1E dot", "160,200 166,200 #000000",   // left
                                    "440,233 433,233 #000000", "440,166 433,166 #000000",       // right
                                    "300,300 300,100 #1E1E1E dot", "300,300 300,292 #000000")); // horizontal
}

TEST_F(Panel, NotesShowOneRowForEachNumberedKey) {
    constexpr std::string_view keys =
        "NOTE_OFFSET_LT=300,10\nNOTE_OFFSET_RB=20,190\nNOTE_BK_RGB=40,40,40\nNOTE_LABEL_FONT=20\n"
        "NOTE_MARK_WIDTH=25\nNOTE_LABEL1=a\nNOTE_MARK_RGB1=1,0,0\nNOTE_LABEL2=b\nNOTE_LABEL4=d\n";
    const auto lines = Draw(std::string(keys) + "NOTE_SHOW=true\n");
    // The box is (400, 60) to (480, 160): two rows of 50; marks 5 units within cells of 25 x 50.
    EXPECT_THAT(lines, Contains("fill 400,60 80x100 #282828"));
    EXPECT_THAT(lines, Contains(StartsWith("text \"a\" 425,75 10x20")));
    EXPECT_THAT(lines, Contains(StartsWith("text \"b\" 425,125 10x20")));
    EXPECT_THAT(LinesWith(lines, "text"), SizeIs(2)) << "the row of the first missing number ends the walk";
    EXPECT_THAT(lines, Contains("fill 406,66 13x38 #010000")) << "within a frame of one unit";
    EXPECT_THAT(LinesWith(Draw(keys), "text"), IsEmpty()) << "NOTE_SHOW is off";
    // A column of 4 less 5 on both sides: 405 to 399, put right, within a frame of one unit.
    EXPECT_THAT(Draw("NOTE_MARK_WIDTH=4\nNOTE_SHOW=true\n" + std::string(keys)), Contains("fill 400,66 4x38 #010000"));
}

TEST_F(Panel, ScaleWithoutDivisionsShowsItsEnds) {
    const auto lines =
        Draw("GRAPH_VERTICAL_MIN_R=40\nGRAPH_VERTICAL_MAX_R=90\nVERTICAL_SCALE_R=true\nVERTICAL_SCALE_WIDTH_R=40\n"
             "VERTICAL_SCALE_FONT_R=20\nVERTICAL_SCALE_FORMAT_R=%s%n\n");
    EXPECT_THAT(LinesWith(lines, "text \"40\""), SizeIs(1)) << "a hostile format yields to the default one";
    EXPECT_THAT(LinesWith(lines, "text \"90\""), SizeIs(1));
    EXPECT_THAT(m_files.Read("log/graph.log"), HasSubstr("isn't one of a figure: %s%n"));
}

TEST_F(Panel, NotesOutOfRangeAreEmptyAndStayOut) {
    Draw("NOTE_SHOW=true\nNOTE_LABEL1=a\nNOTE_MARK_RGB1=1,0,0\n");
    auto graph = Make<CGraphBase>();
    ReadProfile(graph);
    graph.SetNoteLabel(-1, "x");
    graph.SetNoteLabel(1, "x");
    graph.SetNoteLabel(0, "b");
    EXPECT_EQ(graph.GetNoteLabelCount(), 1);
    EXPECT_EQ(graph.GetNoteLabel(0) + graph.GetNoteLabel(1) + graph.GetNoteLabel(-1), "b");
    EXPECT_EQ(graph.GetNoteLabelColor(0), 1U);
    EXPECT_EQ(graph.GetNoteLabelColor(-1), 0U);
}

TEST_F(Panel, RectangleTextNeedsThreeCommas) {
    const auto text = [](const char* of) {
        const auto value = CGraphBase::GetRectValue(of);
        std::ostringstream all;
        all << value.left << ' ' << value.top << ' ' << value.right << ' ' << value.bottom;
        return all.str();
    };
    EXPECT_EQ(text("1,2.5,3,4"), "1 2.5 3 4");
    EXPECT_EQ(text("1,2,3,4,5"), "1 2 3 4");
    EXPECT_EQ(text("1,2,3"), "0 0 0 0");
    EXPECT_EQ(text("%n,%s"), "0 0 0 0");
    EXPECT_THAT(m_files.Read("log/graph.log"), HasSubstr("GetRectValuevalue[%n,%s] Error."));
}

} // namespace
