#include <MelkarCommon/support/ring_log.h>

#include <MelkarCommon/platform/datetime.h>
#include <MelkarCommon/platform/files/log_sink.h>
#include <MelkarCommon/platform/files/paths.h>
#include <MelkarCommon/platform/values/ascii.h>
#include <MelkarCommon/platform/values/locales.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr std::size_t kTextRoom = 4000; // with its NUL
constexpr std::size_t kPiece = 120;
constexpr off_t kRecord = 122; // a piece and CR LF
constexpr off_t kHead = 10;    // the counter and CR LF
constexpr std::size_t kCounterDigits = 8;
constexpr int kLastRecord = 100000;
constexpr auto kLongestWait = std::chrono::milliseconds(200); // for one who holds the lock and writes nothing
constexpr int kMostWaits = 10;                                // for others, who write line upon line
constexpr auto kTimeWithoutWait = std::chrono::seconds(10);   // after a wait that was in vain
constexpr int kYields = 8;                                    // a line takes some microseconds to write
constexpr auto kNap = std::chrono::microseconds(50);          // after those; a draw takes a quarter of a millisecond

bool WriteAt(int file, off_t offset, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = pwrite(file, bytes.data(), bytes.size(), offset);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
        offset += count;
    }
    return true;
}

/// The last digits of a number in the place of as many characters.
void PutDigits(std::span<char> place, unsigned number) {
    for (auto digit = place.rbegin(); digit != place.rend(); ++digit, number /= 10)
        *digit = static_cast<char>('0' + number % 10);
}

/// The head of a file whose last record is `counter`.
bool WriteHead(int file, int counter) {
    std::string head = "00000000\r\n";
    PutDigits(std::span(head).first(kCounterDigits), static_cast<unsigned>(counter));
    return WriteAt(file, 0, head);
}

/// Makes the log with a counter of 0. The file gets its name only once its head is there: after a kill, and beside
/// another process that does the same, there is either no log or one that can be read.
void MakeLog(const std::string& path) {
    const std::string unnamed = path + '.' + std::to_string(gettid()) + ".new";
    const int file = open(unnamed.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (file < 0)
        return;
    const bool isWhole = WriteHead(file, 0);
    close(file);
    const bool isNamed = isWhole && (link(unnamed.c_str(), path.c_str()) == 0 || errno == EEXIST);
    if (isWhole && !isNamed && rename(unnamed.c_str(), path.c_str()) == 0)
        return; // a file system without links
    unlink(unnamed.c_str());
}

using Counter = std::array<char, kCounterDigits>;

/// The digits in the head, if `count` says that all are there.
Counter ReadCounter(int file, ssize_t& count) {
    Counter digits{};
    count = pread(file, digits.data(), digits.size(), 0);
    return digits;
}

/// How long a thread waits for the lock. Writers that merely meet on a busy machine lose no line, for as long as the
/// counter goes on; a log that somebody holds costs lines, but not the time of each drawing: after a wait in vain the
/// thread doesn't wait again for a while, or until it has got a lock.
class Patience {
public:
    explicit Patience(int file) : m_file(file) {}

    /// Waits a little. @return false once there is no point in it
    bool Wait() {
        const auto now = Clock::now(); // also while it yields: on a busy machine each may take milliseconds
        if (now < t_noWaitUntil)
            return false;
        if (m_tries == 0 || now - m_start >= kLongestWait) {
            if (!GoesOn())
                return Lose(now);
            m_start = now;
        }
        if (++m_tries <= kYields)
            std::this_thread::yield();
        else
            std::this_thread::sleep_for(kNap);
        return true;
    }
    static void Restore() { t_noWaitUntil = {}; }

private:
    using Clock = std::chrono::steady_clock;

    bool GoesOn() {
        ssize_t count = 0;
        const Counter counter = ReadCounter(m_file, count);
        const bool isNew = m_tries == 0 || counter != m_counter;
        m_counter = counter;
        return isNew && m_waits++ < kMostWaits;
    }
    static bool Lose(Clock::time_point now) {
        t_noWaitUntil = now + kTimeWithoutWait;
        return false;
    }

    static thread_local Clock::time_point t_noWaitUntil;
    int m_file;
    int m_tries = 0;
    int m_waits = 0;
    Clock::time_point m_start;
    Counter m_counter{};
};
thread_local Patience::Clock::time_point Patience::t_noWaitUntil;

/// A file system that knows no locks counts as locked.
bool Lock(int file) {
    for (Patience patience(file); flock(file, LOCK_EX | LOCK_NB) != 0;) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            return true;
        if (!patience.Wait())
            return false;
    }
    Patience::Restore();
    return true;
}

