#include <MelkarCommon/platform/tests/temp_workdir.h>

#include <MelkarCommon/support/ring_log.h>

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <thread>
#include <tuple>
#include <unistd.h>

namespace {

using namespace std::string_literals;

constexpr std::size_t kRecord = 122;
const std::string kEndMark = std::string(119, '=') + "\0\r\n"s;
constexpr std::size_t kStampLength = 23; // "[2026/01/31 23:59:59]  "

/// Record `number` of the log's bytes, with its CR LF.
std::string Record(const std::string& log, std::size_t number) {
    const std::size_t offset = 10 + kRecord * (number - 1);
    return offset < log.size() ? log.substr(offset, kRecord) : "";
}

std::string Padded(std::string text) {
    text.resize(120, '\0');
    return text + "\r\n";
}

struct RingLog : testing::Test {
    TempWorkdir work;
    std::string Log() const { return work.Read("log/graph.log"); }
    void SetLog(const std::string& bytes) const { work.Write("log/graph.log", bytes); }
};

TEST_F(RingLog, LongLinesTakeSeveralRecords) {
    const std::tuple<const char*, std::size_t, std::size_t> cases[] = {
        {"one record", 119, 1},
        {"exactly full: an empty one follows", 120, 2},
        {"one byte more", 121, 2},
        {"longer than a text can be: cut", kStampLength + 9000, (kStampLength + 3999) / 120 + 1},
    };
    for (const auto& [why, length, records] : cases) { // the length is that of the whole line
        SetLog("00000000\r\n");
        EXPECT_EQ(writeLog(kLogFile, "%s", std::string(length - kStampLength, 'x').c_str()), 0) << why;
        const std::string log = Log();
        EXPECT_EQ(std::stoul(log.substr(0, 8)), records) << why;
        EXPECT_EQ(log.substr(8, 3) + log.substr(30, 3), "\r\n[]  ") << "end of the head, edges of the stamp";
        EXPECT_EQ(Record(log, records + 1), kEndMark) << why;
        const std::size_t cut = std::min(length, kStampLength + 3999);
        EXPECT_EQ(Record(log, records), Padded(records == 1 ? log.substr(10, length) : std::string(cut % 120, 'x')))
            << why;
    }
}

TEST_F(RingLog, GoesOnFromAnyHead) {
    for (const auto& [head, next, record] : {std::tuple{"00099999\r\n", "00100000\r\n", 100000U},
                                             {"00100000\r\n", "00000001\r\n", 1},
                                             {"garbage!\r\n", "00000001\r\n", 1},
                                             {"", "00000001\r\n", 1},
                                             {"00000007", "00000008\r\n", 8}}) {
        SetLog(head);
        EXPECT_EQ(writeLog(kLogFile, "here"), 0);
        const std::string log = Log();
        EXPECT_EQ(log.substr(0, 10), next) << head;
        EXPECT_EQ(Record(log, record).substr(kStampLength, 4), "here") << head;
        EXPECT_EQ(Record(log, record + 1), kEndMark) << head;
        EXPECT_LE(log.size(), 12200132U);
    }
}

TEST_F(RingLog, KnowsALogFromOtherFiles) {
    SetLog("1234567");
    EXPECT_EQ(writeLog(kLogFile, "x"), 0);
    EXPECT_EQ(Log(), "1234567");
    EXPECT_EQ(writeLog("..\\nowhere\\graph.log", "x"), 1);
    EXPECT_EQ(writeLog("/dev/null", "x"), 0); // has no head to read
    EXPECT_EQ(writeLog(nullptr, "x"), 1);

    const std::string letter = work.Write("letter", "Dear reader, this is no log.");
    std::filesystem::create_symlink(letter, work.Path("log/link.log"));
    EXPECT_EQ(writeLog("..\\log\\link.log", "x"), 0);
    EXPECT_EQ(work.Read("letter"), "Dear reader, this is no log.");
    work.Write("letter", "00000000\r\n");
    EXPECT_EQ(writeLog("..\\log\\link.log", "moved"), 0);
    EXPECT_EQ(Record(work.Read("letter"), 1).substr(kStampLength, 5), "moved");
}

TEST_F(RingLog, WaitsForWritersAndNotForALockThatIsNeverFreed) {
    SetLog("00000000\r\n");
    const int holder = open(work.Path("log/graph.log").c_str(), O_RDWR);
    ASSERT_EQ(flock(holder, LOCK_EX), 0);
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(writeLog(kLogFile, "x"), 1);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1000)) << "waits once, and not long";
    EXPECT_EQ(Log(), "00000000\r\n");

    std::thread late([holder] { // writes lines all the time, and never lets go meanwhile
        for (const char* counter :
             {"00000001", "00000002", "00000003", "00000004", "00000005", "00000006", "00000007"}) {
            EXPECT_EQ(pwrite(holder, counter, 8, 0), 8);
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
        close(holder);
    });
    std::thread([] { EXPECT_EQ(writeLog(kLogFile, "x"), 0) << "one that hasn't waited yet"; }).join();
    late.join();
    EXPECT_EQ(writeLog(kLogFile, "x"), 0);
}

