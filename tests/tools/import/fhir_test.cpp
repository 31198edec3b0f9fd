#include "imported.h"

#include <gmock/gmock.h>

#include <tuple>

namespace melkar::importer {
namespace {

using testing::HasSubstr;
using Texts = std::vector<std::string>;

std::string On(const std::string& day) { return R"("effectiveDateTime":")" + day + '"'; }
std::string From(const std::string& start, const std::string& end) {
    return R"("effectivePeriod":{"start":")" + start + R"(","end":")" + end + R"("})";
}
std::string Of(const char* value, const std::string& unit) {
    return std::string(R"("valueQuantity":{"value":)") + value + R"(,"unit":"kg","code":")" + unit + R"("})";
}
std::string Code(const std::string& code) {
    return R"("code":{"coding":[{"system":"http://other","code":"1"},{"system":"http://loinc.org","code":")" + code +
           R"("}]})";
}
std::string Observed(const std::string& code, const std::string& when, const std::string& what) {
    return R"({"resourceType":"Observation","status":"final",)" + Code(code) + "," + when + "," + what + "}";
}

/// A resource a line, from the second on.
std::string Bundle(const Texts& resources) {
    std::string text = "{\"resourceType\":\"Bundle\",\"entry\":[\n";
    for (const std::string& one : resources)
        text += (&one == resources.data() ? "" : ",\n") + (R"({"resource":)" + one + "}");
    return text + "]}";
}

Request Bars(const std::string& figure) {
    Request request;
    request.kind = "bar";
    request.figures = {figure};
    request.caption = "D";
    return request;
}

std::string RowsOf(const Imported& made) {
    const std::size_t second = made.file.find('\n', made.file.find('\n') + 1);
    return made.file.empty() ? "" : made.file.substr(second + 1);
}

TEST(ImportFhir, MakesFiguresOfObservations) {
    const std::string steps = "55423-8";
    const std::string ofDay = "41950-7";
    const std::tuple<const char*, std::string, Texts, std::string, std::string> cases[] = {
        {"steps of a day add up",
         "steps",
         {Observed(steps, From("2026-03-01T23:00:00+09:00", "2026-03-02T00:00:00+09:00"), Of("5", "{steps}")),
          Observed(steps, On("2026-03-01T08:00:00"), R"("valueInteger":6)")},
         "0,1,11\n",
         "1 day, 20260301 to 20260301, from 2 observations"},
        {"nothing is added to a day's own figure",
         "steps",
         {Observed(steps, On("2026-03-01"), Of("5", "1")), Observed(ofDay, On("2026-03-01"), Of("9", "/d")),
          Observed(steps, On("2026-03-01"), Of("5", "1"))},
         "0,1,9\n",
         "1 day"},
        {"two of these: the later holds",
         "41950-7",
         {Observed(ofDay, On("2026-03-01T20:00:00Z"), Of("9", "{steps}/(24.h)")),
          Observed(ofDay, On("2026-03-01T10:00:00Z"), Of("8", "{steps}/(24.h)")),
          Observed(steps, On("2026-03-01"), Of("5", "1"))},
         "0,1,9\n",
         "in:3: skipped: figure of 20260301 stands again on line 2"},
        {"joules, and a day without",
         "energy",
         {Observed("41981-2", On("2026-03-01"), Of("418.4", "kJ")),
          Observed("41981-2", On("2026-03-02"), R"("dataAbsentReason":{})")},
         "0,1,100\n2,2,\n",
         "2 days"},
        {"the last weight holds",
         "weight",
         {Observed("29463-7", On("2026-03-01T20:00:00"), Of("154.3", "[lb_av]")),
          Observed("29463-7", On("2026-03-01T07:00:00"), Of("71000", "g"))},
         "0,1,69.989\n",
         "in:3: skipped"},
        {"a code of a component",
         "heart-rate",
         {R"({"resourceType":"Observation",)" + On("2026-03-01") + R"(,"component":[{)" + Code("40443-4") + "," +
          Of("61", "/min") + "}]}"},
         "0,1,61\n",
         "1 day"},
        {"withdrawn",
         "steps",
         {Observed(steps, On("2026-03-01"), Of("5", "1")),
          R"({"resourceType":"Observation","status":"entered-in-error",)" + Code(steps) + "," + On("2026-03-01") + "}"},
         "0,1,5\n",
         "in:3: skipped: status entered-in-error"},
        {"the name of a unit isn't its code",
         "weight",
         {Observed("29463-7", On("2026-03-01"), Of("70", ""))},
         "",
         "in:2: skipped: weight without the code of a unit"},
        {"a week's minutes are no day's",
         "moderate",
         {Observed("77592-4", On("2026-03-01"), Of("70", "min/wk"))},
         "",
         "in:2: skipped: no unit of moderate: \"min/wk\""},
        {"a week's steps neither",
         "steps",
         {Observed(steps, From("2026-03-01", "2026-03-02"), Of("5", "1"))},
         "",
         "in:2: skipped: a period that isn't one of a day"},
        {"a month", "steps", {Observed(steps, On("2026-03"), Of("5", "1"))}, "", "in:2: skipped: no day: \"2026-03\""},
        {"less than",
         "steps",
         {Observed(steps, On("2026-03-01"), R"("valueQuantity":{"value":5,"comparator":"<"})")},
         "",
         "in:2: skipped: steps not known exactly: < 5"},
        {"others are counted",
         "steps",
         {Observed(steps, On("2026-03-01"), Of("5", "1")), Observed("1-1", On("2026-03-01"), Of("5", "1")),
          R"({"resourceType":"Patient"})"},
         "0,1,5\n",
         "from 2 observations, 1 of them of other things; resources of other sorts: 1"},
        {"a word that isn't known", "stairs", {}, "", "known are the LOINC codes of steps, energy"},
    };
    for (const auto& [why, figure, resources, rows, said] : cases) {
        Request request = Bars(figure);
        request.become = figure == "energy" ? Texts{"kcal"} : figure == "weight" ? Texts{"kg"} : Texts{};
        const Imported made = Import("fhir", Bundle(resources), request);
        EXPECT_EQ(RowsOf(made), rows) << why << '\n' << made.said;
        EXPECT_THAT(made.said, HasSubstr(said)) << why;
    }
}

