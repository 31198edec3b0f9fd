#include <MelkarCommon/platform/tests/temp_workdir.h>

#include <MelkarCommon/frame/graph.h>
#include <MelkarCommon/frame/key_table.h>

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

struct Corner {
    float x = 0;
    float y = 0;
};
struct Note {
    CString text;
    COLORREF mark = 0;
};
struct Panel {
    struct Rows;
    COLORREF back = 0, border = 0;
    CString format, face, own;
    POINT offset{7, 7};
    int hasScale = 0, width = 9;
    Corner left, right;
    std::vector<Note> notes = std::vector<Note>(5);
    std::vector<Note> slices;
};

struct Panel::Rows : melkar::Keys<Panel> {
    static constexpr Gate Scale{"SCALE", On<&G::hasScale>};
    static constexpr Row rows[] = {
        Color<&G::back>(Own, "BASE", "panel").Else(0xffffff),
        Color<&G::border>(Own, "BORDER", "its border").Else<&G::back>("BASE"),
        Text<&G::format>(Own, "FORMAT", "figures").Else("%.0f"),
        Text<&G::face>(Common, "FACE", "face"),
        Text<&G::own>(Own, "%s_FACE", "face of one text").Else<&G::face>("FACE"),
        Point<&G::offset>(Own, "OFFSET", "title"),
        TrueWord<&G::hasScale>(Own, "SCALE", "scale"),
        Number<&G::width>(Own, "WIDTH", 0, "of the scale").When(Scale),
        Real<melkar::In<&G::left, &Corner::x>, melkar::In<&G::right, &Corner::x>>(Own, "MAX", "both tops"),
        TextList<&G::notes, &Note::text>(Own, "NOTE%d", "notes"),
        ColorOfEach<&G::notes, &Note::mark>(Own, "MARK%d", "their marks"),
        ColorList<&G::slices, &Note::mark>(Own, "SLICE%d", "slices"),
    };
};

Panel Read(const std::string& profile) {
    const TempWorkdir work;
    const std::string path = work.Write("conf/p.cnf", profile);
    Panel panel;
    melkar::ReadKeys(Panel::Rows::rows, panel, melkar::KeyReader(path.c_str(), "A", "TITLE"));
    return panel;
}

TEST(KeyTable, ValuesOfAllTypes) {
    const Panel panel =
        Read("[common]\nFACE=Mono\n[A]\nBASE=1,2,3\nBORDER=4,5,6\nFORMAT=%.1f\nTITLE_FACE=Serif\n"
             "OFFSET= 3 ,-4\nSCALE=True\nWIDTH=12\nMAX=-1.5e1kg\n"
             "NOTE1=a\nNOTE2=b\nNOTE4=d\nMARK2=0,0,9\nMARK4=1,1,1\nSLICE1=9,0,0\nSLICE2=0,0,0\nSLICE3=1,1,1");
    EXPECT_EQ(panel.back, RGB(1, 2, 3));
    EXPECT_EQ(panel.border, RGB(4, 5, 6));
    EXPECT_EQ(panel.format, "%.1f");
    EXPECT_EQ(panel.own, "Serif") << "the stem stands before it";
    EXPECT_EQ(CPoint(panel.offset), CPoint(3, -4));
    EXPECT_EQ(panel.width, 12);
    EXPECT_EQ(panel.left.x, -15.0F);
    EXPECT_EQ(panel.right.x, -15.0F) << "one key, two targets";
    ASSERT_EQ(panel.notes.size(), 2U) << "the third is missing, and the former five are gone";
    EXPECT_EQ(panel.notes[1].text, "b");
    EXPECT_EQ(panel.notes[0].mark, 0U);
    EXPECT_EQ(panel.notes[1].mark, RGB(0, 0, 9));
    EXPECT_EQ(panel.slices.size(), 1U) << "black ends the slices";
}

TEST(KeyTable, DefaultsAndGates) {
    const Panel panel =
        Read("[COMMON]\nFACE=Mono\nSCALE=true\n[A]\nBASE=1,2,3\nSCALE=1\nWIDTH=12\nOFFSET=5\nMAX=1e999\n");
    EXPECT_EQ(panel.border, RGB(1, 2, 3)) << "the colour just read";
    EXPECT_EQ(panel.format, "%.0f");
    EXPECT_EQ(panel.own, "Mono") << "the text just read";
    EXPECT_EQ(CPoint(panel.offset), CPoint(0, 0)) << "no comma";
    EXPECT_EQ(panel.hasScale, 0) << "1 isn't the word, and COMMON stands in for no own key";
    EXPECT_EQ(panel.width, 9) << "not read behind a switch that is off";
    EXPECT_TRUE(panel.left.x > 1e38F && panel.left.x < INFINITY);
    EXPECT_TRUE(panel.notes.empty() && panel.slices.empty());
    EXPECT_EQ(Read("").border, 0xffffffU);
}

TEST(KeyTable, GraphsOfOneSheetShareOneReading) {
    const TempWorkdir work;
    const auto formatOf = [&work](const char* written) {
        work.Write("conf/graph.cnf", std::string("[A]\nFORMAT=") + written);
        Panel panel;
        melkar::ReadKeys(Panel::Rows::rows, panel, melkar::KeyReader("", "A"));
        return panel.format;
    };
    {
        const melkar::SharedProfile sheet;
        EXPECT_EQ(formatOf("one"), "one");
        EXPECT_EQ(formatOf("two"), "one") << "the file as it stood";
    }
    EXPECT_EQ(formatOf("three"), "three");
}

TEST(KeyTable, OneLineInTheLogPerGraphForAMissingProfile) {
    const char* const cases[][3] = {
        {nullptr, "A", "can't read the profile ..\\conf\\graph.cnf"},
        {"[B]\n", "A", "no section [A] in the profile"},
        {"[ a ]\n", "A", nullptr},
    };
    for (const auto& [profile, section, line] : cases) {
        const TempWorkdir work;
        if (profile)
            work.Write("conf/graph.cnf", profile);
        { const CGraph graph(nullptr, nullptr, section, nullptr, nullptr, nullptr); }
        const std::string log = work.Read("log/graph.log");
        EXPECT_EQ(log.find(line ? line : "profile") != std::string::npos, line != nullptr) << log;
    }
}

} // namespace
