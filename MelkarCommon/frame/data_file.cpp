#include <MelkarCommon/frame/data_file.h>

#include <MelkarCommon/support/ring_log.h>

namespace melkar {

DataFile::DataFile(const char* path) : m_lines(path) {
    if (!IsOpen() && path && *path)
        LogText((std::string("can't open the data file ") + (path ? path : "")).c_str());
}

const CsvRow* DataFile::Next(std::size_t limit) {
    const char* line = m_lines.Next(limit);
    m_hasRow = line != nullptr;
    m_row.Split(line);
    return line ? &m_row : nullptr;
}

const CsvRow& DataFile::Head(std::size_t limit) {
    Next(limit);
    return m_row;
}

} // namespace melkar
