#pragma once

#include <cstdio>
#include <memory>
#include <string>

/// @file
/// Internal. A file that appears under its name whole or not at all.

namespace melkar {

/// Written under a name of its own in the same directory, renamed when it is complete, removed if it never is.
class NewFile {
public:
    /// Null, with `errno` set, if the directory takes no new file.
    static std::unique_ptr<NewFile> Create(const std::string& path);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    const std::string& Path() const { return m_path; }

    /// The first error is kept; nothing is written after it. @return false after an error.
    bool Write(const void* bytes, std::size_t count);
    /// Nothing more is written: the file will not be.
    void Abandon();
    /// Closes the file and gives it its name. @return 0, or the number of the first error: then there is no file.
    int Commit();

private:
    NewFile(std::string path, std::string temporary, std::FILE* stream)
        : m_path(std::move(path)), m_temporary(std::move(temporary)), m_stream(stream) {}
    void KeepError();

    std::string m_path;
    std::string m_temporary;
    std::FILE* m_stream; ///< null once closed
    int m_error = 0;
};

} // namespace melkar
