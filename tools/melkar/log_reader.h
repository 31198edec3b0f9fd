#pragma once

#include <functional>
#include <string>
#include <vector>

/// @file
/// The ring log read back: lines in the order of time.

namespace melkar::tool {

/// Reads a log that others may be writing. Nothing is locked: writers count a record once it is there.
class LogReader {
public:
    using Put = std::function<void(const std::string&)>;

    /// @param line gets each line whole, without what a terminal would obey @param doubt what is wrong with the file
    LogReader(std::string path, Put line, Put doubt);

    /// Gives what was written since the last time, at first all that there is. @return false, with a sentence to
    /// `doubt`, if the file can't be read or is no log
    bool Read();
    void Finish(); ///< gives a line whose end isn't written yet, and those that wait for it

private:
    bool ReadNew();
    void Begin(int file, int counter, int whole);
    void TakeRecords(int file, int first, int last);
    void TakeRecord(const std::string& record, int number);

    std::string m_path;
    Put m_line;
    Put m_doubt;
    int m_last = -1; ///< the record that was read last; -1: none yet
    std::string m_open;
    bool m_isOpen = false;              ///< the line goes on in a record to come
    std::vector<std::string> m_waiting; ///< lines that began behind it
};

} // namespace melkar::tool
