#include <MelkarCommon/telling/describe.h>
#include <MelkarCommon/telling/html.h>
#include <MelkarCommon/telling/json.h>
#include <MelkarCommon/telling/speech.h>
#include <MelkarCommon/telling/table.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace {

using melkar::AxisSide;
using melkar::Contents;
using melkar::DescriptionWords;
using melkar::ShownFigure;
using melkar::ShownItem;
using testing::HasSubstr;
using testing::Not;

/// English, since there is no such profile.
const DescriptionWords kWords("nowhere.cnf");

ShownItem Item(const char* caption, std::vector<ShownFigure> figures, double value, long status = 0) {
    ShownItem item;
    item.caption = caption;
    item.figures = std::move(figures);
    item.isMissing = item.figures.empty();
    item.value = value;
    item.status = status;
    return item;
}

ShownFigure Figure(int series, const char* text, double value) {
    ShownFigure figure;
    figure.series = series;
    figure.text = text;
    figure.value = value;
    return figure;
}

ShownItem Day(const char* caption, const char* text, double value, long status = 0) {
    return Item(caption, {Figure(0, text, value)}, value, status);
}

/// Days on a scale from 0 to 100.
Contents Days(std::vector<ShownItem> items) {
    Contents contents;
    contents.title = " Steps";
    contents.unit = "steps";
    contents.axes = {{AxisSide::Left, "steps", 0, 100, 50}, {AxisSide::Bottom, "", 0, 0, 0}};
    contents.series = {{"steps", 0, AxisSide::Left}};
    contents.items = std::move(items);
    return contents;
}

TEST(Words, FormsForNumbers) {
    const std::tuple<const char*, long, const char*> cases[] = {
        {"one form for all", 1, "件"},      {"one form for all", 5, "件"},   {"of two: one", 1, "day|days"},
        {"of two: none", 0, "day|days"},    {"of three: one", 1, "a|b|c"},   {"of three: few", 4, "a|b|c"},
        {"of three: many", 5, "a|b|c"},     {"of three: none", 0, "a|b|c"},  {"a teen is many", 11, "a|b|c"},
        {"a teen is many", 14, "a|b|c"},    {"21 goes like 1", 21, "a|b|c"}, {"22 goes like 2", 22, "a|b|c"},
        {"112 goes like 12", 112, "a|b|c"},
    };
    const char* const expected[] = {"件", "件", "day", "days", "a", "b", "c", "c", "c", "c", "a", "b", "c"};
    for (std::size_t row = 0; row < std::size(cases); ++row)
        EXPECT_EQ(kWords.SayCount(std::get<2>(cases[row]), std::get<1>(cases[row])), expected[row])
            << std::get<0>(cases[row]);
}

TEST(Words, Gaps) {
    EXPECT_EQ(kWords.Say("__a__ to __b__, __c__", {{"a", "__b__"}, {"b", "2"}}), "__b__ to 2, __c__")
        << "a caption is no sentence";
    EXPECT_EQ(kWords.List({"1", "2", "3", "4", "5", "6", "7", "8"}), "1, 2, 3, 4, 5, 6, 7, 8") << "never one more";
    EXPECT_EQ(kWords.List({"1", "2", "3", "4", "5", "6", "7", "8", "9"}), "1, 2, 3, 4, 5, 6, 7 and 2 more");
}

/// What isn't to count has figures that would be the highest, the lowest, and in no mean.
TEST(Describe, DaysThatCount) {
    Contents contents = Days({Day("Mo", "50.5", 50.5), Day("Tu", "999", 999, 1), Day("We", "1", 1, 2),
                              Item("Th", {}, 0), Day("Fr", "120", 120), Day("Sa", "30", 30), Day("Su", "30", 30)});
    contents.items[0].reached = true;
    contents.items[1].reached = true;
    contents.items[5].reached = false;
    contents.items[4].figures[0].isClipped = true;
    contents.marks = {{melkar::MarkKind::Target, "Goal", "40", 40, {}},
                      {melkar::MarkKind::Target, "Goal", "40", 40, {}},
                      {melkar::MarkKind::Target, "Goal", "60", 60, {}},
                      {melkar::MarkKind::Average, " Mean:\n 57 steps", "57", 57, {}},
                      {melkar::MarkKind::Border, "High", "", 5, {}}};
    contents.texts = {"Well walked!"};
    EXPECT_EQ(
        melkar::Describe(contents, kWords),
        "Steps. 7 entries, Mo to Su. Scale: 0 to 100, steps. Highest 120 (Fr), lowest 30 (Sa), mean 57.6. 1 of 2 "
        "reaches the target. Excluded: Tu. No figure: We, Th. Beyond the scale: Fr. Goal: 40, 60. Mean: 57 steps. "
        "Well walked!");
}

