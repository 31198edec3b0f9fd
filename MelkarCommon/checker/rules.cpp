#include <MelkarCommon/checker/doubt.h>

#include <algorithm>

namespace melkar {

namespace {

using enum DoubtLevel;

const std::vector<DoubtRule>& AllRules() {
    static const std::vector<DoubtRule> rules = {
        {"unreadable", Error, "The file isn't there or can't be read."},
        {"bytes", Error,
         "The file has bytes of value 0, as a text in UTF-16 or a spreadsheet has: nothing in it is found."},
        {"line-form", Warning,
         "A line that is neither a comment (which begins with a semicolon) nor [SECTION] nor KEY=VALUE is passed "
         "over."},
        {"stray-key", Warning, "A key before the first section belongs to none, so that nobody reads it."},
        {"double-section", Warning, "Of two sections of one name the first counts; the second is passed over whole."},
        {"double-key", Warning, "Of two keys of one name in a section the first counts."},
        {"no-section", Error, "The profile lacks the section that the graph is made with: all is at its defaults."},
        {"no-kind", Error, "There is no kind of chart of that name, or it has no profile of its own."},
        {"foreign-section", Hint, "No kind of chart reads any key of the section: a program may have it for itself."},
        {"other-kind", Warning,
         "A key, or most keys of a section, are those of another kind of chart: this one doesn't read them."},
        {"unknown-key", Warning, "No kind of chart reads a key of that name; often it is mistyped."},
        {"wrong-section", Warning,
         "A key that all graphs share counts in section COMMON only, a graph's own in its section only."},
        {"closed-key", Warning,
         "The key waits for a switch that isn't on, for it is missing or not in the words that count."},
        {"switched-off", Hint, "The key waits for a switch that is off."},
        {"list-gap", Warning, "A numbered list ends at its first missing number: this key stands behind that."},
        {"idle-key", Hint, "The key is read and kept, but nothing is painted by it."},
        {"missing-key", Warning, "A chart of the kind isn't readable without the key."},
        {"missing-common", Error, "There is no section COMMON, where all graphs have their colours and sizes."},
        {"color", Error,
         "A colour is written red,green,blue, in a data file #RRGGBB: whatever isn't becomes the default, mostly "
         "black."},
        {"color-range", Error, "The parts of a colour go from 0 to 255; of others the low eight bits count."},
        {"number", Error, "Not a number, or one with something behind it that isn't read: 1,800 is 1, and n/a is 0."},
        {"true-word", Warning, "Of this switch the word true alone is on; false tells that it is meant to be off."},
        {"switch", Warning, "This switch is a number: above 0 it is on. A word counts as 0."},
        {"point", Error, "A point is written x,y in whole numbers: whatever isn't becomes 0,0."},
        {"format", Error,
         "The format of a figure has exactly one conversion of a number with decimals, such as %.1f; else %g stands "
         "in."},
        {"empty-scale", Error, "The top of a scale isn't above its bottom: nothing can be told apart on it."},
        {"interval", Error, "A scale without a step above 0 gets one that suits no figures: 10."},
        {"crowded-scale", Warning, "A scale has more lines than the picture has rows for."},
        {"uneven-scale", Hint, "The step doesn't divide the range of the scale, so its top has no line."},
        {"box-inside-out", Error, "A box of a panel ends before it begins: nothing of it shows."},
        {"box-outside", Warning, "A box of a panel reaches beyond the picture."},
        {"box-overlap", Warning, "Two boxes of a panel stand in each other's way."},
        {"text-contrast", Warning, "Texts have a contrast below 4.5 to the ground that they stand on."},
        {"mark-contrast", Warning, "Lines, bars or marks have a contrast below 3 to their ground."},
        {"color-blind", Warning,
         "Colours that stand next to each other look alike to a person with one of the three colour blindnesses: they "
         "are less than 13 apart in CIE L*a*b*."},
        {"grey", Warning, "Colours that stand next to each other look alike in grey: less than 20 apart in L*."},
        {"face", Warning, "The machine lacks a face: another stands in, and texts are of another width."},
        {"not-rows", Error, "A data file is text in rows and columns; this one is of a spreadsheet, JSON or the like."},
        {"encoding", Warning,
         "Texts that are neither UTF-8 nor in the character set of the profile: signs stand in for what can't be "
         "read."},
        {"separator", Error, "The columns of a data file stand between commas; what others part is one column."},
        {"head", Warning, "A row of figures where the head rows are: it isn't drawn."},
        {"rows", Warning, "A file that ends too soon belongs to another kind."},
        {"length", Warning, "What of a row is longer than its limit counts as a further row."},
        {"columns", Error, "A row that lacks columns: a missing figure counts as 0."},
        {"more-columns", Hint, "A row has more columns than are read of it."},
        {"decimal-comma", Error, "A comma parts columns: 128,5 is 128, and 5 is a column of its own."},
        {"status", Warning, "The status of a day is a number from 0 to 4."},
        {"status-beyond", Hint, "A status above 4 is taken as it is, and means nothing."},
        {"date", Warning, "A date is written YYYYMMDD and is one of the calendar."},
        {"date-order", Warning, "The dates of the rows go back, or stand twice."},
        {"time", Warning, "A time of day is written HHMM."},
        {"range", Warning, "A figure is beyond what its column can hold."},
        {"off-scale", Warning, "A figure is off the scale that the profile gives it: it is cut at the end."},
        {"no-color", Error, "A row beyond those that the profile has colours for isn't shown."},
        {"no-page", Error, "A file of weeks has no week for the page."},
    };
    return rules;
}

} // namespace

const char* NameOf(DoubtLevel level) {
    constexpr const char* kNames[] = {"error", "warning", "hint"};
    return kNames[static_cast<int>(level)];
}

const std::vector<DoubtRule>& DoubtRules() { return AllRules(); }

const DoubtRule* FindDoubtRule(std::string_view id) {
    const auto found =
        std::find_if(AllRules().begin(), AllRules().end(), [&](const auto& rule) { return rule.id == id; });
    return found != AllRules().end() ? &*found : nullptr;
}

std::string DoubtReference() {
    std::string page =
        "# Doubts\n\n"
        "The library takes any profile and any data file and makes the best of them, without a word. `melkar check` "
        "tells what "
        "their author will hardly have meant, and `melkar::Doubts` tells a host. A line is `file:line:column: level: "
        "text "
        "[rule]`; the column is a byte of a profile, and a column of a data file. What is about a whole line or file "
        "has no column or line.\n\n"
        "An error comes out otherwise than meant, a warning most likely does, a hint may be meant so. The exit code of "
        "`melkar "
        "check` is 1 if there is a warning or an error; `--level` sets another level.\n\n"
        "A comment in the profile silences rules on the next line that is none, or, before or "
        "right behind the head of a section, in all of that:\n\n"
        "```ini allowed.cnf\n; melkar: allow unknown-key\nMY_OWN_KEY=1\n```\n\n"
        "What a section is drawn as is guessed from its keys, unless `--kind` says it. Boxes and scales are looked at "
        "in a "
        "picture of 900x500, or of `--size`. With `--data KIND` the files are data files of that kind, whose figures "
        "are held "
        "against a section where `--profile` and `--section` name one. A class of a host with a row in the catalogue "
        "is checked as the library's "
        "own "
        "are: its table of keys says what each of them is.\n\n"
        "| Rule | Level | What it is about |\n|---|---|---|\n";
    for (const DoubtRule& rule : DoubtRules())
        page.append("| `")
            .append(rule.id)
            .append("` | ")
            .append(NameOf(rule.level))
            .append(" | ")
            .append(rule.says)
            .append(" |\n");
    return page;
}

std::string PlaceOf(const Doubt& doubt) {
    std::string place = doubt.file;
    for (const int number : {doubt.line, doubt.column})
        if (number > 0)
            place.append(":").append(std::to_string(number));
    return place;
}

std::string ToText(const Doubt& doubt) {
    std::string text = PlaceOf(doubt);
    text.append(": ").append(NameOf(doubt.level)).append(": ").append(doubt.text);
    return text.append(" [").append(doubt.rule).append("]");
}

} // namespace melkar
