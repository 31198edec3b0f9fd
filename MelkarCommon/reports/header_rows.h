#pragma once

#include <MelkarCommon/platform/files.h>
#include <MelkarCommon/support/fields.h>

#include <string>

namespace melkar {

/// The rows of a report header data file, at most 2047 characters each, line end included. Behind the last one that one
/// comes again and again; without any, empty ones.
class HeaderRows {
public:
    explicit HeaderRows(const char* path) : m_lines(path) {}

    bool IsOpen() const { return m_lines.IsOpen(); }
    const CsvRow& Next() {
        if (const char* line = m_lines.Next(kRowLimit)) {
            m_line = line;
            m_row.Split(m_line.c_str());
        }
        return m_row;
    }
    void Skip(int rows) {
        while (rows-- > 0)
            Next();
    }

private:
    static constexpr std::size_t kRowLimit = 2047;

    LineReader m_lines;
    std::string m_line;
    CsvRow m_row;
};

} // namespace melkar
