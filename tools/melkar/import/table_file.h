#pragma once

#include <MelkarCommon/frame/data_table.h>
#include <MelkarCommon/platform/files.h>

#include <functional>
#include <string>
#include <vector>

/// @file
/// A data file made from the table that its reader walks, whole or not at all.

namespace melkar::importer {

/// What stands in a column; of columns that are alike in the one `i`. Empty for nothing.
using ValueOf = std::function<std::string(const ColumnInfo& column, int i)>;

/// A figure of that column: without decimals, if it has none.
std::string ShowAs(const ColumnInfo& column, double value);

class TableFile {
public:
    /// Writes the head rows. @param path of the data file; the suffix of the table goes behind it
    /// @param series figures a day, where that isn't for the table to say
    TableFile(const DataTable& table, int series, const std::string& path, const ValueOf& headValues);

    void AddRow(const ValueOf& values);
    void AddEmptyRow() { m_file.Write("\n"); }
    void Commit(); ///< throws `Refusal` if it can't be written

private:
    std::string Line(int head, const ValueOf& values) const;
    std::string Names() const;

    DataForm m_form;
    std::vector<ColumnInfo> m_columns;
    std::string m_path;
    FileWriter m_file;
};

} // namespace melkar::importer
