#include "bench_support.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

BenchDirectory& BenchDirectory::Instance() {
    static BenchDirectory directory;
    return directory;
}

BenchDirectory::BenchDirectory() {
    std::string root = (fs::temp_directory_path() / "melkar-bench-XXXXXX").string();
    if (!mkdtemp(root.data()))
        std::abort();
    m_root = root;
    for (const char* folder : {"bin", "conf", "log"})
        fs::create_directory(fs::path(m_root) / folder);
    for (const char* profile : {"graph.cnf", "config.cnf"}) // links: files of a moment ago are read anew each time
        fs::create_symlink(fs::path(MELKAR_SAMPLES) / "app" / "conf" / profile, fs::path(m_root) / "conf" / profile);
    fs::current_path(fs::path(m_root) / "bin");
}

BenchDirectory::~BenchDirectory() {
    fs::current_path(fs::temp_directory_path());
    std::error_code ignored;
    fs::remove_all(m_root, ignored);
}

std::string BenchDirectory::Write(const std::string& name, const std::string& content) const {
    const fs::path path = fs::path(m_root) / "bin" / name;
    std::ofstream(path) << content;
    return path.string();
}

Host::~Host() {
    DeleteDC(shared);
    DeleteDC(second);
    DeleteDC(balloon);
}
