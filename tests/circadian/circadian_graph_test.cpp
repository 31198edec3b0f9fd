#include <MelkarCommon/circadian/circadian_graph.h>
#include <MelkarCommon/registry/shown_by.h>
#include <frame/contents_text.h>
#include <frame/host_fixture.h>

namespace {

// Text on a recording surface has fixed metrics: at 96 dpi a character of 12 points is 10 x 20, one of 14 points 12 x
// 24, one of 10 points 8 x 17, one of 32 points 26 x 54, one of the font of a new surface 8 x 15.
//
// In kArea the left panel stands at (144, 78) to (850, 278), 706 x 200: a level is 20 pixels high.
//   left    100 + 2 x 20 + 4       top     50 + trunc(1.2 x 24)
//   right   100 + 5 x 900 / 6      bottom  328 - trunc(2.5 x 20)
// The right panel stands at (880, 78) to (960, 278), 80 wide: a minute is two pixels.
//   left    850 + 30               right   1000 - 4 x 30 / 3
constexpr CRect kArea(100, 50, 1000, 328);

constexpr std::string_view kProfile =
    "LOCALE=C\nFONT=F\nCANVASCOLOR_RGB=250,250,250\nBASECOLOR_RGB=200,200,200\nPENCOLOR_RGB=1,2,3\n"
    "GRAPH_DATE_FORMAT_TYPE=DAY\nNORECORDS_COLOR_RGB=4,0,0\nNORECORDS_MESSAGE=none\nNODATA_COLOR_RGB=2,0,0\n"
    "NODATA_MESSAGE=nodata\nEXCLUDE_COLOR_RGB=9,0,0\nEXCLUDE_MESSAGE=left out\n"
    "[OWN]\nTITLELABEL=Title\nTITLESIZE=10\nTITLECOLOR_RGB=9,9,9\nDATECOLOR_RGB=0,0,99\nDATEBAKCOLOR_RGB=0,99,0\n"
    "VIGOROUSCOLOR_RGB=30,0,0\nMODERATECOLOR_RGB=20,0,0\nLIGHTCOLOR_RGB=10,0,0\nPOLYGONCOLOR_RGB=60,0,0\n"
    "EVENTCOLOR_RGB=70,0,0\nVIGOROUSLABEL=vig\nMODERATELABEL=mod\nLIGHTLABEL=light\nCALMLABEL=calmcalmcalmcalm\n"
    "INTENSITY=level\nMIN=min\nSTEPUNIT=steps\nACTCALUNIT=kcal  act\nTOTALCALUNIT=kcal\nTIMEUNIT=h\n"
    "EXERCISE_UNIT=Ex\nEXERCISE_LABEL=sport\nTOROKEN=flagged\nEXCLUDE_MESSAGE=day out\n";

/// A day as a host has it; what `Set` takes.
struct Day {
    double from = 4, to = 6;
    std::vector<const char*> levels = {"3.2", "", "40", "39"};
    std::vector<const char*> events = {"", "0", "1230", "", "", "", "", "", "", "", "600"}; ///< ten are looked at
    std::vector<double> intensity = std::vector<double>(CCircadianGraph::kValues, 0.0);
    int status = 0;
    int toroken = 0;
    float exercise = 2.5F;
};

void SetDay(CCircadianGraph& graph, const Day& day) {
    CStringArray levels = Texts(day.levels), events = Texts(day.events);
    std::vector<double> intensity = day.intensity;
    graph.Set(graph.m_hWnd, graph.m_hDC, CRect(), "", "", day.from, day.to, &levels, "20260302", 1, 0, &events,
              intensity.data(), day.status, 8123, 321, 1987, 1.25, day.toroken, day.exercise);
}

class CircadianGraph : public HostTest {
protected:
    CircadianGraph() { m_files.Write("conf/config.cnf", "[SYSTEM]\nDAY=%d.%m.%Y\n"); }

