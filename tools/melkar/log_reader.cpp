#include "log_reader.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace melkar::tool {
namespace {

// As the library's ring_log.h tells.
constexpr int kLastRecord = 100000;
constexpr std::size_t kHead = 10;
constexpr std::size_t kDigits = 8;
constexpr std::size_t kPiece = 120;
constexpr std::size_t kRecord = 122;
constexpr std::string_view kLineEnd = "\r\n";

class File {
public:
    explicit File(const std::string& path) : m_file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)) {}
    ~File() {
        if (m_file >= 0)
            close(m_file);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    int Get() const { return m_file; }

private:
    int m_file;
};

std::string ReadAt(int file, std::size_t offset, std::size_t count) {
    std::string bytes(count, '\0');
    const ssize_t got = pread(file, bytes.data(), count, static_cast<off_t>(offset));
    bytes.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    return bytes;
}

constexpr std::size_t OffsetOf(int record) { return kHead + kRecord * static_cast<std::size_t>(record - 1); }

/// What the head says; none if that isn't the head of a log.
std::optional<int> CounterOf(int file) {
    const std::string head = ReadAt(file, 0, kHead);
    const auto isDigit = [](char letter) { return letter >= '0' && letter <= '9'; };
    if (head.size() != kHead || !head.ends_with(kLineEnd) ||
        !std::all_of(head.begin(), head.begin() + kDigits, isDigit))
        return std::nullopt;
    return std::min(std::stoi(head.substr(0, kDigits)), kLastRecord);
}

bool IsEndMark(std::string_view record) {
    return record.starts_with("=========") && record.find_first_not_of('=') >= kPiece - 1;
}

/// "[2026/01/31 23:59:59]  "
bool HasStamp(std::string_view text) {
    constexpr std::string_view kForm = "[0000/00/00 00:00:00]  ";
    return text.size() >= kForm.size() &&
           std::equal(kForm.begin(), kForm.end(), text.begin(), [](char form, char letter) {
               return form == '0' ? letter >= '0' && letter <= '9' : form == letter;
           });
}

/// Names of files may hold anything, and a log is looked at on terminals.
std::string Harmless(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](unsigned char byte) { return (byte < 0x20 && byte != '\t') || byte == 0x7F; },
        '?');
    return text;
}

} // namespace

LogReader::LogReader(std::string path, Put line, Put doubt)
    : m_path(std::move(path)), m_line(std::move(line)), m_doubt(std::move(doubt)) {}

bool LogReader::Read() {
    const bool wasOpen = m_isOpen;
    const bool isRead = ReadNew();
    if (wasOpen) // its end had time to come
        Finish();
    return isRead;
}

bool LogReader::ReadNew() {
    const File file(m_path);
    struct stat status {};
    if (file.Get() < 0 || fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        m_doubt("can't be read: " + m_path + (errno != 0 ? std::string(": ") + std::strerror(errno) : ""));
        return false;
    }
    if (status.st_size == 0) // a log that was cleared
        return true;
    const std::optional<int> counter = CounterOf(file.Get());
    if (!counter) {
        m_doubt("this is no log: " + m_path + " doesn't begin with the number of its last record");
        return false;
    }
    const std::size_t size = static_cast<std::size_t>(status.st_size);
    const int whole = static_cast<int>(std::min<std::size_t>((size - kHead) / kRecord, kLastRecord));
    const bool isAnew = *counter < m_last && whole < kLastRecord;
    if (isAnew)
        m_doubt("the log began anew");
    if (m_last < 0 || isAnew) {
        Begin(file.Get(), *counter, whole);
    } else if (*counter < m_last) {
        TakeRecords(file.Get(), m_last + 1, kLastRecord);
        TakeRecords(file.Get(), 1, *counter);
    } else {
        TakeRecords(file.Get(), m_last + 1, *counter);
    }
    m_last = *counter;
    return true;
}

/// All that there is: once the ring has closed, what stands behind the end mark is the oldest.
void LogReader::Begin(int file, int counter, int whole) {
    if (counter > whole)
        m_doubt("the file was cut: it counts " + std::to_string(counter) + " records and has " + std::to_string(whole));
    else if (!IsEndMark(ReadAt(file, OffsetOf(counter + 1), kPiece)))
        m_doubt("no end mark stands behind record " + std::to_string(counter) + ", the last");
    else if (whole == kLastRecord)
        TakeRecords(file, counter + 2, kLastRecord);
    TakeRecords(file, 1, std::min(counter, whole));
}

void LogReader::TakeRecords(int file, int first, int last) {
    constexpr int kAtOnce = 1000;
    for (int from = first; from <= last; from += kAtOnce) {
        const int count = std::min(kAtOnce, last - from + 1);
        const std::string bytes = ReadAt(file, OffsetOf(from), kRecord * static_cast<std::size_t>(count));
        for (std::size_t at = 0; at + kRecord <= bytes.size(); at += kRecord)
            TakeRecord(bytes.substr(at, kRecord), from + static_cast<int>(at / kRecord));
    }
}

/// A piece that fills its record goes on in the next without a stamp. Records of other writers may stand between them,
/// and wait; not for ever, since a writer may have been killed.
void LogReader::TakeRecord(const std::string& record, int number) {
    constexpr std::size_t kMostWaiting = 16;
    if (!record.ends_with(kLineEnd))
        m_doubt("record " + std::to_string(number) + " is torn");
    const std::string text = record.substr(0, std::min(record.find('\0'), kPiece));
    const bool goesOn = text.size() == kPiece;
    if (m_isOpen && !HasStamp(text)) {
        m_open += text;
        if (!goesOn)
            Finish();
    } else if (goesOn) {
        Finish();
        m_open = text;
        m_isOpen = true;
    } else if (!text.empty()) {
        m_waiting.push_back(text);
        if (!m_isOpen || m_waiting.size() > kMostWaiting)
            Finish();
    }
}

void LogReader::Finish() {
    if (m_isOpen)
        m_line(Harmless(m_open));
    for (const std::string& line : m_waiting)
        m_line(Harmless(line));
    m_waiting.clear();
    m_isOpen = false;
}

} // namespace melkar::tool
