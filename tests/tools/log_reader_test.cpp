#include "tools/melkar/log_reader.h"

#include <MelkarCommon/platform/tests/temp_workdir.h>
#include <MelkarCommon/support/ring_log.h>

#include <gmock/gmock.h>

#include <tuple>

namespace melkar::tool {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using Texts = std::vector<std::string>;

const std::string kStamp = "[2026/03/02 10:00:00]  "; // 23 characters of a record's 120
const std::string kFull = kStamp + std::string(97, 'x');

std::string Record(std::string text) {
    text.resize(120);
    return text + "\r\n";
}
std::string EndMark() { return Record(std::string(119, '=')); }

std::string Log(const Texts& records, const std::string& end = EndMark()) {
    std::string count = std::to_string(records.size());
    std::string log = std::string(8 - count.size(), '0') + count + "\r\n";
    for (const std::string& text : records)
        log += Record(text);
    return log + end;
}

TEST(LogReader, GivesLinesWhole) {
    std::string torn = Log({kStamp + "one", kStamp + "two"});
    torn[10 + 120] = 'x';
    const std::tuple<const char*, std::string, Texts, Texts> cases[] = {
        {"in order", Log({kStamp + "one", kStamp + "two"}), {kStamp + "one", kStamp + "two"}, {}},
        {"one that goes on", Log({kFull, std::string(120, 'y'), "z"}), {kFull + std::string(120, 'y') + "z"}, {}},
        {"one that fills its record", Log({kFull, ""}), {kFull}, {}},
        {"another writer's between", Log({kFull, kStamp + "b", "a"}), {kFull + "a", kStamp + "b"}, {}},
        {"its writer was killed", Log({kFull, kStamp + "b", kFull, "a"}), {kFull, kStamp + "b", kFull + "a"}, {}},
        {"what a terminal obeys", Log({kStamp + "\x1b[2J\n"}), {kStamp + "?[2J?"}, {}},
        {"cut",
         Log({kStamp + "one", kStamp + "two"}).substr(0, 200),
         {kStamp + "one"},
         {"the file was cut: it counts 2 records and has 1"}},
        {"not ended",
         Log({kStamp + "one"}, Record("")),
         {kStamp + "one"},
         {"no end mark stands behind record 1, the last"}},
        {"torn", torn, {kStamp + "one", kStamp + "two"}, {"record 1 is torn"}},
        {"none yet", Log({}), {}, {}},
        {"cleared", "", {}, {}},
        {"a letter",
         "Dear reader, it is late\n",
         {},
         {"this is no log: FILE doesn't begin with the number of its last record"}},
    };
    const TempWorkdir work;
    for (const auto& [why, bytes, lines, doubts] : cases) {
        const std::string path = work.Write("log/any.log", bytes);
        Texts read;
        Texts doubted;
        LogReader reader(
            path, [&](const std::string& line) { read.push_back(line); },
            [&](std::string doubt) {
                if (const std::size_t at = doubt.find(path); at != doubt.npos)
                    doubt.replace(at, path.size(), "FILE");
                doubted.push_back(doubt);
            });
        EXPECT_EQ(reader.Read(), doubts.empty() || !doubts[0].starts_with("this is no log")) << why;
        reader.Finish();
        EXPECT_EQ(read, lines) << why;
        EXPECT_EQ(doubted, doubts) << why;
    }
}

// The ring closes behind record 100000: a reader goes on at its start, and one that comes later begins behind the end
// mark.
TEST(LogReader, GoesOnAcrossTheWrap) {
    const TempWorkdir work;
    std::string ring = Log(Texts(99999, kStamp + "old"));
    const std::string path = work.Write("log/any.log", ring);
    Texts read;
    const auto keep = [&read](const std::string& line) { read.push_back(line.substr(kStamp.size())); };
    const auto doubt = [](const std::string& what) { ADD_FAILURE() << what; };
    LogReader follower(path, keep, doubt);
    ASSERT_TRUE(follower.Read());
    EXPECT_EQ(read.size(), 99999U);
    read.clear();
    const std::string across(150, 'n');
    ASSERT_EQ(writeLog(path.c_str(), "%s", across.c_str()), 0); // records 100000 and 1
    ASSERT_EQ(writeLog(path.c_str(), "newest"), 0);
    ASSERT_TRUE(follower.Read());
    EXPECT_THAT(read, ElementsAre(across, "newest"));

    read.clear();
    LogReader later(path, keep, doubt);
    ASSERT_TRUE(later.Read());
    ASSERT_EQ(read.size(), 99996U + 2) << "records 1 to 3 went for the end of a line, the newest and the end mark";
    EXPECT_THAT(Texts({read[0], read[99995], read[99996], read[99997]}), ElementsAre("old", "old", across, "newest"));
}

} // namespace
} // namespace melkar::tool
