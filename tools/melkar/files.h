#pragma once

#include <optional>
#include <string>

/// @file
/// Files for what comes and goes through pipes: the library reads files again, and writes whole ones.

namespace melkar::tool {

/// In a directory of its own, which goes with the object. There is no file until somebody writes it.
class TemporaryFile {
public:
    /// Below the folder for temporary files, unless told. Throws std::runtime_error if there can be none.
    explicit TemporaryFile(const std::string& name, const std::string& folder = Usual());
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    static std::string Usual();
    static std::string InMemory(); ///< if the system has such a folder

    const std::string& Path() const { return m_path; }
    void CopyToStandardOutput() const; ///< whether that took it is for who flushes it to find out

private:
    std::string m_directory;
    std::string m_path;
};

/// A file to read: that of the name or, for "-" and a pipe, a copy of all that comes.
class InputFile {
public:
    explicit InputFile(const std::string& name);       ///< throws std::runtime_error if the copy can't be made
    const std::string& Path() const { return m_path; } ///< absolute; empty for no name

private:
    std::string m_path;
    std::optional<TemporaryFile> m_copy;
};

} // namespace melkar::tool
