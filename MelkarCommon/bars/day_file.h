#pragma once

#include <MelkarCommon/support/fields.h>
#include <MelkarCommon/support/platform/files.h>

/// @file
/// The data files of the bar family: head rows, then one row per day.

namespace melkar {

constexpr long kReadOk = 0;
constexpr long kNoFile = 101;
constexpr long kNoDays = 102;
constexpr long kReadFailed = 103;

constexpr std::size_t kHeadLimit = 1278; ///< characters of a head row, line end included; a longer one goes on below
constexpr std::size_t kRowLimit = 1279;  ///< the same of a day row

class DayFile {
public:
    explicit DayFile(const char* path) : m_lines(path) {}

    bool IsOpen() const { return m_lines.IsOpen(); }

    /// The next head row; a row of empty fields if there is none. Valid until the next row.
    const CsvRow& Head(std::size_t limit = kHeadLimit) {
        const char* line = m_lines.Next(limit);
        m_hasRow = line != nullptr;
        m_row.Split(line);
        return m_row;
    }
    bool HasHead() const { return m_hasRow; } ///< whether the head row last asked for is there

    /// The next day row, null behind the last one. Valid until the next row.
    const CsvRow* NextDay() {
        const char* line = m_lines.Next(kRowLimit);
        if (!line)
            return nullptr;
        m_row.Split(line);
        return &m_row;
    }

private:
    LineReader m_lines;
    CsvRow m_row;
    bool m_hasRow = false;
};

/// Hands each of the remaining day rows to `take`. @return 0, or 102 if there was none.
template <class Take> long ReadDays(DayFile& file, Take take) {
    long result = kNoDays;
    while (const CsvRow* row = file.NextDay()) {
        take(*row);
        result = kReadOk;
    }
    return result;
}

/// Runs a reader; whatever it throws becomes 103.
template <class Reader> long ReadGuarded(Reader reader) {
    try {
        return reader();
    } catch (...) {
        return kReadFailed;
    }
}

} // namespace melkar
