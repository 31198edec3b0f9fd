#include "files.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <system_error>
#include <unistd.h>

namespace melkar::tool {
namespace {

namespace fs = std::filesystem;

void Copy(std::istream& from, const std::string& path) {
    std::ofstream to(path, std::ios::binary);
    std::copy(std::istreambuf_iterator<char>(from), {}, std::ostreambuf_iterator<char>(to));
    to.close();
    if (!to)
        throw std::runtime_error("can't be written: " + path);
}

} // namespace

std::string TemporaryFile::Usual() { return fs::temp_directory_path().string(); }

std::string TemporaryFile::InMemory() {
    constexpr const char* kShared = "/dev/shm";
    return access(kShared, W_OK) == 0 ? kShared : Usual();
}

TemporaryFile::TemporaryFile(const std::string& name, const std::string& folder)
    : m_directory(folder + "/melkar-XXXXXX") {
    if (mkdtemp(m_directory.data()) == nullptr)
        throw std::runtime_error("no temporary file: " + std::generic_category().message(errno));
    m_path = m_directory + "/" + name;
}

TemporaryFile::~TemporaryFile() {
    std::error_code ignored;
    fs::remove_all(m_directory, ignored);
}

void TemporaryFile::CopyToStandardOutput() const { std::cout << std::ifstream(m_path, std::ios::binary).rdbuf(); }

InputFile::InputFile(const std::string& name) : m_path(name.empty() ? "" : fs::absolute(name).string()) {
    std::error_code none;
    const bool isStandardInput = name == "-";
    if (!isStandardInput && !fs::is_fifo(name, none))
        return;
    m_copy.emplace(isStandardInput ? "standard-input" : "pipe"); // complaints name it
    m_path = m_copy->Path();
    if (isStandardInput)
        Copy(std::cin, m_path);
    else if (std::ifstream pipe(name, std::ios::binary); pipe)
        Copy(pipe, m_path);
}

} // namespace melkar::tool
