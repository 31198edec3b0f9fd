#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <stdlib.h>
#include <string>
#include <string_view>

/// A directory of its own with conf/, log/ and bin/, as an installed host has them; the process works in bin/ until
/// the object goes, then where it was before. File names are relative to the directory: Write("conf/graph.cnf", ...).
class TempWorkdir {
public:
    TempWorkdir() : m_former(std::filesystem::current_path()) {
        std::string name = std::filesystem::temp_directory_path() / "melkar-XXXXXX";
        if (!mkdtemp(name.data()))
            throw std::runtime_error("no temporary directory");
        m_root = name;
        for (const char* folder : {"conf", "log", "bin"})
            std::filesystem::create_directory(m_root / folder);
        std::filesystem::current_path(m_root / "bin");
    }
    ~TempWorkdir() {
        std::error_code ignored;
        std::filesystem::current_path(m_former, ignored);
        std::filesystem::remove_all(m_root, ignored);
    }
    TempWorkdir(const TempWorkdir&) = delete;
    TempWorkdir& operator=(const TempWorkdir&) = delete;

    std::string Path(const std::string& name) const { return m_root / name; }

    /// @return the path of the file.
    std::string Write(const std::string& name, std::string_view bytes) const {
        std::ofstream(Path(name), std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return Path(name);
    }
    /// Empty if there is no such file.
    std::string Read(const std::string& name) const {
        std::ifstream file(Path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

private:
    std::filesystem::path m_former;
    std::filesystem::path m_root;
};
