#pragma once

#include <MelkarCommon/api.h>

#include <cstddef>
#include <memory>
#include <string>

/// @file
/// Text files, line by line. A path with backslashes is used as it stands if there is such a file, else with slashes.

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

} // namespace melkar
