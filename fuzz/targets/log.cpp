// A line into a log in which anything stands: it is the last record then, and the file keeps its bound, or nothing was
// written.

#include "../input.h"
#include "../room.h"

#include "log_reader.h"

#include <MelkarCommon/support/ring_log.h>

#include <algorithm>

namespace melkar::fuzz {

using namespace std::string_literals;

namespace {

constexpr std::size_t kHead = 10;
constexpr std::size_t kRecord = 122;
constexpr std::size_t kMostBytes = 12200132;

/// The first line is written behind what the rest of the input left.
void WriteLine(std::string_view input) {
    Visit visit;
    const std::string text(TakeLine(input));
    const std::string log = visit.Give("log/any.log", input);
    const bool isWritten = writeLog(log.c_str(), "%s", text.c_str()) == 0;
    const std::string after = Room().Read("log/any.log");
    Require(after.size() <= std::max(kMostBytes, input.size()), "a log has a bound");
    if (!isWritten || after == input)
        return;
    const int counter = std::atoi(after.substr(0, kHead).c_str());
    const std::size_t end = kHead + static_cast<std::size_t>(counter) * kRecord;
    Require(counter > 0 && after.size() >= end + kRecord, "a record is there, and room for the end mark");
    Require(after.compare(end, 9, "=========") == 0, "the end mark stands behind the last record");
    writeLogCode(log.c_str(), counter);
    std::string last;
    tool::LogReader reader(
        log, [&last](const std::string& line) { last = line; }, [](const std::string&) {});
    Require(reader.Read(), "what is written can be read");
    reader.Finish();
    Require(last.ends_with("CODE = [" + std::to_string(counter) + "]"), "the last line is the last");
}

void SeedLogs(Seeds& seeds) {
    const std::string end = std::string(119, '=') + "\0\r\n"s;
    const std::string record = "[2026/03/02 10:00:00]  text" + std::string(93, '\0') + "\r\n";
    const std::pair<const char*, std::string> logs[] = {
        {"empty", ""},
        {"new", "00000000\r\n"},
        {"two-records", "00000002\r\n" + record + record + end},
        {"behind-its-end", "00000009\r\n" + record},
        {"at-its-last", "00099999\r\n" + record},
        {"at-its-last-one", "00100000\r\n" + record},
        {"beyond", "99999999\r\n" + record},
        {"below-zero", "-0000001\r\n"},
        {"no-digits", "12a45678\r\n"},
        {"half-a-head", "0000"},
        {"text", "a letter of somebody\n"},
    };
    for (const auto& [name, bytes] : logs) {
        seeds.add(name, "a line\n" + bytes);
        seeds.add(std::string(name) + "-long", std::string(5000, '%') + "\n" + bytes);
    }
    seeds.words = {"00000000\r\n", "00100000", "00099999", "=========", end, record};
}

} // namespace

extern const Target kLog;
const Target kLog{"log", "a line to write, and the log that is there", WriteLine, SeedLogs};

} // namespace melkar::fuzz