/// The log, open and locked until it is destroyed.
class OpenLog {
public:
    explicit OpenLog(const std::string& path) {
        constexpr int kFlags = O_RDWR | O_NONBLOCK | O_CLOEXEC | O_NOCTTY;
        m_file = open(path.c_str(), kFlags);
        if (m_file < 0 && errno == ENOENT) {
            MakeLog(path);
            m_file = open(path.c_str(), kFlags);
        }
        if (m_file >= 0 && !Lock(m_file))
            Close();
    }
    ~OpenLog() { Close(); }
    OpenLog(const OpenLog&) = delete;
    OpenLog& operator=(const OpenLog&) = delete;

    bool IsOpen() const { return m_file >= 0; }
    int File() const { return m_file; }

private:
    void Close() {
        if (m_file >= 0)
            close(m_file);
        m_file = -1;
    }

    int m_file = -1;
};

bool IsEmptyFile(int file) {
    struct stat status {};
    return fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_size == 0;
}

bool IsSymlink(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

/// The number of the record last written, whatever stands in the head, for the name is that of a log; not through a
/// symlink, which may lead to anything. 0 for an empty file: a log that was cleared. -1 if there is no head to read.
int LastRecord(int file, const std::string& path) {
    ssize_t count = 0;
    const Counter digits = ReadCounter(file, count);
    if (count == 0 && IsEmptyFile(file))
        return 0;
    if (count != static_cast<ssize_t>(digits.size()))
        return -1;
    const bool isHead = std::all_of(digits.begin(), digits.end(), melkar::IsDigit);
    if (!isHead && IsSymlink(path))
        return -1;
    return std::clamp(melkar::ParseInt(std::string_view(digits.data(), digits.size())), 0, kLastRecord);
}

constexpr off_t OffsetOf(int record) { return kHead + kRecord * (record - 1); }

using Record = std::array<char, kRecord>;

std::string_view BytesOf(const Record& record) { return {record.data(), record.size()}; }

/// As it stands in the file.
constexpr Record RecordOf(std::string_view text) {
    Record record{};
    std::copy_n(text.begin(), std::min(text.size(), kPiece), record.begin());
    record[kPiece] = '\r';
    record[kPiece + 1] = '\n';
    return record;
}

constexpr Record kEmpty = RecordOf("");
constexpr Record kEndMark = [] {
    std::array<char, kPiece - 1> line{};
    line.fill('=');
    return RecordOf({line.data(), line.size()});
}();

/// Makes a file that was cut, or has a head and too few records, a row of whole records up to `next`: what is missing
/// counts as empty ones, so that readers find each where its number says. What is behind `next` is whole, too.
void Mend(int file, int last, int next) {
    const off_t end = lseek(file, 0, SEEK_END); // takes less than half of the time of its state
    if (end < 0 || (end < kHead && !WriteHead(file, last)))
        return;
    const off_t size = std::max(end, kHead);
    const auto cut = static_cast<std::size_t>((size - kHead) % kRecord);
    if (cut == 0 && size >= OffsetOf(next))
        return;
    std::string missing(cut != 0 ? BytesOf(kEmpty).substr(cut) : "");
    while (size + static_cast<off_t>(missing.size()) < OffsetOf(next))
        missing += BytesOf(kEmpty);
    WriteAt(file, size, missing);
}

/// @return false if the log can't be opened.
bool WritePiece(const std::string& path, std::string_view text) {
    const OpenLog log(path);
    if (!log.IsOpen())
        return false;
    const int last = LastRecord(log.File(), path);
    if (last < 0)
        return true;
    const int next = last < kLastRecord ? last + 1 : 1;
    Mend(log.File(), last, next);
    // The head comes last: whoever is killed in between leaves a record that doesn't count yet.
    const std::array both{RecordOf(text), kEndMark};
    if (WriteAt(log.File(), OffsetOf(next), {both.front().data(), sizeof both}))
        WriteHead(log.File(), next);
    else // a full disk: at least the place behind the last record has room for the end mark that stood there
        WriteAt(log.File(), OffsetOf(next), BytesOf(kEndMark));
    return true;
}

std::string TimeStamp() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    std::string stamp = "[2026/01/31 23:59:59]  ";
    const std::span place(stamp);
    PutDigits(place.subspan(1, 4), now.wYear);
    PutDigits(place.subspan(6, 2), now.wMonth);
    PutDigits(place.subspan(9, 2), now.wDay);
    PutDigits(place.subspan(12, 2), now.wHour);
    PutDigits(place.subspan(15, 2), now.wMinute);
    PutDigits(place.subspan(18, 2), now.wSecond);
    return stamp;
}