TEST_F(RingLog, NoRoomForARecord) {
    writeLog(kLogFile, "first");
    const std::string before = Log();
    const auto writeWithoutRoom = [&] {
        signal(SIGXFSZ, SIG_IGN); // the limit then fails a write as a full disk does: part of it first
        const rlimit limit{before.size() + 50, before.size() + 50};
        setrlimit(RLIMIT_FSIZE, &limit);
        std::_Exit(writeLog(kLogFile, "second") + 2 * writeLog(kLogFile, "third"));
    };
    EXPECT_EXIT(writeWithoutRoom(), testing::ExitedWithCode(0), "");
    EXPECT_EQ(Log().substr(0, before.size()), before) << "with its end mark";
    EXPECT_EQ(writeLog(kLogFile, "fourth"), 0);
    EXPECT_EQ(Record(Log(), 1), Record(before, 1));
    EXPECT_EQ(Record(Log(), 2).substr(kStampLength, 6), "fourth");
    EXPECT_EQ(Record(Log(), 3), kEndMark);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(work.Path("log")), {}), 1) << "nothing else is left";
}

TEST_F(RingLog, TellsLaterWhatFoundNoDescriptor) {
    const auto tell = [] {
        rlimit limit{};
        getrlimit(RLIMIT_NOFILE, &limit);
        const rlimit none{0, limit.rlim_max};
        setrlimit(RLIMIT_NOFILE, &none);
        for (const char* text : {"a font can't be read", "nor another"})
            melkar::LogText(text);
        setrlimit(RLIMIT_NOFILE, &limit);
        for (const char* text : {"second", "third"})
            melkar::LogText(text);
        std::_Exit(0);
    };
    EXPECT_EXIT(tell(), testing::ExitedWithCode(0), "");
    const std::string log = Log();
    EXPECT_EQ(log.substr(0, 8), "00000003");
    EXPECT_EQ(Record(log, 1).substr(kStampLength, 20), "a font can't be read");
    EXPECT_EQ(Record(log, 2).substr(kStampLength, 6), "second");
}

/// A limit on the size of files kills at the write that crosses it, where `room` bytes behind the last record are left.
TEST_F(RingLog, AKillLeavesNoHole) {
    for (const auto& [why, room] : {std::pair{"before the record", 0},
                                    {"within the record", 50},
                                    {"before the end mark", 122},
                                    {"within the end mark", 200}}) {
        SetLog("");
        writeLog(kLogFile, "first");
        const std::string before = Log();
        const rlim_t limit = 10 + kRecord + room;
        const auto writeBeyondIt = [limit] {
            const rlimit sizes{limit, limit};
            setrlimit(RLIMIT_FSIZE, &sizes);
            writeLog(kLogFile, "killed");
        };
        EXPECT_EXIT(writeBeyondIt(), testing::KilledBySignal(SIGXFSZ), "") << why;
        EXPECT_EQ(Log().substr(0, 10 + kRecord), before.substr(0, 10 + kRecord)) << why << ": head and first record";
        EXPECT_EQ(writeLog(kLogFile, "after"), 0) << why;
        const std::string log = Log();
        EXPECT_EQ(log.substr(0, 10), "00000002\r\n") << why;
        EXPECT_EQ(Record(log, 2).substr(kStampLength, 6), "after\0"s) << why;
        EXPECT_EQ(Record(log, 3), kEndMark) << why;
        EXPECT_EQ(log.size(), 10 + 3 * kRecord) << why;
    }
}

TEST_F(RingLog, MendsWhatWasCut) {
    const std::string whole = "00000003\r\n" + Padded("one") + Padded("two") + Padded("three") + kEndMark;
    const std::tuple<const char*, std::size_t, const char*, const char*> cases[] = {
        {"within the end mark", whole.size() - 10, "two", "three"},
        {"within the last record", whole.size() - 2 * kRecord + 3, "two", "thr"},
        {"two records are missing", whole.size() - 3 * kRecord, "", ""},
    };
    for (const auto& [why, size, second, third] : cases) {
        SetLog(whole.substr(0, size));
        EXPECT_EQ(writeLog(kLogFile, "four"), 0) << why;
        const std::string log = Log();
        EXPECT_EQ(log.substr(0, 10 + kRecord), "00000004\r\n" + Padded("one")) << why;
        EXPECT_EQ(Record(log, 2), Padded(second)) << why;
        EXPECT_EQ(Record(log, 3), Padded(third)) << why;
        EXPECT_EQ(Record(log, 4).substr(kStampLength, 5), "four\0"s) << why;
        EXPECT_EQ(log.substr(10 + 4 * kRecord), kEndMark) << why;
    }
}

} // namespace
