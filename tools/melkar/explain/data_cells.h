#pragma once

#include <MelkarCommon/registry/catalogue.h>

#include <cstddef>
#include <span>
#include <string>
#include <vector>

/// @file
/// The data files of a picture as cells, each of which may get another value.

namespace melkar::tool {

/// A field that the reader takes.
struct DataCell {
    std::size_t file; ///< among those that the kind reads
    std::size_t line; ///< from 0
    int column;       ///< from 0
    ColumnInfo info;
    std::string value;
};

/// A cell with another value.
struct OtherCell {
    const DataCell* cell;
    std::string value;
};

/// As many cells as are looked at: weeks of days.
constexpr std::size_t kMostCells = 20000;

class DataCells {
public:
    /// Reads the files of the kind. @param path of the data file @param series figures per day, 0 for the kind's own
    DataCells(const KindRow& kind, const std::string& path, int series);

    /// In the order of the files. None of a line that is longer than its reader takes at a time.
    const std::vector<DataCell>& All() const { return m_cells; }
    bool AreAll() const { return m_areAll; } ///< whether there are no more than are looked at
    std::size_t Files() const { return m_files.size(); }
    const std::string& PathOf(std::size_t file) const { return m_files[file].path; }
    std::string SuffixOf(std::size_t file) const { return m_files[file].suffix; }
    /// A file's text; nothing but these cells is another.
    std::string TextOf(std::size_t file, std::span<const OtherCell> others) const;

private:
    struct File {
        std::string path;
        std::string suffix; ///< behind the path of the data file
        std::vector<std::string> lines;
    };
    void AddCells(const DataTable& table, int series);

    std::vector<File> m_files;
    std::vector<DataCell> m_cells;
    bool m_areAll = true;
};

} // namespace melkar::tool
