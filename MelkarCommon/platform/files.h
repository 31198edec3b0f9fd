#pragma once

#include <MelkarCommon/api.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

/// @file
/// Text files, read line by line and written whole. A path with backslashes is used as it stands if there is such a
/// file, else with slashes; one that leads to the directory above, as "..\name" does, always with slashes.

namespace melkar {

/// Reads a text file line by line, linear in its size. CR LF counts as LF, a byte order mark at the
/// start is dropped, a last line needs no line feed. Only regular files open: a directory, a pipe or a
/// device counts as a file that can't be opened, so that no read ever waits.
///
/// @code{.cpp}
/// melkar::LineReader lines(path);
/// while (const char* line = lines.Next(1000))
///     std::fputs(line, stdout);
/// @endcode
class MELKAR_API LineReader {
public:
    explicit LineReader(const char* path); ///< opens the file, which is closed with the reader
    ~LineReader();
    LineReader(const LineReader&) = delete;
    LineReader& operator=(const LineReader&) = delete;

    bool IsOpen() const { return m_file >= 0; } ///< whether there are lines to be asked for

    /// The next line with its line feed, of at most `limit` characters: a longer line goes on as the
    /// next one. The pointer is valid until the next call; null at the end of the file.
    const char* Next(std::size_t limit);

private:
    MELKAR_LOCAL bool Fill();
    MELKAR_LOCAL void JoinCrLf();

    std::size_t m_left = 0; ///< bytes of the file, as long as it was when it was opened, that aren't read yet
    int m_file = -1;
    bool m_atStart = true;
    std::size_t m_position = 0;
    std::size_t m_filled = 0;
    std::unique_ptr<char[]> m_buffer; ///< one block
    std::string m_line;
};

class NewFile;

/// Writes a file that appears under its name when it is whole, or not at all: until then a former one stays as it was,
/// and nothing is left if the process is killed. Only a regular file or nothing is replaced, through symlinks.
///
/// @code{.cpp}
/// melkar::FileWriter file(path);
/// file.Write("head\nhead\n0,Mon 2,9600\n");
/// if (const int error = file.Commit())
///     std::fprintf(stderr, "%s: error %d\n", path, error);
/// @endcode
class MELKAR_API FileWriter {
public:
    explicit FileWriter(const char* path); ///< begins the file; without `Commit` it comes to nothing
    ~FileWriter();
    FileWriter(const FileWriter&) = delete;
    FileWriter& operator=(const FileWriter&) = delete;

    void Write(std::string_view bytes); ///< does nothing after an error, which `Commit` tells
    int Commit();                       ///< gives the file its name. @return 0, or the `errno` of the first error

private:
    std::unique_ptr<NewFile> m_file; ///< null if the directory takes none
    int m_error = 0;                 ///< why it is null
};

} // namespace melkar
