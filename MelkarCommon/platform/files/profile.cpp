#include <MelkarCommon/platform/profile.h>

#include <MelkarCommon/platform/files/byte_order_mark.h>
#include <MelkarCommon/platform/files/paths.h>
#include <MelkarCommon/platform/files/profile_lines.h>
#include <MelkarCommon/platform/files/profile_snapshot.h>
#include <MelkarCommon/platform/values/ascii.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <ctime>
#include <optional>
#include <sys/stat.h>
#include <tuple>
#include <utility>

namespace melkar {
namespace {

/// Where the next line that begins with a bracket has it; `from` is the start of a line. Looks for brackets rather
/// than for lines: a profile has many keys for each section.
std::size_t FindBracket(std::string_view text, std::size_t from) {
    for (std::size_t at = text.find('[', from); at != std::string_view::npos; at = text.find('[', at + 1)) {
        std::size_t before = at;
        while (before > from && text[before - 1] != '\n' && IsBlank(text[before - 1]))
            --before;
        if (before == from || text[before - 1] == '\n')
            return at;
    }
    return std::string_view::npos;
}

struct SectionText {
    std::string_view name; ///< to the end of the line if no bracket closes it
    std::string_view body;
};

/// Cuts the next section, and what stands before it, off `rest`.
std::optional<SectionText> TakeSection(std::string_view& rest) {
    const std::size_t bracket = FindBracket(rest, 0);
    if (bracket == std::string_view::npos)
        return std::nullopt;
    rest.remove_prefix(bracket);
    const std::string_view header = TakeLine(rest);
    const std::size_t end = std::min(FindBracket(rest, 0), rest.size());
    const SectionText section{SectionName(header), rest.substr(0, end)};
    rest.remove_prefix(end);
    return section;
}

std::optional<std::string_view> FindInSection(std::string_view body, std::string_view key) {
    while (!body.empty()) {
        const auto entry = SplitProfileLine(TakeLine(body));
        if (entry && EqualNoCase(entry->key, key))
            return entry->value;
    }
    return std::nullopt;
}

/// One key's value, read no further than the end of its section.
std::optional<std::string_view> FindInText(std::string_view text, std::string_view section, std::string_view key) {
    std::string_view rest = WithoutByteOrderMark(text);
    while (const auto next = TakeSection(rest))
        if (EqualNoCase(next->name, section))
            return FindInSection(next->body, key);
    return std::nullopt;
}

std::optional<std::string> ReadKey(const char* path, const char* section, const char* key) {
    if (!path || !section || !key)
        return std::nullopt;
    const std::string text = ReadWholeFile(HostPath(path), nullptr);
    const auto value = FindInText(text, TrimBlanks(section), TrimBlanks(key));
    return value ? std::optional<std::string>(*value) : std::nullopt;
}

/// A file's state as the system tells it: two equal ones are of one file with the same contents if the first is old
/// enough. What is written within the same tick of the clock may not change it.
struct FileState {
    bool IsSettled(const timespec& now) const {
        constexpr std::time_t kLongestTick = 2; // seconds, of file systems of removable media
        return changed.tv_sec < now.tv_sec - kLongestTick;
    }
    bool operator==(const FileState& other) const {
        const auto all = [](const FileState& state) {
            return std::tuple(state.device, state.number, state.size, state.changed.tv_sec, state.changed.tv_nsec,
                              state.written.tv_sec, state.written.tv_nsec);
        };
        return all(*this) == all(other);
    }

