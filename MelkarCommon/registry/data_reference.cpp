#include <MelkarCommon/registry/data_reference.h>

#include <MelkarCommon/registry/catalogue.h>

#include <algorithm>
#include <cmath>

namespace melkar {

namespace {

// Examples

std::vector<std::string> Examples(const ColumnInfo& column) {
    std::vector<std::string> values(1);
    for (const char* at = column.example; *at; ++at)
        if (*at == '|')
            values.emplace_back();
        else
            values.back() += *at;
    return values;
}

/// Of columns that are alike each has its share of the values, or each row its own where there are more of them; of
/// single ones each row has the next.
std::string ExampleOf(const ColumnInfo& column, std::size_t row, std::size_t i) {
    const std::vector<std::string> values = Examples(column);
    const auto count = static_cast<std::size_t>(column.count);
    const bool isShared = values.size() <= count && count > 1;
    return values[isShared ? i * values.size() / count : (row * count + i) % values.size()];
}

/// A line of the columns in that head row, or in row `row` behind them; empty if there are none.
std::string ExampleLine(const DataTable& table, int head, std::size_t row) {
    std::vector<std::string> fields;
    for (const ColumnInfo& column : table.columns) {
        if (column.head != head)
            continue;
        const auto first = static_cast<std::size_t>(column.index);
        const auto count = static_cast<std::size_t>(column.count);
        fields.resize(std::max(fields.size(), first + count));
        for (std::size_t i = 0; i < count && *column.example; ++i)
            fields[first + i] = ExampleOf(column, row, i);
    }
    std::string line;
    for (const std::string& field : fields)
        line += (&field == fields.data() ? "" : ",") + field;
    return line;
}

/// What people like to see in a head row that nobody reads.
std::string Headings(const DataTable& table) {
    std::vector<std::string> names;
    for (const ColumnInfo& column : table.columns) {
        if (column.head != kEachRow)
            continue;
        names.resize(std::max(names.size(), static_cast<std::size_t>(column.index) + 1));
        names[static_cast<std::size_t>(column.index)] = column.name;
    }
    std::string line;
    for (const std::string& name : names)
        line += (&name == names.data() ? "" : ",") + name;
    return line;
}

std::size_t ExampleRows(const DataTable& table) {
    auto rows = static_cast<std::size_t>(table.form.fewest);
    for (const ColumnInfo& column : table.columns)
        if (column.head == kEachRow && column.count == 1)
            rows = std::max(rows, Examples(column).size());
    return *table.form.row ? rows : 0;
}

// Pages

std::string Number(double value) {
    std::string text = std::to_string(value);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.')
        text.pop_back();
    return text;
}

const char* ValueOf(ColumnKind kind) {
    switch (kind) {
    case ColumnKind::Text:
    case ColumnKind::Caption:
        return "text";
    case ColumnKind::DayStatus:
        return "0 to 4";
    case ColumnKind::Date:
        return "YYYYMMDD";
    case ColumnKind::Time:
        return "HHMM";
    case ColumnKind::Figure:
        return "number";
    case ColumnKind::Whole:
        return "whole number";
    case ColumnKind::Color:
        return "#RRGGBB";
    }
    return "";
}

std::string RangeOf(const ColumnInfo& column) {
    const bool hasLeast = std::isfinite(column.least);
    const bool hasMost = std::isfinite(column.most);
    if (hasLeast && hasMost)
        return Number(column.least) + " to " + Number(column.most);
    if (hasLeast)
        return "from " + Number(column.least);
    return hasMost ? "to " + Number(column.most) : "";
}

std::string UnitOf(const ColumnInfo& column) {
    return column.perUnit == 1 ? column.unit : std::string("1/") + std::to_string(column.perUnit) + " " + column.unit;
}

std::string PlaceOf(const ColumnInfo& column) {
    const std::string first = std::to_string(column.index);
    return column.count > 1 ? first + " to " + std::to_string(column.index + column.count - 1) : first;
}

std::string MeaningOf(const ColumnInfo& column) {
    std::vector<std::string> parts;
    if (*column.meaning)
        parts.emplace_back(column.meaning);
    else if (column.kind == ColumnKind::Caption)
        parts.emplace_back("what the chart writes below the day");
    else if (column.kind == ColumnKind::DayStatus)
        parts.emplace_back("of the day");
    if (column.isSeries)
        parts.emplace_back("one for each series, which moves what is behind it on");
    if (column.needsFigures)
        parts.emplace_back("counts with status 0 only");
    if (column.isNeeded)
        parts.emplace_back("needed");
    std::string text;
    for (const std::string& part : parts)
        text += (text.empty() ? "" : "; ") + part;
    return text;
}

std::string Row(const ColumnInfo& column) {
    const std::string row = column.head == kEachRow ? "each" : std::to_string(column.head);
    return "| " + row + " | " + PlaceOf(column) + " | " + column.name + " | " + ValueOf(column.kind) + " | " +
           UnitOf(column) + " | " + RangeOf(column) + " | " + MeaningOf(column) + " |\n";
}

std::string Count(int count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

/// What rows there are, in sentences.
std::string RowsOf(const DataForm& form) {
    std::string text;
    if (*form.row == '\0')
        text = Count(form.heads, "row") + ".";
    else
        text = (form.heads > 0 ? Count(form.heads, "head row") + ", then a" : std::string("A")) + " row for each " +
               form.row + ".";
    if (form.hasWeeks)
        text += " Behind the seven rows of a week stands an empty one.";
    if (*form.note)
        text += std::string(" ") + form.note;
    return text + " Rows hold up to " + std::to_string(form.rowLimit) + " characters.";
}

std::string Table(const DataTable& table) {
    std::string text = *table.suffix ? std::string("\nBeside it, `") + table.suffix + "` behind its name: " : "\n";
    if (table.columns.empty())
        return text + table.form.note + "\n";
    text += RowsOf(table.form) +
            "\n\n| Row | Column | Name | Value | Unit | Range | Meaning |\n|---|---|---|---|---|---|---|\n";
    std::vector<ColumnInfo> columns = table.columns;
    std::stable_sort(columns.begin(), columns.end(), [](const ColumnInfo& a, const ColumnInfo& b) {
        const auto placeOf = [](const ColumnInfo& one) { return static_cast<unsigned>(one.head); }; // each row last
        return placeOf(a) != placeOf(b) ? placeOf(a) < placeOf(b) : a.index < b.index;
    });
    for (const ColumnInfo& column : columns)
        text += Row(column);
    return text;
}

using Told = std::vector<std::pair<std::string, const char*>>; ///< tables, and the kind that each was told of

/// The tables of a kind; of one that was told before, of which kind.
std::string Tables(const KindRow& row, Told& told) {
    const DataTables files = FilesReadBy(row);
    std::string text = files.empty() ? "\nNo data file: all of the picture comes from the profile.\n" : "";
    for (const DataTable& table : files) {
        const std::string one = Table(table);
        const auto same =
            std::find_if(told.begin(), told.end(), [&](const auto& former) { return former.first == one; });
        text += same == told.end() ? one : std::string("\nAs `") + same->second + "`.\n";
        if (same == told.end())
            told.emplace_back(one, row.kind);
    }
    return text;
}

constexpr const char* kIntroduction =
    "Rows and columns count from 0; what isn't listed isn't read. Fields stand between commas, and may stand in double "
    "quotes; a comma within them counts for the fields behind it all the same. A figure has a point before its "
    "decimals. "
    "The status of a day is 0 with figures, 1 excluded, 2 or 3 without data, 4 without records. A field that a row "
    "lacks "
    "is empty, and an empty figure is 0; a row that ends before a needed column is taken for one of another kind of "
    "file.";

} // namespace

std::string DataReference() {
    std::string page = std::string("# Data files\n\nWhat the file of each kind looks like. ") + kIntroduction +
                       " `melkar data KIND` prints one kind, and with `--example` a file that draws.\n";
    Told told;
    for (const KindRow& row : Catalogue())
        if (*row.kind)
            page += std::string("\n## ") + row.kind + "\n" + Tables(row, told);
    return page;
}

std::string DataReferenceOf(std::string_view kind) {
    const KindRow* row = FindKind(kind);
    Told told;
    return row ? std::string("# Data file of `") + row->kind + "`\n\n" + kIntroduction + "\n" + Tables(*row, told) : "";
}

std::string ExampleFile(const DataTable& table) {
    std::string text;
    for (int head = 0; head < table.form.heads; ++head) {
        const std::string line = ExampleLine(table, head, 0);
        const bool isLast = head == table.form.heads - 1 && *table.form.row;
        text += (line.empty() ? isLast ? Headings(table) : "title" : line) + "\n";
    }
    for (std::size_t row = 0; row < ExampleRows(table); ++row)
        text += ExampleLine(table, kEachRow, row) + "\n";
    return table.form.hasWeeks ? text + "\n" : text;
}

} // namespace melkar
