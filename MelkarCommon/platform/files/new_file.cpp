#include <MelkarCommon/platform/files/new_file.h>
#include <MelkarCommon/platform/surface.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <string_view>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace melkar {

namespace {

constinit std::atomic<bool> g_isDurable{false};

/// So that a new name in it outlives the machine's power; as far as the caller may open it.
void SyncFolder(const std::string& path) {
    const int folder = open(FolderOf(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return;
    fsync(folder);
    close(folder);
}

/// A name beside `path` that no other thread or process uses now.
std::string TemporaryName(const std::string& path) {
    static std::atomic<unsigned> s_count{0};
    return path + "." + std::to_string(getpid()) + "." + std::to_string(s_count.fetch_add(1)) + ".new";
}

/// Takes a dot and digits from the front. @return their number, or -1
int TakeNumber(std::string_view& text) {
    int number = -1;
    if (!text.starts_with('.') || text.starts_with(".-"))
        return -1;
    const auto [stop, error] = std::from_chars(text.data() + 1, text.data() + text.size(), number);
    text.remove_prefix(static_cast<std::size_t>(stop - text.data()));
    return error == std::errc() ? number : -1;
}

/// The process whose number stands in a name that `TemporaryName` made for this file; 0 in any other.
pid_t OwnerIn(std::string_view name, std::string_view file) {
    if (!name.starts_with(file))
        return 0;
    name.remove_prefix(file.size());
    const pid_t owner = TakeNumber(name);
    return owner > 0 && TakeNumber(name) >= 0 && name == ".new" ? owner : 0;
}

/// Of a process on this machine; those of another, on a disk that both see, have written within the time.
bool IsLeftByTheDead(const std::string& path, pid_t owner) {
    constexpr std::time_t kStillWriting = 600; // seconds
    struct stat status {};
    return kill(owner, 0) != 0 && errno == ESRCH && lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           std::time(nullptr) - status.st_mtime > kStillWriting;
}

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

/// Removes what processes left of this file when they were killed; once for each folder that a thread turns to. The
/// standard's iterator of folders ends the process where it finds no memory.
void SweepLeftovers(const std::string& path) {
    static thread_local std::string t_swept;
    std::string folder = FolderOf(path);
    if (folder == t_swept)
        return;
    const std::string_view file = std::string_view(path).substr(path.rfind('/') + 1);
    const std::unique_ptr<DIR, CloseFolder> entries(opendir(folder.c_str()));
    while (const dirent* entry = entries != nullptr ? readdir(entries.get()) : nullptr) {
        const pid_t owner = OwnerIn(entry->d_name, file);
        const std::string name = owner != 0 ? folder + "/" + entry->d_name : "";
        if (owner != 0 && IsLeftByTheDead(name, owner))
            unlink(name.c_str());
    }
    t_swept = std::move(folder);
}

/// Where a symlink leads, and from there on; the end need not be there. `path` itself if it is no link.
std::string FollowLinks(std::string path) {
    constexpr int kMostLinks = 40; // as the system itself gives up
    char target[PATH_MAX];
    for (int i = 0; i < kMostLinks; ++i) {
        const ssize_t length = readlink(path.c_str(), target, sizeof target);
        if (length <= 0 || length == sizeof target)
            return path;
        const std::string next(target, static_cast<std::size_t>(length));
        path = next.front() == '/' ? next : FolderOf(path).append("/").append(next);
    }
    return path;
}

/// Whether a file may take the place of what `path` names: a regular file that the caller may write, or nothing.
/// `status` is that of the file there, its mode 0 if there is none. Else false, with `errno` set.
bool MayReplace(const std::string& path, struct stat& status) {
    status = {};
    if (lstat(path.c_str(), &status) != 0)
        return errno == ENOENT;
    if (S_ISREG(status.st_mode))
        return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
    errno = S_ISDIR(status.st_mode) ? EISDIR : S_ISLNK(status.st_mode) ? ELOOP : ENOTSUP;
    return false;
}

/// The name of an open file without one, by which it can be given one.
std::string HandleName(int descriptor) { return "/proc/self/fd/" + std::to_string(descriptor); }

/// A file without a name, gone with its last descriptor; -1 where the file system has no such files, or where they
/// couldn't be given a name later.
int OpenNameless(const std::string& path, mode_t mode) {
    const int descriptor = open(FolderOf(path).c_str(), O_RDWR | O_TMPFILE | O_CLOEXEC, mode);
    if (descriptor < 0 || access(HandleName(descriptor).c_str(), F_OK) == 0)
        return descriptor;
    close(descriptor);
    return -1;
}

/// Opens a fresh file and puts its name into `name`. A killed process of the same number may have left some.
int OpenNamed(const std::string& path, mode_t mode, std::string& name) {
    constexpr int kTries = 1000;
    for (int i = 0; i < kTries; ++i) {
        name = TemporaryName(path);
        const int descriptor = open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (descriptor >= 0 || errno != EEXIST)
            return descriptor;
    }
    return -1;
}

/// Gives the new file the owner, where that is allowed, and the mode of the one that it replaces.
void TakeOver(int descriptor, const struct stat& former) {
    [[maybe_unused]] const bool isKept = fchown(descriptor, former.st_uid, former.st_gid) == 0 ||
                                         fchown(descriptor, -1U, former.st_gid) == 0; // else it is the writer's
    fchmod(descriptor, former.st_mode & 07777);
}

bool WriteAt(int file, off_t at, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = pwrite(file, bytes.data(), bytes.size(), at);
        if (written <= 0)
            return false;
        at += written;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// Moves all that stands behind a place, the last block first.
bool MakeRoom(int file, off_t at, std::size_t count) {
    std::array<char, 1 << 14> block{};
    off_t end = lseek(file, 0, SEEK_END);
    while (end > at) {
        const auto size = std::min(static_cast<off_t>(block.size()), end - at);
        end -= size;
        for (off_t done = 0; done < size;) {
            const ssize_t read = pread(file, block.data() + done, static_cast<std::size_t>(size - done), end + done);
            if (read <= 0)
                return false;
            done += read;
        }
        if (!WriteAt(file, end + static_cast<off_t>(count), {block.data(), static_cast<std::size_t>(size)}))
            return false;
    }
    return end >= 0;
}

/// A taker is a stranger: what it throws ends here.
bool IsTaken(const std::function<bool(std::string_view)>& take, std::string_view piece) {
    try {
        return take(piece);
    } catch (...) {
        return false;
    }
}

} // namespace

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

std::unique_ptr<NewFile> NewFile::Create(const std::string& path) {
    const std::string target = FollowLinks(path);
    struct stat former;
    if (!MayReplace(target, former))
        return nullptr;
    const bool replaces = former.st_mode != 0;
    const mode_t mode = replaces ? 0600 : 0666;
    std::string name;
    SweepLeftovers(target);
    int descriptor = OpenNameless(target, mode);
    if (descriptor < 0)
        descriptor = OpenNamed(target, mode, name);
    if (descriptor < 0)
        return nullptr;
    if (replaces)
        TakeOver(descriptor, former);
    return Open(descriptor, path, target, std::move(name));
}

std::unique_ptr<NewFile> NewFile::WithoutName(int descriptor, std::string called) {
    return Open(descriptor, std::move(called), "", "");
}

std::unique_ptr<NewFile> NewFile::HandedTo(std::function<bool(std::string_view)> take) {
    const int descriptor = memfd_create("page", MFD_CLOEXEC);
    std::unique_ptr<NewFile> file = descriptor >= 0 ? Open(descriptor, "in memory", "", "") : nullptr;
    if (file != nullptr)
        file->m_take = std::move(take);
    return file;
}

std::unique_ptr<NewFile> NewFile::Open(int descriptor, std::string path, std::string target, std::string temporary) {
    if (std::FILE* stream = fdopen(descriptor, "wb"))
        return std::unique_ptr<NewFile>(new NewFile(std::move(path), std::move(target), std::move(temporary), stream));
    close(descriptor);
    if (!temporary.empty())
        unlink(temporary.c_str());
    errno = ENOMEM;
    return nullptr;
}

NewFile::~NewFile() {
    if (m_stream != nullptr)
        std::fclose(m_stream);
    RemoveTemporary();
}

void NewFile::KeepError() {
    if (m_error == 0)
        m_error = errno != 0 ? errno : EIO;
}

void NewFile::RemoveTemporary() {
    if (!m_temporary.empty())
        unlink(m_temporary.c_str());
    m_temporary.clear();
}

bool NewFile::Write(const void* bytes, std::size_t count) noexcept {
    if (m_error != 0 || m_stream == nullptr)
        return false;
    errno = 0;
    if (std::fwrite(bytes, 1, count, m_stream) != count)
        KeepError();
    return m_error == 0;
}

bool NewFile::Insert(std::size_t at, std::string_view bytes) noexcept {
    if (m_error != 0 || m_stream == nullptr)
        return false;
    errno = 0;
    const int file = fileno(m_stream);
    const bool isInserted = std::fflush(m_stream) == 0 && MakeRoom(file, static_cast<off_t>(at), bytes.size()) &&
                            WriteAt(file, static_cast<off_t>(at), bytes) && std::fseek(m_stream, 0, SEEK_END) == 0;
    if (!isInserted)
        KeepError();
    return isInserted;
}

void NewFile::Abandon(int error) {
    if (m_error == 0)
        m_error = error;
}

/// A file without a name gets its own at once if that is free, else a temporary one: a link replaces nothing.
bool NewFile::GiveName() {
    const std::string handle = HandleName(fileno(m_stream));
    if (linkat(AT_FDCWD, handle.c_str(), AT_FDCWD, m_target.c_str(), AT_SYMLINK_FOLLOW) == 0)
        return true;
    if (errno != EEXIST)
        return false;
    m_temporary = TemporaryName(m_target);
    return linkat(AT_FDCWD, handle.c_str(), AT_FDCWD, m_temporary.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

/// What can fail before the file is closed.
bool NewFile::Deliver() {
    if (m_take != nullptr)
        return HandOver();
    return m_target.empty() || TakeName();
}

bool NewFile::HandOver() {
    std::vector<char> piece(1 << 16);
    for (off_t at = 0;;) {
        const ssize_t count = pread(fileno(m_stream), piece.data(), piece.size(), at);
        if (count <= 0)
            return count == 0;
        const bool isTaken = IsTaken(m_take, {piece.data(), static_cast<std::size_t>(count)});
        errno = ECANCELED; // if it isn't, whatever the taker left there
        if (!isTaken)
            return false;
        at += count;
    }
}

bool NewFile::TakeName() {
    struct stat former;
    if (g_isDurable && fsync(fileno(m_stream)) != 0)
        return false;
    return MayReplace(m_target, former) && (!m_temporary.empty() || GiveName());
}

int NewFile::Commit() {
    if (m_stream == nullptr)
        return m_error;
    errno = 0;
    if (std::fflush(m_stream) != 0 || (m_error == 0 && !Deliver()))
        KeepError();
    errno = 0;
    if (std::fclose(m_stream) != 0)
        KeepError();
    m_stream = nullptr;
    if (m_error == 0 && !m_temporary.empty() && std::rename(m_temporary.c_str(), m_target.c_str()) != 0)
        KeepError();
    if (m_error == 0)
        m_temporary.clear();
    if (m_error == 0 && g_isDurable && !m_target.empty())
        SyncFolder(m_target);
    RemoveTemporary();
    return m_error;
}

} // namespace melkar

void SetDurableFiles(BOOL isDurable) { melkar::g_isDurable = isDurable != FALSE; }