    CCircadianGraph MakeDay(int lang) {
        m_files.Write("conf/graph.cnf", "[COMMON]\nLANG=" + std::to_string(lang) + "\n" + std::string(kProfile));
        return Make<CCircadianGraph>();
    }
    std::vector<std::string> DrawRecorded(CCircadianGraph& graph, CRect area = kArea) {
        return LinesOf(Record(graph, "", area));
    }
    std::vector<std::string> DrawDay(int lang, const Day& day) {
        CCircadianGraph graph = MakeDay(lang);
        SetDay(graph, day);
        return DrawRecorded(graph);
    }
};

/// The record without the hours, and with one line for the day's profile and its outline.
std::vector<std::string> InBrief(const std::vector<std::string>& lines) {
    std::vector<std::string> brief;
    bool outline = false;
    for (const std::string& line : lines) {
        const bool profile = line.ends_with("fill #3C0000");
        outline = profile || (outline && line.starts_with("line "));
        if (profile)
            brief.push_back("profile");
        else if (!outline && !line.ends_with("#000000 w1") && line.find(",288 ") == std::string::npos)
            brief.push_back(line);
    }
    return brief;
}

TEST_F(CircadianGraph, WholeDay) {
    EXPECT_THAT(
        InBrief(DrawDay(0, {})),
        ElementsAre(
            "fill 100,50 900x278 #C8C8C8", "fill 144,78 706x200 #FAFAFA",
            // a line for each level
            "line 144,98 850,98 #010203 w1", "line 144,118 850,118 #010203 w1", "line 144,138 850,138 #010203 w1",
            "line 144,158 850,158 #010203 w1", "line 144,178 850,178 #010203 w1", "line 144,198 850,198 #010203 w1",
            "line 144,218 850,218 #010203 w1", "line 144,238 850,238 #010203 w1", "line 144,258 850,258 #010203 w1",
            // classes: borders at the levels 6.5 and 3.5, labels around the middles 118, 178 and 238
            "fill 100,88 40x60 #1E0000", "fill 100,148 40x60 #140000", "fill 100,208 40x60 #0A0000",
            "text \"vig\" 110,133 30x20 \"F 16\" #000000 angle 900",
            "text \"mod\" 110,193 30x20 \"F 16\" #000000 angle 900",
            "text \"light\" 110,263 50x20 \"F 16\" #000000 angle 900",
            "text \"02.03.2026\" 100,51 120x24 \"F 19\" #000000",
            // the event at 706 x 750 / 1440
            "polygon 504,308 519,308 511,293 fill #460000", "profile",
            // indented by a twentieth of the height and a star
            "text \"8123 steps 321 kcal  act 1987 kcal sport 2.5Ex\" 164,88 460x20 \"F 16\" #000000",
            "line 144,78 850,78 #010203 w1", "line 850,78 850,278 #010203 w1", "line 850,278 144,278 #010203 w1",
            "line 144,278 144,78 #010203 w1",
            // minutes at the levels: figures centred on 20 pixels a level
            "fill 880,78 80x200 #FAFAFA", "text \"1\" 867,248 10x20 \"F 16\" #000000",
            "text \"2\" 867,228 10x20 \"F 16\" #000000", "text \"3\" 867,208 10x20 \"F 16\" #000000",
            "text \"4\" 867,188 10x20 \"F 16\" #000000", "text \"5\" 867,168 10x20 \"F 16\" #000000",
            "text \"6\" 867,148 10x20 \"F 16\" #000000", "text \"7\" 867,128 10x20 \"F 16\" #000000",
            "text \"8\" 867,108 10x20 \"F 16\" #000000", "text \"9\" 867,88 10x20 \"F 16\" #000000",
            "text \"0\" 875,282 10x20 \"F 16\" #000000", "line 920,78 920,278 #010203 w1 dot 3,3",
            "text \"20\" 910,282 20x20 \"F 16\" #000000", "text \"40\" 950,282 20x20 \"F 16\" #000000",
            "text \"min\" 950,306 30x20 \"F 16\" #000000", "text \"level\" 880,56 50x20 \"F 16\" #000000",
            // 3.2 minutes: the figure clears the dots under it
            "fill 880,249 6x1 #010203", "fill 880,266 6x1 #010203", "fill 880,250 1x16 #010203",
            "fill 885,250 1x16 #010203", "fill 881,250 4x16 #0A0000", "fill 889,248 30x20 #FAFAFA",
            "text \"3.2\" 889,248 30x20 \"F 16\" #000000",
            // no bar, but a figure
            "fill 883,228 30x20 #FAFAFA", "text \"0.0\" 883,228 30x20 \"F 16\" #000000",
            // 40 minutes fill the panel; the figure stands at the bar's end
            "fill 880,209 80x1 #010203", "fill 880,226 80x1 #010203", "fill 880,210 1x16 #010203",
            "fill 959,210 1x16 #010203", "fill 881,210 78x16 #0A0000", "text \"40.0\" 920,208 40x20 \"F 16\" #000000",
            // 39 minutes leave no room behind the bar; the level is the first moderate one
            "fill 880,189 78x1 #010203", "fill 880,206 78x1 #010203", "fill 880,190 1x16 #010203",
            "fill 957,190 1x16 #010203", "fill 881,190 76x16 #140000", "text \"39.0\" 918,188 40x20 \"F 16\" #000000",
            "line 880,78 960,78 #010203 w1", "line 960,78 960,278 #010203 w1", "line 960,278 880,278 #010203 w1",
            "line 880,278 880,78 #010203 w1"));
}

/// Areas and texts are those of the record of the whole day.
TEST_F(CircadianGraph, TellsWhatItShows) {
    CCircadianGraph graph = MakeDay(0);
    Day day;
    day.toroken = 1;
    SetDay(graph, day);
    DrawRecorded(graph);
    const melkar::Contents shown = melkar::ShownBy(graph);
    EXPECT_EQ(shown.kind + "|" + shown.title + "|" + shown.unit, "day|02.03.2026|min");
    EXPECT_THAT(shown.texts, ElementsAre("8123 steps 321 kcal  act 1987 kcal sport 2.5Ex", "flagged"));
    EXPECT_THAT(shown.messages, IsEmpty()) << "a sheet has no days that could lack records";
    ASSERT_THAT(shown.items, SizeIs(9));
    EXPECT_EQ(shown.items[0].caption + "|" + shown.items[0].text + "|" + Figures(shown.items[0]),
              "1|3.2|0:3.2@880,249 886,267|");
    EXPECT_EQ(Text(shown.items[0].area), "880,249 960,267") << "with the figure behind the bar";
    EXPECT_EQ(Figures(shown.items[1]), "0:0.0@880,229 880,247|") << "an empty text is painted as 0";
    EXPECT_EQ(Figures(shown.items[2]), "0:40.0@880,209 960,227|") << "full, but not beyond";
    EXPECT_EQ(Figures(shown.items[3]), "1:39.0@880,189 958,207|");
    EXPECT_TRUE(shown.items[4].isMissing);
    ASSERT_THAT(shown.series, SizeIs(3));
    EXPECT_EQ(shown.series[1].name, "mod");
    EXPECT_EQ(shown.series[1].color, RGB(20, 0, 0));
    ASSERT_THAT(shown.marks, SizeIs(3));
    EXPECT_EQ(Text(shown.marks[0]), "mod||100,208 140,209") << "in the strip alone: each level has a line";
    EXPECT_EQ(Text(shown.marks[1]), "vig||100,148 140,149");
    EXPECT_EQ(Text(shown.marks[2]), "|12:30|504,293 519,308");
    EXPECT_EQ(shown.marks[2].value, 750);
    ASSERT_THAT(shown.axes, SizeIs(3));
    EXPECT_EQ(shown.axes[0].label + "|" + shown.axes[1].label, "level|min");
    EXPECT_EQ(shown.axes[1].to, 40);
}

TEST_F(CircadianGraph, TellsWhatItsLanguageAndItsStatusShow) {
    const std::tuple<const char*, int, int, std::size_t, std::size_t, std::string> cases[] = {
        // items, texts
        {"left panel alone", 1, 0, 0, 1, ""},
        {"excluded", 2, 1, 9, 1, "day out"},
        {"no data", 2, 3, 9, 1, "nodata"},
        {"no records: the message alone", 2, 4, 0, 0, "none"},
    };
    for (const auto& [why, lang, status, items, texts, message] : cases) {
        CCircadianGraph graph = MakeDay(lang);
        Day day;
        day.status = status;
        day.levels = {"40.1"};
        SetDay(graph, day);
        DrawRecorded(graph);
        const melkar::Contents shown = melkar::ShownBy(graph);
        EXPECT_EQ(shown.items.size(), items) << why;
        EXPECT_EQ(shown.texts.size(), texts) << why;
        EXPECT_EQ(shown.messages.empty() ? "" : shown.messages[0], message) << why;
        EXPECT_EQ(shown.axes.size(), items > 0 ? 3U : texts) << why << ": the hours are there without the levels";
        if (items > 0) {
            EXPECT_TRUE(shown.items[0].figures.at(0).isClipped) << why;
            EXPECT_EQ(Text(shown.marks.at(0)), "mod||144,208 850,209") << why << ": a line of its own";
        }
    }
}

TEST_F(CircadianGraph, HoursAndProfile) {
    Day day;
    day.intensity[0] = 5;
    day.intensity[719] = 1;
    const auto lines = DrawDay(0, day);
    EXPECT_THAT(lines, IsSupersetOf({"text \"1\" 168,288 10x20 \"F 16\" #000000", "line 173,274 173,282 #000000 w1",
                                     "text \"23\" 810,288 20x20 \"F 16\" #000000", "line 820,274 820,282 #000000 w1"}))
        << "706 x 23 / 24 is 676.6";
    EXPECT_THAT(lines, Not(Contains(StartsWith("text \"24\"")))) << "the day's end has no figure";
    const auto profile = LinesWith(lines, "polygon 144,278 144,178 144,278 145,278 ");
    ASSERT_EQ(profile.size(), 1U);
    EXPECT_THAT(profile[0], EndsWith(" 848,278 849,258 850,278 fill #3C0000"));
    EXPECT_EQ(std::count(profile[0].begin(), profile[0].end(), ','), 722);
    EXPECT_THAT(lines, IsSupersetOf({"line 144,278 144,178 #010203 w1", "line 849,258 850,278 #010203 w1"}))
        << "the outline runs up one side and down the other";
}

// What derived classes find on the surface behind each step; of red texts on opaque green.
TEST_F(CircadianGraph, StepsLeaveTheSurfaceTransparentAndBlack) {
    auto graph = MakeDay(0);
    SetDay(graph, {});
    DrawRecorded(graph);
    const std::string base = std::to_string(RGB(200, 200, 200)), canvas = std::to_string(RGB(250, 250, 250));
    const std::tuple<const char*, void (CCircadianGraph::*)(), std::string> cases[] = {
        {"classes", &CCircadianGraph::DrawClasses, "transparent red green"},
        {"date", &CCircadianGraph::DrawDate, "transparent 0 " + base},
        {"events", &CCircadianGraph::DrawEvent, "opaque red green"},
        {"profile", &CCircadianGraph::DrawPolygon, "transparent red green"},
        {"summary", &CCircadianGraph::WriteMessage, "opaque red green"},
        {"right panel", &CCircadianGraph::DrawRightGraph, "transparent 0 " + canvas},
    };
    for (const auto& [step, paint, left] : cases)
        EXPECT_EQ(LeftBy([&, paint = paint] { (graph.*paint)(); }), left) << step;
    // The summary takes what they left.
    LeftBy([&] { graph.WriteMessage(); });
    const auto lines = LinesOf(GetRecording(m_record));
    EXPECT_THAT(lines.end()[-2], AllOf(StartsWith("fill 164,88 "), EndsWith("#00FF00")));
    EXPECT_THAT(lines.back(), AllOf(StartsWith("text \"8123"), EndsWith("#FF0000")));
}

// What differs from LANG 0 by the language alone.
TEST_F(CircadianGraph, Languages) {
    for (const int lang : {1, 2}) {
        const auto lines = DrawDay(lang, {});
        const bool wide = lang == 1; // 1000 - 900 / 50
        EXPECT_THAT(lines, Contains(wide ? "line 144,208 982,208 #010203 w1" : "line 144,208 850,208 #010203 w1"));
        EXPECT_THAT(lines, Contains(wide ? "line 144,148 982,148 #010203 w1" : "line 144,148 850,148 #010203 w1"));
        EXPECT_THAT(lines, Not(Contains(StartsWith("line 144,98 ")))) << "lines on the class borders only";
        EXPECT_EQ(LinesWith(lines, "text \"level\"").size(), lang == 1 ? 0U : 1U) << "the right panel";
    }
}

TEST_F(CircadianGraph, Summary) {
    const std::tuple<const char*, int, int, float, const char*> cases[] = {
        {"exercise", 0, 0, 2.5F, "8123 steps 321 kcal  act 1987 kcal sport 2.5Ex@88"},
        {"an amount of 0 shows", 0, 0, 0.0F, "8123 steps 321 kcal  act 1987 kcal sport 0.0Ex@88"},
        {"so does anything above -1", 0, 0, -0.5F, "8123 steps 321 kcal  act 1987 kcal sport -0.5Ex@88"},
        {"none", 0, 0, -1.0F, "8123 steps 321 kcal  act 1987 kcal@88"},
        {"flagged", 0, 1, -1.0F, "8123 steps 321 kcal  act 1987 kcal@88|flagged@108"},
        {"time, and a line break for two blanks", 1, 0, 2.5F, "8123 steps 321 kcal@88|act 1987 kcal 1.2 h@108"},
        {"flagged, with a blank before it", 2, 9, 2.5F, "8123 steps 321 kcal@88|act 1987 kcal 1.2 h@108| flagged@128"},
    };
    for (const auto& [why, lang, toroken, exercise, text] : cases) {
        Day day;
        day.toroken = toroken;
        day.exercise = exercise;
        EXPECT_EQ(TextsAt(DrawDay(lang, day), lang == 0 ? 164 : 154), text) << why; // 164 is behind the star's room
    }
}

TEST_F(CircadianGraph, Statuses) {
    // A message is centred on x = 550, y = 50 + 278 / 2 - 54 / 2 = 162.
    const std::tuple<const char*, int, bool, std::string> cases[] = {
        {"figures", 0, true, ""},
        {"excluded, in words of its own", 1, true, "text \"day out\" 459,162 182x54 \"F 43\" #090000"},
        {"no data, in those of all graphs", 2, true, "text \"nodata\" 472,162 156x54 \"F 43\" #020000"},
        {"no data either", 3, true, "text \"nodata\" 472,162 156x54 \"F 43\" #020000"},
        {"no records: the message alone", 4, false, "text \"none\" 498,162 104x54 \"F 43\" #040000"},
        {"any other is like figures", 5, true, ""},
    };
    for (const auto& [why, status, panels, message] : cases) {
        Day day;
        day.status = status;
        const auto lines = DrawDay(2, day);
        EXPECT_EQ(LinesWith(lines, "fill 144,78 706x200").size(), panels ? 1U : 0U) << why;
        const bool isOverAll = lines.back().find("\"F 43\"") != std::string::npos;
        EXPECT_EQ(isOverAll ? lines.back() : "", message) << why;
    }
}

TEST_F(CircadianGraph, SetReplacesTheWholeDay) {
    CCircadianGraph graph = MakeDay(0);
    Day day;
    day.intensity[3] = 5;
    SetDay(graph, day);
    day.levels = {"1"};
    day.events = {"600"};
    SetDay(graph, day);
    EXPECT_EQ(graph.m_saLevelMinutes.GetSize(), 1);
    EXPECT_EQ(graph.m_saEvents.GetSize(), 1);
    graph.Set(nullptr, m_record, CRect(), "", "", 4, 6, nullptr, "20260302", 1, 0, nullptr, nullptr, 0, 1, 2, 3, 0, 0,
              0);
    EXPECT_EQ(graph.m_saLevelMinutes.GetSize(), 0) << "no array is an empty one";
    EXPECT_EQ(graph.m_saEvents.GetSize(), 0);
    EXPECT_EQ(graph.m_dIntensity[3], 0) << "no values are a day at rest";
    for (const CRect& area : {CRect(5, 6, 70, 80), CRect(0, 0, 9, INT_MAX)}) { // beyond all bounds: no area
        graph.Set(nullptr, m_record, area, "", "", 4, 6, nullptr, "", 1, 0, nullptr, nullptr, 0, 1, 2, 3, 0, 0, 0);
        EXPECT_EQ(graph.m_rcGraph, area.left == 5 ? area : CRect());
    }
}

TEST_F(CircadianGraph, WithoutADayThereIsAnEmptyOneWithTheUsualBounds) {
    CCircadianGraph graph = MakeDay(0);
    const auto lines = DrawRecorded(graph);
    EXPECT_EQ(TextsAt(lines, 164), "0 steps 0 kcal  act 0 kcal@88") << "status 0, no exercise";
    EXPECT_THAT(lines, Contains("fill 100,148 40x60 #140000")) << "moderate from 4 to 6";
    EXPECT_THAT(lines, Not(Contains(StartsWith("text \"Title")))) << "the sheet has no title";
    CCircadianGraph other = MakeDay(2);
    EXPECT_THAT(DrawRecorded(other), Contains("fill 100,132 40x92 #140000")) << "from 3.2 to 6.8";
}

TEST_F(CircadianGraph, NarrowDesktopsHaveASmallerSummary) {
    for (const int width : {820, 821}) {
        SetWorkArea({5, 0, 5 + width, 600});
        EXPECT_EQ(MakeDay(0).m_nSummaryFontSize, width == 820 ? 10 : 12);
    }
    SetWorkArea({0, 0, 1920, 1080});
}

TEST_F(CircadianGraph, TheFirstOfTheWidestDayNamesIsTheLongest) {
    CCircadianGraph graph = MakeDay(0);
    EXPECT_EQ(graph.m_strDayNames[0], "Mon");
    EXPECT_EQ(graph.m_strDayNames[6], "Sun");
    DrawRecorded(graph); // there is a surface to measure on
    graph.m_strDayNames[0] = "Mo";
    graph.CalcLongestDay();
    EXPECT_EQ(graph.m_strLongestDay, "Tue");
}

} // namespace
