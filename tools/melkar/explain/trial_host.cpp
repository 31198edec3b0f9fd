#include "trial_host.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace melkar::tool {
namespace {

namespace fs = std::filesystem;

void Write(const std::string& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    if (!(file << text << std::flush))
        throw std::runtime_error("can't be written: " + path);
}

} // namespace

TrialHost::TrialHost(const std::string& base) : m_place("host", TemporaryFile::InMemory()) {
    for (const char* folder : {"/bin", "/conf", "/data"})
        fs::create_directories(m_place.Path() + folder);
    std::error_code none;
    fs::copy_file(base + "/../conf/config.cnf", m_place.Path() + "/conf/config.cnf", none);
}

void TrialHost::WriteProfile(const std::string& text) const { Write(m_place.Path() + "/conf/graph.cnf", text); }

std::string TrialHost::WriteData(const std::string& name, const std::string& text) const {
    const std::string path = m_place.Path() + "/data/" + name;
    Write(path, text);
    return path;
}

std::string BytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace melkar::tool
