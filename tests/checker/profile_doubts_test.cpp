#include "doubt_places.h"

#include <MelkarCommon/checker/doubts.h>
#include <MelkarCommon/checker/placed_profile.h>
#include <MelkarCommon/checker/spelling.h>
#include <MelkarCommon/platform/files/profile_snapshot.h>
#include <MelkarCommon/platform/tests/temp_workdir.h>
#include <MelkarCommon/registry/catalogue.h>
#include <MelkarCommon/registry/key_reference.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace {

using melkar::Doubt;
using testing::HasSubstr;

std::string Replaced(std::string text, const std::string& what, const std::string& by) {
    const auto at = what.empty() ? text.size() : text.find(what);
    if (at == std::string::npos)
        throw std::runtime_error("not in the profile: " + what);
    return text.replace(at, what.size(), by);
}

/// A mistake in the starting profile of a kind.
struct Mistake {
    const char* what;
    const char* kind;
    const char* from; ///< this text becomes the next one; empty: that goes to the end
    const char* to;
    const char* rules; ///< all that are told, in the order of the lines
    const char* says;  ///< among others
};

const Mistake kMistakes[] = {
    {"a misspelled key", "bar", "CHARTMAX=", "CHARTMXA=", "unknown-key", "did you mean CHARTMAX?"},
    {"a numbered one", "bmi", "CLASSCOLOR3_RGB", "CLASSCOLR3_RGB", "unknown-key", "did you mean CLASSCOLOR3_RGB?"},
    {"a key that nothing reads", "bar", "", "FOO=1\n", "unknown-key", "FOO: nothing reads this key"},
    {"a colour as in web pages", "bar", "124,146,172", "#dc7878", "color", "write 220,120,120"},
    {"a colour's name", "bar", "124,146,172", "red", "color", "write 255,0,0"},
    {"two parts", "bar", "124,146,172", "124,146", "color", "not a colour"},
    {"a part above 255", "bar", "124,146,172", "300,146,172", "color-range",
     "300 is beyond 0 to 255, and counts as 44"},
    {"thousands", "bar", "CHARTMAX=14000", "CHARTMAX=14,000", "number", "is read as 14; write 14000"},
    {"a unit", "bar", "CHARTMAX=14000", "CHARTMAX=14000 steps", "number", "is read as 14000"},
    {"a decimal comma", "bmi", "=18.5", "=18,5", "number", "is read as 18; write 18.5"},
    {"a top below the bottom", "bar", "", "CHARTMIN=20000\n", "empty-scale", "from 20000 to 14000"},
    {"a panel's", "plot", "VERTICAL_MIN_L=70", "VERTICAL_MIN_L=80", "empty-scale", "from 80 to 80"},
    {"an interval of 0", "bar", "INTERVAL=2000", "INTERVAL=0", "interval", "not a step above 0: \"0\""},
    {"an interval in words", "bar", "INTERVAL=2000", "INTERVAL=many", "number", "\"many\" is read as 0"},
    {"none for the big scale", "bar", "", "CHARTMAX_BIG=20000\n", "interval", "CHARTINTERVAL_BIG is missing"},
    {"more lines than rows", "bar", "INTERVAL=2000", "INTERVAL=20", "crowded-scale", "700"},
    {"more parts than pixels", "plot", "DIVIDE_L=5", "DIVIDE_L=1000", "crowded-scale", "more parts"},
    {"a top without a line", "bar", "INTERVAL=2000", "INTERVAL=3000", "uneven-scale", "doesn't divide"},
    {"no COMMON", "bar", "[COMMON]", "[COMON]", "missing-common", "no section [COMMON]"},
    {"COMMON twice", "bar", "", "[COMMON]\nFONT=\n", "double-section", "stands above already"},
    {"a key twice", "bar", "CHARTMAX=", "CHARTMAX=14000\nCHARTMAX=", "double-key", "counts there"},
    {"a colon", "bar", "CHARTMAX=14000", "CHARTMAX: 14000", "missing-key,line-form", "an equals sign"},
    {"an open bracket of COMMON", "bar", "[COMMON]", "[COMMON", "line-form", "no bracket closes"},
    {"another word than true", "plot", "SCALE_L=true", "SCALE_L=1", "true-word,closed-key*7", "off, for it is not"},
    {"a switch turned off", "plot", "SCALE_L=true", "SCALE_L=false", "switched-off*7", "which is \"false\""},
    {"a switch forgotten", "pie", "NOTE_SHOW=true\n", "", "missing-key,closed-key*11", "NOTE_SHOW"},
    {"a word for a number", "bar", "", "IS_PRINTTARGET=yes\n", "switch", "\"yes\" is read as 0"},
    {"half a point", "plot", "OFFSET_LT=104,88", "OFFSET_LT=104", "point", "not a point"},
    {"no conversion", "plot", "FORMAT_L=%.0f", "FORMAT_L=%d", "format", "\"%d\""},
    {"a gap in a list", "pie", "NOTE_LABEL2", "NOTE_LABEL4", "list-gap", "NOTE_LABEL2 is missing"},
    {"a key before all sections", "bar", "[COMMON]", "A=1\n[COMMON]", "stray-key", "A: stands before"},
    {"a key in a graph's section", "bar", "", "FONT=Inter\n", "wrong-section", "in [COMMON]"},
    {"a graph's key in COMMON", "bar", "[COMMON]", "[COMMON]\nCHARTMIN=0", "wrong-section", "of a graph"},
    {"a missing key", "bar", "BARSCOLOR_RGB=124,146,172\n", "", "missing-key", "[OWN] lacks BARSCOLOR_RGB"},
    {"series do as well", "bar", "BARSCOLOR_RGB", "BARSCOLOR0_RGB", "", ""},
    {"nothing is painted by it", "bar", "", "VAXSSIZE=9\n", "idle-key", "nothing is painted"},
    {"a key of another kind", "bar", "", "POLYGONCOLOR_RGB=1,2,3\n", "other-kind", "kind day, not of bar"},
    {"a box without width", "plot", "OFFSET_RB=40,84", "OFFSET_RB=800,84", "box-inside-out", "to 100,416 at 900x500"},
    {"one beyond the panel", "pie", "NOTE_OFFSET_RB=60,170", "NOTE_OFFSET_RB=-60,170", "box-outside", "to 960,330"},
    {"one in another", "pie", "NOTE_OFFSET_LT=600", "NOTE_OFFSET_LT=500", "box-overlap", "overlaps the graph area"},
    {"a pale title", "plot", "TITLE_LABEL_RGB=38,50,66", "TITLE_LABEL_RGB=130,140,150", "text-contrast",
     "a contrast of 2.8 to TITLE_BK_RGB"},
    {"a dark ground of black texts", "bar", "BASECOLOR_RGB=255,255,255", "BASECOLOR_RGB=90,90,90", "text-contrast",
     "to the texts on it"},
    {"the same under light texts", "bar", "BASECOLOR_RGB=255,255,255",
     "TEXTCOLOR_RGB=255,255,255\nBASECOLOR_RGB=90,90,90", "text-contrast", "a contrast of 1.0 to the texts"},
    {"a title that only keeps its room", "bar", "", "TITLECOLOR_RGB=255,255,255\n", "", ""},
    {"pale bars", "bar", "124,146,172", "200,210,220", "mark-contrast", "to CANVASCOLOR_RGB; it should be 3.0"},
    {"red beside green", "pie", "VALUE_RGB1=136,180,173", "VALUE_RGB1=255,190,190", "color-blind,grey", "red cones"},
    {"alike in grey", "circle", "MODERATECOLOR_RGB=26,100,104", "MODERATECOLOR_RGB=140,110,30", "grey", "LIGHT"},
    {"a face that isn't there", "bar", "[COMMON]", "[COMMON]\nFONT=No Such Face", "face", "stands in"},
    {"a text by another name", "text", "TEXT=Start slowly, and add a few minutes each week.\nTEXT", "A=S\nA", "", ""},
};

