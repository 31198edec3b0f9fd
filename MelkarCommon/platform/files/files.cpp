#include <MelkarCommon/platform/files.h>

#include <MelkarCommon/platform/files/byte_order_mark.h>
#include <MelkarCommon/platform/files/new_file.h>
#include <MelkarCommon/platform/files/paths.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace melkar {
namespace {

constexpr std::size_t kBlock = std::size_t{64} * 1024;
constexpr std::size_t kLargestWhole = std::size_t{256} * 1024 * 1024; // nothing that we read whole comes near it

/// A descriptor of a regular file, or -1. Opening never waits, as it would for a pipe without a writer.
int OpenRegular(const std::string& path, std::size_t* size) {
    const int file = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (file < 0)
        return -1;
    struct stat status {};
    if (fstat(file, &status) != 0 || !S_ISREG(status.st_mode)) {
        close(file);
        return -1;
    }
    if (size)
        *size = static_cast<std::size_t>(status.st_size);
    return file;
}

/// Reads until `size` bytes are there or the file ends; an error counts as its end. Whoever asks for no more than the
/// file's size spares the call that would only tell of its end.
std::size_t ReadUpTo(int file, char* to, std::size_t size) {
    std::size_t done = 0;
    while (done < size) {
        const ssize_t count = read(file, to + done, size - done);
        if (count > 0)
            done += static_cast<std::size_t>(count);
        else if (count == 0 || errno != EINTR)
            break;
    }
    return done;
}

/// Whether its backslashes may belong to the name of a file. Those of profiles and of the log lead out of the directory
/// first: asking for such a file would cost each line of the log a system call.
bool MayBeName(std::string_view path) { return path.find('\\') != std::string_view::npos && !path.starts_with("..\\"); }

} // namespace

std::string ResolvePath(const char* path, const std::string& directory) {
    const std::string_view name = path ? path : "";
    const bool isFromThere = !directory.empty() && !name.empty() && name.front() != '/' && name.front() != '\\';
    std::string resolved = isFromThere ? directory + '/' : "";
    resolved += name;
    if (!MayBeName(name) || access(resolved.c_str(), F_OK) != 0)
        std::replace(resolved.end() - static_cast<std::ptrdiff_t>(name.size()), resolved.end(), '\\', '/');
    return resolved;
}

LineReader::LineReader(const char* path) : m_file(OpenRegular(ResolvePath(path), &m_left)) {}

LineReader::~LineReader() {
    if (m_file >= 0)
        close(m_file);
}

bool LineReader::Fill() {
    if (m_file < 0 || m_left == 0)
        return false;
    const std::size_t wanted = std::min(kBlock, m_left);
    if (!m_buffer)
        m_buffer = std::make_unique_for_overwrite<char[]>(wanted); // later blocks are never larger
    m_filled = ReadUpTo(m_file, m_buffer.get(), wanted);
    m_left = m_filled == wanted ? m_left - wanted : 0;
    m_position = 0;
    if (m_atStart && std::string_view(m_buffer.get(), m_filled).starts_with(kByteOrderMark))
        m_position = kByteOrderMark.size();
    m_atStart = false;
    return m_position < m_filled;
}

const char* LineReader::Next(std::size_t limit) {
    m_line.clear();
    limit = std::max<std::size_t>(limit, 1);
    while (m_line.size() < limit && (m_position < m_filled || Fill())) {
        const char* from = m_buffer.get() + m_position;
        const std::size_t room = std::min(m_filled - m_position, limit - m_line.size());
        const auto* feed = static_cast<const char*>(std::memchr(from, '\n', room));
        const std::size_t taken = feed ? static_cast<std::size_t>(feed - from) + 1 : room;
        m_line.append(from, taken);
        m_position += taken;
        if (feed)
            break;
    }
    JoinCrLf();
    return m_line.empty() ? nullptr : m_line.c_str();
}

/// Makes CR LF at the end of the line one line feed, also where the limit or a block parts them.
void LineReader::JoinCrLf() {
    if (m_line.ends_with("\r\n")) {
        m_line.resize(m_line.size() - 1);
    } else if (m_line.ends_with('\r') && (m_position < m_filled || Fill()) && m_buffer[m_position] == '\n') {
        ++m_position;
    } else {
        return;
    }
    m_line.back() = '\n';
}

FileWriter::FileWriter(const char* path)
    : m_file(NewFile::Create(ResolvePath(path))), m_error(m_file == nullptr ? errno : 0) {}

FileWriter::~FileWriter() = default;

void FileWriter::Write(std::string_view bytes) {
    if (m_file != nullptr)
        m_file->Write(bytes.data(), bytes.size());
}

int FileWriter::Commit() { return m_file != nullptr ? m_file->Commit() : m_error; }

std::string ReadWholeFile(const std::string& path, bool* found) {
    std::string text;
    std::size_t size = 0;
    const int file = OpenRegular(path, &size);
    bool isRead = file >= 0 && size < kLargestWhole;
    if (isRead) {
        try {
            text.resize(size);
            text.resize(ReadUpTo(file, text.data(), size));
        } catch (const std::bad_alloc&) {
            isRead = false;
        }
    }
    if (file >= 0)
        close(file);
    if (found)
        *found = isRead;
    return text;
}

} // namespace melkar