// The reader takes entry by entry out of a text that it doesn't keep.
TEST(ImportFhir, FindsEntriesWhereverTheyStand) {
    const std::string one = Observed("55423-8", On("2026-03-01"), Of("5", "1"));
    const std::string entry = R"({"fullUrl":"a\"]}","resource":)" + one + "}";
    const std::tuple<const char*, std::string, std::string, std::string> cases[] = {
        {"members before and behind",
         R"({"x":[{"entry":[1]}],"y":"}","entry":[)" + entry + R"( , )" + entry + R"(],"z":-1})", "0,1,10\n",
         "2 observations"},
        {"a line each", one + "\n" + one + "\r\n", "0,1,10\n", "2 observations"},
        {"another page",
         R"({"entry":[)" + entry + R"(],"resourceType":"Bundle","link":[{"relation":"next","url":"u"}]})", "0,1,5\n",
         "the bundle goes on at \"u\""},
        {"cut within an entry", R"({"entry":[)" + entry + R"(,{"resource":)", "",
         "line 1: the JSON ends in the middle"},
        {"cut behind one", "{\"entry\":[" + entry + ",\n", "", "line 2: the JSON ends in the middle"},
        {"no comma", R"({"entry":[)" + entry + entry + "]}", "", "line 1: no JSON"},
        {"an entry that can't be", "{\"entry\":[\n{\"resource\":{\"a\":}}]}", "", "line 2: no JSON"},
        {"rows", "day,n\n", "", "line 1: no JSON: \"d\" in the place of {"},
    };
    for (const auto& [why, text, rows, said] : cases) {
        const Imported made = Import("fhir", text, Bars("steps"));
        EXPECT_EQ(RowsOf(made), rows) << why << '\n' << made.said;
        EXPECT_THAT(made.said, HasSubstr(said)) << why;
    }
}

TEST(ImportFhir, AKindKnowsItsFigures) {
    Request request = Bars("");
    request.figures.clear();
    request.kind = "expenditure";
    const std::string part = Observed("55424-6", On("2026-03-01"), Of("300", "kcal"));
    EXPECT_THAT(Import("fhir", Bundle({part}), request).said,
                HasSubstr("no day has figures; the first one has no total"));
    request.kind = "activity";
    EXPECT_THAT(Import("fhir", Bundle({part}), request).said, HasSubstr("nobody names a source of target"));
    request.kind = "expenditure";
    const std::string total = Observed("41979-6", On("2026-03-01"), Of("2000.4", "kcal/(24.h)"));
    EXPECT_EQ(RowsOf(Import("fhir", Bundle({part, total}), request)), "0,1,2000,300\n");
}

} // namespace
} // namespace melkar::importer
