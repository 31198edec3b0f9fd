#include "data_cells.h"

#include "trial_host.h"

#include <MelkarCommon/support/fields.h>

#include <algorithm>
#include <set>
#include <sstream>

namespace melkar::tool {
namespace {

std::vector<std::string> LinesOf(const std::string& text) {
    std::istringstream input(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(input, line);)
        lines.push_back(line);
    return lines;
}

/// Where a field of the line stands, without quotes around it.
struct Place {
    std::size_t from;
    std::size_t length;
};

Place PlaceOf(const std::string& line, int column) {
    const std::string_view field = CsvRow(line.c_str()).View(column);
    return {static_cast<std::size_t>(field.data() - line.c_str()), field.size()};
}

std::string ValueOf(const std::string& line, int column) {
    const auto [from, length] = PlaceOf(line, column);
    const std::string value = line.substr(from, length);
    return value.substr(0, value.find('\r'));
}

bool Has(const std::string& line, int column) { return std::count(line.begin(), line.end(), ',') >= column; }

} // namespace

DataCells::DataCells(const KindRow& kind, const std::string& path, int series) {
    for (const DataTable& table : FilesReadBy(kind)) {
        if (table.columns.empty()) // a picture
            continue;
        m_files.push_back({path + table.suffix, table.suffix, LinesOf(BytesOf(path + table.suffix))});
        AddCells(table, series);
    }
}

/// A file that ends with its heads has its figures in the last of them. A field that two columns take is one cell.
void DataCells::AddCells(const DataTable& table, int series) {
    const std::vector<std::string>& lines = m_files.back().lines;
    const std::size_t heads = std::min<std::size_t>(table.form.heads, lines.empty() ? 0 : lines.size() - 1);
    const std::vector<ColumnInfo> columns = ColumnsFor(table, series);
    for (std::size_t line = 0; line < lines.size(); ++line) {
        if (lines[line].size() >= (line < heads ? table.form.headLimit : table.form.rowLimit))
            continue;
        if (m_cells.size() >= kMostCells) {
            m_areAll = false;
            return;
        }
        std::set<int> taken;
        for (const ColumnInfo& info : columns)
            for (int column = info.index; column < info.index + info.count; ++column) {
                const bool isOfLine = info.head == kEachRow ? line >= heads : line == std::size_t(info.head);
                if (isOfLine && Has(lines[line], column) && taken.insert(column).second)
                    m_cells.push_back({m_files.size() - 1, line, column, info, ValueOf(lines[line], column)});
            }
    }
}

std::string DataCells::TextOf(std::size_t file, std::span<const OtherCell> others) const {
    std::vector<std::string> lines = m_files[file].lines;
    for (const auto& [cell, value] : others)
        if (cell->file == file) {
            const std::size_t from = PlaceOf(lines[cell->line], cell->column).from;
            lines[cell->line].replace(from, cell->value.size(), value);
        }
    std::string text;
    for (const std::string& line : lines)
        text += line + '\n';
    return text;
}

} // namespace melkar::tool
