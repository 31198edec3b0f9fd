#pragma once

#include <MelkarCommon/frame/results.h>
#include <MelkarCommon/platform/files.h>
#include <MelkarCommon/platform/host_directory.h>
#include <MelkarCommon/support/fields.h>
#include <MelkarCommon/support/ring_log.h>

#include <string>

/// @file
/// Data files of the host: head rows, then rows that are alike, fields with commas between them.

namespace melkar {

/// A data file of the host while it is read: its rows, one after the other, split into fields.
class MELKAR_API DataFile {
public:
    /// A file that can't be opened leaves a line in the log that names it; an empty or null path, of whoever draws what
    /// is in memory, names none.
    explicit DataFile(const char* path);

    bool IsOpen() const { return m_lines.IsOpen(); } ///< whether there are rows to be asked for

    /// The next row, of at most `limit` characters, line end included (a longer one goes on as the next row); null
    /// behind the last one. Valid until the next row.
    const CsvRow* Next(std::size_t limit);

    /// The next row; one of empty fields if there is none. Valid until the next row.
    const CsvRow& Head(std::size_t limit);
    bool HasHead() const { return m_hasRow; } ///< whether the head row last asked for is there

private:
    LineReader m_lines;
    CsvRow m_row;
    bool m_hasRow = false;
};

/// Runs a reader; whatever it throws becomes 103.
template <class Reader> long ReadGuarded(Reader reader) {
    try {
        return reader();
    } catch (...) {
        return kReadFailed;
    }
}

/// The same on a file for that graph, with the reader's name in its log. @return 101 if the file can't be opened
template <class Graph, class Reader>
long ReadFile(const Graph& graph, const char* name, const char* path, Reader reader) {
    return ReadGuarded([&]() -> long {
        const HostDirectory here(detail::HostOf(graph, 0));
        LogText(name);
        DataFile file(path);
        return file.IsOpen() ? reader(file) : kNoFile;
    });
}

} // namespace melkar
