#include <MelkarCommon/platform/host_directory.h>

#include <MelkarCommon/platform/files/paths.h>

#include <filesystem>
#include <system_error>
#include <utility>

namespace melkar {
namespace {

/// Of the innermost scope; a bare pointer, for graphs may log while a thread ends.
constinit thread_local const HostPlace* t_place = nullptr;

/// A directory that is gone, or whose way there is unknown, stays as it was named: nothing will be found from it.
std::string Absolute(const char* directory) {
    const std::string name = ResolvePath(directory);
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(name, error);
    return error ? name : path.string();
}

} // namespace

HostPlace::HostPlace() : m_directory(t_place ? t_place->m_directory : nullptr) {}

HostPlace::HostPlace(const char* directory)
    : m_directory(directory && *directory ? std::make_shared<const std::string>(Absolute(directory)) : nullptr) {}

std::string HostPlace::Directory() const { return m_directory ? *m_directory : ""; }

HostDirectory::HostDirectory(const char* directory) : HostDirectory(HostPlace(directory)) {}

HostDirectory::HostDirectory(HostPlace place) : m_place(std::move(place)), m_outer(std::exchange(t_place, &m_place)) {}

HostDirectory::~HostDirectory() { t_place = m_outer; }

std::string HostPath(const char* path) { return ResolvePath(path, HostPlace().Directory()); }

} // namespace melkar