TEST(Describe, PartsAndOtherScales) {
    Contents stack = Days({Item("a", {Figure(0, "1.5", 1.5), Figure(1, "2", 2)}, 3.5),
                           Item("b", {Figure(0, "3", 3), Figure(1, "4", 4)}, 7)});
    stack.series.push_back({"", 0, AxisSide::Left});
    stack.axes[0].label = "mm Hg.";
    EXPECT_THAT(melkar::Describe(stack, kWords), HasSubstr("0 to 100, mm Hg. Total: highest 7 (b), lowest 3.5 (a), "
                                                           "mean 5.2. steps: highest 3 (b), lowest 1.5 (a), mean "
                                                           "2.2. Series 2: highest 4 (b), lowest 2 (a), mean 3."));
    stack.items[0].value = 1.5; // of the bar, beside which the other one stands
    EXPECT_THAT(melkar::Describe(stack, kWords), Not(HasSubstr("Total")));
}

/// What stands along no axis is told one by one.
TEST(Describe, Slices) {
    Contents pie = Days({Day("Low", "10", 10), Day("High", "20", 20)});
    pie.axes.clear();
    pie.title = "";
    EXPECT_EQ(melkar::Describe(pie, kWords), "Low: 10 steps; High: 20 steps.");
    EXPECT_EQ(melkar::NameOf(pie, kWords), "Chart");
    pie.items[1].figures[0].isClipped = true;
    pie.texts = {"a\n", "b"};
    EXPECT_EQ(melkar::Describe(pie, kWords), "Low: 10 steps; High: 20 steps, beyond the scale. a; b.");
}

TEST(Describe, Names) {
    const std::tuple<const char*, ShownItem, const char*> cases[] = {
        {"a day", Day("Mar 4", "9268", 9268), "Mar 4: 9268 steps"},
        {"excluded, but drawn", Day("Mar 4", "5", 5, 1), "Mar 4: 5 steps, excluded"},
        {"nothing there", Item("Mar 4", {}, 0), "Mar 4: no figure"},
        {"a caption alone", Day("Mar 4", "", 5), "Mar 4"},
        {"a label in three lines", Day(" a\n bc-\n d", "5", 5), "a bcd: 5 steps"},
        {"of a script without blanks", Day("平均\n摂取量\nkcal", "5", 5), "平均摂取量 kcal: 5 steps"},
    };
    for (const auto& [why, item, name] : cases)
        EXPECT_EQ(melkar::NameOf(Days({item}), item, kWords), name) << why;
}

/// Days stand 100 apart, each 40 wide; those without a figure have no area.
TEST(Speech, DaysWithoutAPlaceOfTheirOwn) {
    Contents contents = Days({Item("a", {}, 0), Day("b", "2", 2), Day("c", "3", 3), Item("d", {}, 0)});
    contents.items[1].area = CRect(100, 50, 140, 90);
    contents.items[2].area = CRect(200, 20, 240, 90);
    std::string parts;
    for (const PagePart& part : melkar::WalkedWordsFor({contents}, kWords).parts)
        parts += part.name + "@" + std::to_string(part.area.left) + "," + std::to_string(part.area.top) + " " +
                 std::to_string(part.area.right) + "," + std::to_string(part.area.bottom) + "|";
    EXPECT_EQ(parts, "a: no figure@-2,18 42,92|b: 2 steps@98,48 142,92|c: 3 steps@198,18 242,92|"
                     "d: no figure@298,18 342,92|");
    contents.items[2].area = {};
    EXPECT_EQ(melkar::WalkedWordsFor({contents}, kWords).parts.size(), 1U) << "nothing to guess by";
}

TEST(Speech, TitlesOfSeveral) {
    Contents other = Days({});
    other.title = "Other";
    const PageWords words = melkar::WordsFor({Days({}), other}, kWords);
    EXPECT_EQ(words.title, "Steps – Other");
    EXPECT_EQ(words.description, "Steps. Scale: 0 to 100, steps. Other. Scale: 0 to 100, steps.");
    EXPECT_EQ(melkar::WordsFor({other}, kWords).description, "Scale: 0 to 100, steps.") << "not the title again";
    EXPECT_EQ(words.language, "en");
}