/// Rules that the tests of files and sections, and of data files, hold.
std::set<std::string> RulesOfOthers() {
    return {"unreadable", "bytes",     "no-section", "no-kind",      "foreign-section", "not-rows",
            "encoding",   "separator", "head",       "rows",         "length",          "columns",
            "date",       "status",    "date-order", "more-columns", "decimal-comma",   "status-beyond",
            "time",       "range",     "off-scale",  "no-color",     "no-page"};
}

/// "a*2" for two of a rule, in the order in which they are met.
std::string RulesOf(const std::vector<Doubt>& doubts) {
    std::vector<std::pair<std::string, int>> rules;
    for (const Doubt& doubt : doubts) {
        const auto same = [&](const auto& rule) { return rule.first == doubt.rule; };
        const auto found = std::find_if(rules.begin(), rules.end(), same);
        if (found == rules.end())
            rules.emplace_back(doubt.rule, 1);
        else
            ++found->second;
    }
    std::string text;
    for (const auto& [rule, count] : rules)
        text += (text.empty() ? "" : ",") + rule + (count > 1 ? "*" + std::to_string(count) : "");
    return text;
}

class ProfileDoubts : public testing::Test {
protected:
    std::vector<Doubt> Of(const std::string& profile, const char* section = "OWN", const char* kind = "bar") const {
        return melkar::Doubts(m_files.Write("conf/graph.cnf", profile), section, kind);
    }