/// The text is cut to its room. A line whose length is a multiple of 120 ends in an empty piece.
int WriteLine(const char* file, std::string_view text) {
    const std::string path = melkar::HostPath(file);
    const std::string line = TimeStamp().append(text.substr(0, kTextRoom - 1));
    for (std::size_t offset = 0; offset <= line.size(); offset += kPiece)
        if (!WritePiece(path, std::string_view(line).substr(offset)))
            return 1;
    return 0;
}

} // namespace

int writeLog(const char* file, const char* format, ...) {
    if (!file)
        return 1;
    char text[kTextRoom] = "";
    if (format) {
        const melkar::ScopedCLocale numbers;
        std::va_list arguments;
        va_start(arguments, format);
        const int length = std::vsnprintf(text, sizeof text, format, arguments);
        va_end(arguments);
        if (length < 0) // arguments that can't be formatted: the bare format tells more than nothing
            *std::copy_n(format, strnlen(format, sizeof text - 1), text) = '\0';
    }
    return WriteLine(file, text);
}

int writeLogCode(const char* file, int code) { return writeLog(file, "CODE = [%d]", code); }

namespace melkar {

namespace {

/// The first line for which there was no descriptor left. It is written ahead of the next one: what it tells, as of a
/// font that can't be opened, is told once.
class LineLeftOver {
public:
    void Keep(const char* text) {
        const std::lock_guard lock(m_mutex);
        if (!m_isThere)
            m_text[std::string_view(text).copy(m_text.data(), m_text.size() - 1)] = '\0';
        m_isThere = true;
    }
    void Write() {
        if (!m_isThere)
            return;
        const std::lock_guard lock(m_mutex);
        if (m_isThere && WriteLine(kLogFile, m_text.data()) == 0)
            m_isThere = false;
    }

private:
    std::atomic<bool> m_isThere = false;
    std::mutex m_mutex;
    std::array<char, kTextRoom> m_text{}; // takes no memory when that is short
};

constinit LineLeftOver g_leftOver;

} // namespace

bool HasLogFolder(const char* file) {
    const std::string path = HostPath(file);
    const std::size_t slash = path.rfind('/');
    struct stat status {};
    return slash == std::string::npos ||
           (stat(path.substr(0, slash + 1).c_str(), &status) == 0 && S_ISDIR(status.st_mode));
}

void LogText(const char* text) {
    const int reason = errno; // of what is told, for the caller who asks next
    g_leftOver.Write();
    errno = 0;
    if (WriteLine(kLogFile, text ? text : "") != 0 && (errno == EMFILE || errno == ENFILE))
        g_leftOver.Keep(text ? text : "");
    errno = reason;
}

void StandardLogSink(const char* text) { LogText(text); }

} // namespace melkar