    dev_t device;
    ino_t number;
    off_t size;
    timespec changed; ///< contents or anything else: nobody can set it back
    timespec written;
};

std::optional<FileState> StateOf(const char* path) {
    struct stat status {};
    if (stat(HostPath(path).c_str(), &status) != 0)
        return std::nullopt;
    return FileState{status.st_dev, status.st_ino, status.st_size, status.st_ctim, status.st_mtim};
}

/// Nothing for a file that isn't there, or may change without a trace.
std::optional<FileState> SettledStateOf(const char* path) {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    const std::optional<FileState> state = StateOf(path);
    return state && state->IsSettled(now) ? state : std::nullopt;
}

constexpr std::size_t kMostKept = std::size_t{64} * 1024; ///< bytes of a reading

/// Of a whole file: one that couldn't be read, as for want of a descriptor, is tried again.
struct LastReading {
    std::optional<FileState> state; ///< from before it was read
    std::shared_ptr<const ProfileSnapshot> snapshot;
};

LastReading& LastOf(ReadingFor use) {
    thread_local std::array<LastReading, 2> last;
    return last[static_cast<std::size_t>(use)];
}

} // namespace

ProfileFile::ProfileFile(const char* path) : path(path ? path : ""), bytes(ReadWholeFile(HostPath(path), &isRead)) {}

ProfileSnapshot::ProfileSnapshot(const ProfileFile& file, std::string_view ownSection)
    : m_path(file.path), m_isRead(file.isRead), m_ownName(ownSection) {
    ownSection = TrimBlanks(ownSection);
    std::string_view rest = WithoutByteOrderMark(file.bytes);
    while (!m_own.isThere || !m_common.isThere) { // repeated ones add nothing
        const auto section = TakeSection(rest);
        if (!section)
            break;
        if (EqualNoCase(section->name, ownSection))
            m_own.Take(section->body);
        if (EqualNoCase(section->name, kCommon))
            m_common.Take(section->body);
    }
}

void ProfileSnapshot::Section::Take(std::string_view body) {
    if (std::exchange(isThere, true))
        return;
    bytes = body.size();
    while (!body.empty())
        if (const auto entry = SplitProfileLine(TakeLine(body)))
            entries.push_back({std::string(entry->key), std::string(entry->value)});
}

const std::string* ProfileSnapshot::Section::Find(std::string_view key) const {
    key = TrimBlanks(key);
    for (const Entry& entry : entries)
        if (EqualNoCase(entry.key, key))
            return &entry.value;
    return nullptr;
}

std::shared_ptr<const ProfileSnapshot> ReadProfile(const char* path, std::string_view ownSection, ReadingFor use) {
    LastReading& last = LastOf(use);
    const std::optional<FileState> state = SettledStateOf(path);
    if (state && last.state == state && last.snapshot->IsOf(ownSection) && last.snapshot->Path() == path)
        return last.snapshot;
    const ProfileFile file(path);
    auto snapshot = std::make_shared<const ProfileSnapshot>(file, ownSection);
    const bool isWhole = file.isRead && state && static_cast<off_t>(file.bytes.size()) == state->size;
    last = isWhole && snapshot->Size() <= kMostKept ? LastReading{state, snapshot} : LastReading();
    return snapshot;
}

void ForgetProfile(ReadingFor use) { LastOf(use) = {}; }

int ProfileInt(const std::string* value, int fallback) {
    return value && !value->empty() ? ParseInt(*value) : fallback;
}

} // namespace melkar

DWORD GetPrivateProfileStringA(const char* section, const char* key, const char* fallback, char* buffer, DWORD size,
                               const char* path) {
    if (!buffer || size == 0)
        return 0;
    const auto value = melkar::ReadKey(path, section, key);
    const std::string_view text = value ? std::string_view(*value) : std::string_view(fallback ? fallback : "");
    const std::size_t length = std::min<std::size_t>(text.size(), size - 1);
    if (length > 0)
        std::memmove(buffer, text.data(), length); // the buffer may hold the fallback
    buffer[length] = '\0';
    return static_cast<DWORD>(length);
}

int GetPrivateProfileIntA(const char* section, const char* key, int fallback, const char* path) {
    const auto value = melkar::ReadKey(path, section, key);
    return melkar::ProfileInt(value ? &*value : nullptr, fallback);
}