    TempWorkdir m_files;
};

TEST_F(ProfileDoubts, TellMistakesOfAllRules) {
    std::set<std::string> told = RulesOfOthers();
    for (const Mistake& mistake : kMistakes) {
        const std::string profile = Replaced(melkar::StarterProfile(mistake.kind, "OWN"), mistake.from, mistake.to);
        const std::vector<Doubt> doubts = Of(profile, "OWN", mistake.kind);
        EXPECT_EQ(RulesOf(doubts), mistake.rules) << mistake.what << PlacesOf(doubts);
        std::string texts;
        for (const Doubt& doubt : doubts) {
            texts += doubt.text + "\n";
            told.insert(doubt.rule);
        }
        EXPECT_THAT(texts, HasSubstr(mistake.says)) << mistake.what;
    }
    for (const melkar::DoubtRule& rule : melkar::DoubtRules())
        EXPECT_TRUE(told.contains(rule.id)) << "no profile breaks " << rule.id;
}

TEST_F(ProfileDoubts, AreNoneAboutStarters) {
    for (const melkar::KindRow& row : melkar::Catalogue()) {
        if (!*row.starter)
            continue;
        const std::string profile = melkar::StarterProfile(row.kind, "OWN");
        EXPECT_EQ(PlacesOf(Of(profile, "OWN", row.kind)), "") << row.kind;
        EXPECT_EQ(PlacesOf(Of(profile, "", "")), "") << row.kind << " is guessed";
    }
}

TEST_F(ProfileDoubts, HavePlacesAndCanBeSilenced) {
    const std::string bar = melkar::StarterProfile("bar", "OWN");
    const std::string wrong = Replaced(bar, "[COMMON]\n", "[COMMON]\n  CHARSET =  \"x\"\n");
    const auto doubts = Of(wrong);
    ASSERT_EQ(PlacesOf(doubts), "2:15 number") << "of the value within its quotes";
    EXPECT_EQ(melkar::ToText(doubts[0]), doubts[0].file + ":2:15: error: " + doubts[0].text + " [number]");
    for (const auto& [why, comment, rest] : {std::tuple("the rule", "; melkar: allow number", ""),
                                             {"several", ";melkar: allow point number", ""},
                                             {"another one", "; melkar: allow point", "3:15 number"},
                                             {"no word to us", "; allow number", "3:15 number"}})
        EXPECT_EQ(PlacesOf(Of(Replaced(wrong, "  CHARSET", std::string(comment) + "\n  CHARSET"))), rest) << why;
    EXPECT_EQ(PlacesOf(Of("; melkar: allow number\n" + wrong)), "") << "before the head of a section";
    EXPECT_EQ(PlacesOf(Of(Replaced(wrong, "[COMMON]\n", "[COMMON]\n; melkar: allow number\nLANG=0\n"))), "")
        << "right behind it";
}