TEST(Html, TextsAreData) {
    Contents contents = Days({Day("<b>", "1", 1)});
    contents.title = "A & \"B\"";
    const std::string html = melkar::HtmlOf({{{contents}, "<?xml?>\n<svg>x</svg>\n"}}, "", kWords);
    EXPECT_THAT(html, HasSubstr("<title>A &amp; &quot;B&quot;</title>"));
    EXPECT_THAT(html, HasSubstr("<figure>\n<svg>x</svg>\n</figure>"));
    EXPECT_THAT(html, HasSubstr("<th scope=\"row\">&lt;b&gt;</th><td class=\"figure\">1</td>"));
    EXPECT_THAT(html, Not(HasSubstr("<h1>"))) << "one chart has its own heading";
}

TEST(Table, Columns) {
    Contents contents = Days({Day("a, \"b\"", "1\n2", 1), Item("c", {}, 0)});
    EXPECT_EQ(melkar::CsvOf(melkar::TableOf(contents, kWords)),
              "Entry,steps,Note\r\n\"a, \"\"b\"\"\",1 2,\r\nc,,no figure\r\n")
        << "no column that nobody needs";
    Contents other = Days({Day("d", "4", 4)});
    other.title = "Other";
    other.series[0].name = "km";
    EXPECT_EQ(melkar::CsvOf(melkar::TableOf({contents, other}, kWords)),
              "Part,Entry,steps,Note,km\r\nSteps,\"a, \"\"b\"\"\",1 2,,\r\nSteps,c,,no figure,\r\nOther,d,,,4\r\n");
    EXPECT_EQ(melkar::TextOf({{"日", "n"}, {{"a", "10"}, {"bcd", "9"}}}), "日    n\na    10\nbcd   9\n")
        << "a wide character takes two columns";
}

TEST(Json, OddTextsAndNumbers) {
    Contents contents = Days({Day("\"\\\n\x01", "1", NAN)});
    contents.series[0].color = 0x00332211;
    const std::string json = melkar::JsonOf(contents);
    EXPECT_THAT(json, HasSubstr(R"("caption": "\"\\\n\u0001")"));
    EXPECT_THAT(json, HasSubstr("\"value\": null"));
    EXPECT_THAT(json, HasSubstr("\"reached\": null"));
    EXPECT_THAT(json, HasSubstr("\"color\": \"#112233\"")) << "red is the low byte";
}

TEST(Describe, PagesOfAReport) {
    melkar::ShownReport report{"March", {{"Page 1", {}, {"Days: 27", "Well walked!"}, {Days({})}}}};
    report.pages[0].heading.items = {Item("Name", {}, 0), Item("Age", {}, 0)};
    report.pages[0].heading.items[0].text = "Ann";
    report.pages[0].heading.items[1].text = "46";
    for (ShownItem& item : report.pages[0].heading.items)
        item.isMissing = false;
    EXPECT_EQ(melkar::Describe(report.pages[0], kWords), "Page 1. Name: Ann; Age: 46. Days: 27. Well walked!");
    const std::string json = melkar::JsonOf(report);
    for (const char* member : {R"("kind": "report")", R"("title": "March")", R"("name": "Page 1")", R"("Days: 27",)",
                               R"("caption": "Age")", R"("title": " Steps")"})
        EXPECT_THAT(json, HasSubstr(member));
}

/// A share of a quadrant is drawn by a count of days: no mean may be made of that, and it is no day.
TEST(Description, OneFigureOfASeriesHasNoMean) {
    Contents contents = Days({Item("Active", {Figure(0, "48.2%", 13)}, 13), Item("", {Figure(1, "10", 10)}, 10),
                              Item("", {Figure(1, "20", 20)}, 20), Item("", {}, 0, 1)});
    contents.series = {{"Active", 0, AxisSide::Left}, {"steps", 0, AxisSide::Left}};
    contents.marks = {{melkar::MarkKind::Target, "steps", "15", 15, {}}};
    const std::string said = melkar::Describe(contents, kWords);
    EXPECT_THAT(said, HasSubstr("Steps. 3 entries, 1 to 3."));
    EXPECT_THAT(said, HasSubstr("highest 20 (2), lowest 10 (1)")) << "their places";
    EXPECT_THAT(said, HasSubstr("Target, steps: 15.")) << "a label that only names the axis";
    EXPECT_THAT(said, HasSubstr("Active: 48.2%."));
    EXPECT_THAT(said, Not(HasSubstr("13")));
    EXPECT_THAT(said, HasSubstr("mean 15"));
    EXPECT_THAT(said, Not(HasSubstr("Excluded"))) << "nobody could say which";
}

} // namespace
