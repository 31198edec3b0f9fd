#include "table_file.h"

#include "figures.h"
#include "notes.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace melkar::importer {
namespace {

std::string Joined(const std::vector<std::string>& fields) {
    std::string line;
    for (const std::string& field : fields)
        line += (&field == fields.data() ? "" : ",") + field;
    return line;
}

} // namespace

std::string ShowAs(const ColumnInfo& column, double value) {
    return ShowFigure(column.kind == ColumnKind::Whole ? std::round(value) : value);
}

TableFile::TableFile(const DataTable& table, int series, const std::string& path, const ValueOf& headValues)
    : m_form(table.form), m_columns(ColumnsFor(table, series)), m_path(path + table.suffix), m_file(m_path.c_str()) {
    for (int head = 0; head < m_form.heads; ++head) {
        const std::string line = Line(head, headValues);
        const bool isLast = head == m_form.heads - 1;
        m_file.Write((line.empty() ? isLast ? Names() : "imported" : line) + "\n");
    }
}

std::string TableFile::Line(int head, const ValueOf& values) const {
    std::vector<std::string> fields;
    for (const ColumnInfo& column : m_columns) {
        if (column.head != head)
            continue;
        const auto first = static_cast<std::size_t>(column.index);
        fields.resize(std::max(fields.size(), first + static_cast<std::size_t>(column.count)));
        for (int i = 0; i < column.count; ++i)
            if (std::string value = values(column, i); !value.empty()) // a column may stand for two things
                fields[first + static_cast<std::size_t>(i)] = std::move(value);
    }
    return Joined(fields);
}

/// What people like to see in a head row that nobody reads.
std::string TableFile::Names() const {
    std::vector<std::string> names;
    for (const ColumnInfo& column : m_columns) {
        if (column.head != kEachRow)
            continue;
        names.resize(std::max(names.size(), static_cast<std::size_t>(column.index) + 1));
        names[static_cast<std::size_t>(column.index)] = column.name;
    }
    return Joined(names);
}

void TableFile::AddRow(const ValueOf& values) { m_file.Write(Line(kEachRow, values) + "\n"); }

void TableFile::Commit() {
    if (const int error = m_file.Commit(); error != 0)
        throw Refusal("can't be written: " + m_path + ": " + std::strerror(error));
}

} // namespace melkar::importer