TEST_F(ProfileDoubts, AreAboutFilesAndSections) {
    const std::string bar = melkar::StarterProfile("bar", "OWN");
    EXPECT_EQ(PlacesOf(melkar::Doubts("none.cnf", "OWN", "bar")), "0:0 unreadable");
    EXPECT_EQ(PlacesOf(Of({"[\0O\0", 4})), "0:0 bytes");
    EXPECT_EQ(PlacesOf(Of(bar, "OTHER")), "0:0 no-section");
    EXPECT_EQ(PlacesOf(Of(bar, "OWN", "bra")), "0:0 no-kind");
    EXPECT_EQ(PlacesOf(Of("[MINE]\nA=1\n[SYSTEM]\nDATE_SHORT=%d\n", "", "")), "1:0 foreign-section");
    const auto other = Of(melkar::StarterProfile("pie", "OWN"));
    ASSERT_EQ(PlacesOf(other), "2:0 other-kind");
    EXPECT_THAT(other[0].text, HasSubstr("the keys of kind pie, not of bar"));
    EXPECT_EQ(PlacesOf(Of(bar + "[NEXT]\nA=1\nB: 2\n")), "") << "other sections are nothing to this graph";
    EXPECT_EQ(PlacesOf(melkar::Doubts("", "OWN", "bar")), "")
        << "the profile of all graphs, from the current directory";
}

/// What the positions stand for is what graphs read.
TEST_F(ProfileDoubts, ReadWhatGraphsRead) {
    const std::string_view profiles[] = {
        "\xEF\xBB\xBF[A]\r\nk = v \r\n;c=1\r\n ;d=1\r\nK=2\r\n= none\r\nno equals\r\n[a]\nlate=1\n",
        "early=1\n  [ A b ] behind\nquoted=\" q \"\nuneven='a\"\nempty=\na=b=c\nx\t=\ty\n[Open\nlast=end",
        "[\n[]\nk=1\n[ ]\nj=1\n[A]]\nk=2\n\v[B]\n\fk\f=\v3\n[C] [D]\nk=4\n\xC3\xA4=\xFF\n\r\n\n[A\n=\n==1\n",
        "",
        "[",
        "=",
        "\n",
        "[A]",
        "k=1\r[A]\rk=2\r\n[A]\n k=3 ;x",
    };
    for (const std::string_view profile : profiles) {
        const std::string path = m_files.Write("conf/p.cnf", profile);
        const melkar::PlacedProfile text(path);
        const melkar::ProfileFile file(path.c_str());
        for (const auto& section : text.Sections()) {
            const melkar::ProfileSnapshot read(file, section.name);
            const bool isFirst = section.line > 0 && text.Find(section.name) == &section;
            for (const auto& entry : section.entries) {
                const std::string* value = read.FindOwn(entry.key);
                const bool counts = isFirst && section.Find(entry.key) == &entry;
                EXPECT_TRUE(!counts || (value && *value == entry.value)) << profile << "\n" << entry.key;
            }
        }
        for (const char* section : {"A", "a b", "B", "C", "Open", "", "A]"}) {
            const melkar::ProfileSnapshot read(file, section);
            const auto* found = text.Find(section);
            EXPECT_EQ(found != nullptr, read.HasOwn()) << profile << "\n" << section;
            for (const char* key :
                 {"k", "j", "late", "early", "quoted", "empty", "a", "x", "last", "=", "", "no equals"})
                EXPECT_EQ(found && found->Find(key), read.FindOwn(key) != nullptr) << profile << "\n" << key;
        }
    }
}

TEST(Spelling, ClosestNames) {
    const std::vector<std::string> names = {"CHARTMAX", "CHARTMIN", "MAX"};
    for (const auto& [why, word, meant] : {std::tuple("two swapped", "CHARTMXA", "CHARTMAX"),
                                           {"one left out", "CHARMIN", "CHARTMIN"},
                                           {"one too many", "CHARTTMIN", "CHARTMIN"},
                                           {"other case", "chartmax", "CHARTMAX"},
                                           {"of a short word, one letter", "MAY", "MAX"},
                                           {"not two", "MYY", ""},
                                           {"nothing near", "POINT", ""}})
        EXPECT_EQ(melkar::ClosestName(word, names), meant) << why;
}

} // namespace
