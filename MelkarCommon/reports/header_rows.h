#pragma once

#include <MelkarCommon/platform/files.h>
#include <MelkarCommon/support/fields.h>

#include <string>

namespace melkar {

constexpr std::size_t kHeaderRowLimit = 2047; ///< characters of a row, line end included

/// The rows of a report header data file. Behind the last one that one comes again and again; without any, empty ones.
class HeaderRows {
public:
    explicit HeaderRows(const char* path) : m_lines(path) {}

    bool IsOpen() const { return m_lines.IsOpen(); }
    const CsvRow& Next() {
        if (const char* line = m_lines.Next(kHeaderRowLimit)) {
            m_line = line;
            m_row.Split(m_line.c_str());
        }
        return m_row;
    }

private:
    LineReader m_lines;
    std::string m_line;
    CsvRow m_row;
};

} // namespace melkar
