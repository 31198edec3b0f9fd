#pragma once

#include <cerrno>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

/// @file
/// Internal. A file that appears under its name whole or not at all, and in place of a regular file or of nothing.

namespace melkar {

/// Where the file of a path lies, with the slash behind it.
std::string FolderOf(const std::string& path);

/// Written without a name, so that nothing stays behind if the process is killed; where the file system has no such
/// files, under a name of its own in the same directory. It takes its name when it is complete: through a symlink, with
/// the mode and, where possible, the owner of the file that it replaces.
/// What processes left of the file's temporary names when they were killed goes with the next one, after ten minutes.
class NewFile {
public:
    /// Null, with `errno` set, if the directory takes no new file, or if the name is that of a directory, a device, a
    /// pipe or a file that the caller may not write.
    static std::unique_ptr<NewFile> Create(const std::string& path);
    /// Writes to an open file that has no name and gets none. The descriptor is closed with it. @param called its name
    /// in messages
    static std::unique_ptr<NewFile> WithoutName(int descriptor, std::string called);
    /// Has no name either, is in memory, and is handed to `take` piece by piece when it is complete, and to nobody if
    /// it isn't. A taker that returns false or throws gets no more, and the file counts as cancelled. Null, with
    /// `errno` set, without room for one.
    static std::unique_ptr<NewFile> HandedTo(std::function<bool(std::string_view)> take);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    const std::string& Path() const { return m_path; }

    /// The first error is kept; nothing is written after it. @return false after an error.
    bool Write(const void* bytes, std::size_t count) noexcept;
    /// Bytes between those that are written, for what is known last and read first. The same as for `Write`; the file
    /// must be one that can be read. @param at how many bytes stand before them
    bool Insert(std::size_t at, std::string_view bytes) noexcept;
    /// Nothing more is written: the file will not be, for the first error or this one.
    void Abandon(int error = ECANCELED);
    /// Closes the file and gives it its name, if it is to have one. @return 0, or the number of the first error: then
    /// there is no file.
    int Commit();

private:
    static std::unique_ptr<NewFile> Open(int descriptor, std::string path, std::string target, std::string temporary);
    NewFile(std::string path, std::string target, std::string temporary, std::FILE* stream)
        : m_path(std::move(path)), m_target(std::move(target)), m_temporary(std::move(temporary)), m_stream(stream) {}
    void KeepError();
    bool Deliver();
    bool HandOver();
    bool TakeName();
    bool GiveName();
    void RemoveTemporary();

    std::string m_path;      ///< as it was given
    std::string m_target;    ///< where it leads if it is a symlink; empty: it gets no name
    std::string m_temporary; ///< empty: none, or no longer
    std::FILE* m_stream;     ///< null once closed
    int m_error = 0;
    std::function<bool(std::string_view)> m_take; ///< who gets it; empty: nobody
};

} // namespace melkar
