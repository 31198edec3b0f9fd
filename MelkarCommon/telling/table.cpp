#include <MelkarCommon/telling/table.h>

#include <MelkarCommon/telling/reading.h>

#include <algorithm>
#include <functional>

namespace melkar {

namespace {

struct Column {
    std::string head;
    std::function<std::string(const ShownItem& item)> cell;
};

Column SeriesColumn(const Contents& contents, std::size_t series, const DescriptionWords& words) {
    return {NameOfSeries(contents, series, words), [series](const ShownItem& item) {
                const ShownFigure* figure = FigureOfSeries(item, series);
                return figure ? OnOneLine(figure->text) : "";
            }};
}

std::vector<Column> ColumnsOf(const Contents& contents, const DescriptionWords& words) {
    std::vector<Column> columns{
        {words.Say(words.m_strEntryHead), [](const ShownItem& item) { return OnOneLine(item.caption); }}};
    for (std::size_t series = 0; series < contents.series.size(); ++series)
        columns.push_back(SeriesColumn(contents, series, words));
    if (IsStack(contents)) {
        const std::string whole = OnOneLine(contents.whole);
        columns.push_back({whole.empty() ? words.Say(words.m_strSum) : whole,
                           [](const ShownItem& item) { return item.isMissing ? "" : SumText(item); }});
    } else if (contents.series.empty()) {
        columns.push_back(
            {words.Say(words.m_strFigureHead), [](const ShownItem& item) { return OnOneLine(item.text); }});
    }
    columns.push_back({words.Say(words.m_strReachedHead), [&words](const ShownItem& item) {
                           return item.reached ? words.Say(*item.reached ? words.m_strYes : words.m_strNo) : "";
                       }});
    columns.push_back(
        {words.Say(words.m_strNoteHead), [&words](const ShownItem& item) { return NoteOn(item, words); }});
    return columns;
}

bool NeedsQuotes(const std::string& cell) { return cell.find_first_of("\",\r\n") != std::string::npos; }

void AppendCsv(std::string& csv, const std::vector<std::string>& row) {
    for (const std::string& cell : row) {
        if (&cell != &row.front())
            csv += ',';
        if (!NeedsQuotes(cell)) {
            csv += cell;
            continue;
        }
        csv += '"';
        for (const char letter : cell)
            csv += letter == '"' ? std::string("\"\"") : std::string(1, letter);
        csv += '"';
    }
    csv += "\r\n";
}

/// Columns of a terminal: scripts from Hangul on, and full-width forms, take two each. Near enough for a table.
std::size_t WidthOf(const std::string& utf8) {
    std::size_t width = 0;
    for (const char byte : utf8) {
        const auto value = static_cast<unsigned char>(byte);
        const bool begins = (value & 0xC0U) != 0x80U;
        const bool isWide = value >= 0xE3 && value <= 0xED; // U+3000 to U+DFFF; of "–" and "～" the second is at U+FF5E
        width += begins ? (isWide || value == 0xEF ? 2 : 1) : 0;
    }
    return width;
}

/// Or nothing.
bool IsFigure(const std::string& cell) { return cell.find_first_not_of("0123456789.,+-") == std::string::npos; }

/// Where a column of that head stands behind the first one; it is added if it isn't there.
std::size_t PlaceOf(const std::string& head, std::vector<std::string>& heads) {
    const auto found = std::find(heads.begin() + 1, heads.end(), head);
    const auto place = static_cast<std::size_t>(found - heads.begin());
    if (found == heads.end())
        heads.push_back(head);
    return place;
}

} // namespace

ContentsTable TableOf(const Contents& contents, const DescriptionWords& words) {
    ContentsTable table;
    table.rows.resize(contents.items.size());
    for (const Column& column : ColumnsOf(contents, words)) {
        std::vector<std::string> cells;
        for (const ShownItem& item : contents.items)
            cells.push_back(column.cell(item));
        if (std::all_of(cells.begin(), cells.end(), [](const std::string& cell) { return cell.empty(); }))
            continue;
        table.head.push_back(column.head);
        for (std::size_t row = 0; row < cells.size(); ++row)
            table.rows[row].push_back(std::move(cells[row]));
    }
    return table;
}

/// Parts may have different columns.
ContentsTable TableOf(const std::vector<Contents>& parts, const DescriptionWords& words) {
    if (parts.size() == 1)
        return TableOf(parts.front(), words);
    ContentsTable all{{words.Say(words.m_strPartHead)}, {}};
    for (const Contents& part : parts) {
        const ContentsTable table = TableOf(part, words);
        std::vector<std::size_t> places;
        for (const std::string& head : table.head)
            places.push_back(PlaceOf(head, all.head));
        for (const auto& cells : table.rows) {
            auto& row = all.rows.emplace_back(all.head.size());
            row.front() = TitleOf(part, words);
            for (std::size_t cell = 0; cell < cells.size(); ++cell)
                row[places[cell]] = cells[cell];
        }
    }
    for (auto& row : all.rows)
        row.resize(all.head.size());
    return all.rows.empty() ? ContentsTable() : all;
}

bool IsFigureColumn(const ContentsTable& table, std::size_t column) {
    return std::all_of(table.rows.begin(), table.rows.end(),
                       [column](const auto& row) { return IsFigure(row[column]); });
}

std::string CsvOf(const ContentsTable& table) {
    std::string csv;
    if (table.head.empty())
        return csv;
    AppendCsv(csv, table.head);
    for (const auto& row : table.rows)
        AppendCsv(csv, row);
    return csv;
}

std::string TextOf(const ContentsTable& table) {
    std::vector<std::vector<std::string>> lines{table.head};
    lines.insert(lines.end(), table.rows.begin(), table.rows.end());
    std::vector<std::size_t> widths(table.head.size());
    for (const auto& line : lines)
        for (std::size_t column = 0; column < widths.size(); ++column)
            widths[column] = std::max(widths[column], WidthOf(line[column]));
    std::string text;
    for (const auto& line : lines) {
        std::string row;
        for (std::size_t column = 0; column < widths.size(); ++column) {
            const std::string pad(widths[column] - WidthOf(line[column]), ' ');
            row += column > 0 ? "  " : "";
            row += column > 0 && IsFigureColumn(table, column) ? pad + line[column] : line[column] + pad;
        }
        row.erase(row.find_last_not_of(' ') + 1);
        text += row + "\n";
    }
    return text;
}

} // namespace melkar
