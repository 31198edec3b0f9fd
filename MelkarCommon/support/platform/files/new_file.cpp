#include <MelkarCommon/support/platform/files/new_file.h>

#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace melkar {

namespace {

/// A name beside `path` that no other thread or process uses now.
std::string TemporaryName(const std::string& path) {
    static std::atomic<unsigned> s_count{0};
    return path + "." + std::to_string(getpid()) + "." + std::to_string(s_count.fetch_add(1)) + ".new";
}

/// Opens a fresh file and puts its name into `name`. A killed process of the same number may have left some.
int OpenFresh(const std::string& path, std::string& name) {
    constexpr int kTries = 1000;
    for (int i = 0; i < kTries; ++i) {
        name = TemporaryName(path);
        const int descriptor = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor >= 0 || errno != EEXIST)
            return descriptor;
    }
    return -1;
}

} // namespace

std::unique_ptr<NewFile> NewFile::Create(const std::string& path) {
    std::string name;
    const int descriptor = OpenFresh(path, name);
    if (descriptor < 0)
        return nullptr;
    if (std::FILE* stream = fdopen(descriptor, "wb"))
        return std::unique_ptr<NewFile>(new NewFile(path, std::move(name), stream));
    close(descriptor);
    unlink(name.c_str());
    errno = ENOMEM;
    return nullptr;
}

NewFile::~NewFile() {
    if (m_stream == nullptr)
        return;
    std::fclose(m_stream);
    unlink(m_temporary.c_str());
}

void NewFile::KeepError() {
    if (m_error == 0)
        m_error = errno != 0 ? errno : EIO;
}

bool NewFile::Write(const void* bytes, std::size_t count) {
    if (m_error != 0 || m_stream == nullptr)
        return false;
    errno = 0;
    if (std::fwrite(bytes, 1, count, m_stream) != count)
        KeepError();
    return m_error == 0;
}

void NewFile::Abandon() {
    if (m_error == 0)
        m_error = ECANCELED;
}

int NewFile::Commit() {
    if (m_stream == nullptr)
        return m_error;
    errno = 0;
    if (std::fclose(m_stream) != 0)
        KeepError();
    m_stream = nullptr;
    if (m_error == 0 && std::rename(m_temporary.c_str(), m_path.c_str()) != 0)
        KeepError();
    if (m_error != 0)
        unlink(m_temporary.c_str());
    return m_error;
}

} // namespace melkar
