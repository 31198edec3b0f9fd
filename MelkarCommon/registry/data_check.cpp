#include <MelkarCommon/registry/data_check.h>

#include <MelkarCommon/platform/files.h>
#include <MelkarCommon/support/fields.h>
#include <MelkarCommon/support/numbers.h>

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>
#include <utility>

namespace melkar {

namespace {

/// Without the blanks around it: those before a figure, and the end of the line, do no harm to a reader.
std::string_view Trimmed(std::string_view text) {
    constexpr const char* kBlanks = " \t\r\n";
    const auto first = text.find_first_not_of(kBlanks);
    return first == std::string_view::npos ? std::string_view{}
                                           : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::optional<double> NumberOf(std::string_view text) {
    double value = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && stop == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

bool IsNumber(std::string_view text) { return NumberOf(text).has_value(); }

bool IsDigits(std::string_view text) { return text.find_first_not_of("0123456789") == text.npos; }

/// The number in a part of a text of digits.
int Part(std::string_view digits, std::size_t first, std::size_t count) {
    return ToInt(std::string(digits.substr(first, count)).c_str());
}

bool IsStatus(std::string_view text) { return text.size() == 1 && text[0] >= '0' && text[0] <= '4'; }

bool IsColor(std::string_view text) {
    return text.size() == 7 && text[0] == '#' && text.find_first_not_of("0123456789abcdefABCDEF", 1) == text.npos;
}

bool IsDate(std::string_view text) {
    const auto within = [](int value, int most) { return value >= 1 && value <= most; };
    return text.size() == 8 && IsDigits(text) && within(Part(text, 4, 2), 12) && within(Part(text, 6, 2), 31);
}

/// Hours x 100 + minutes, with or without zeros before it.
bool IsTime(std::string_view text) {
    return text.size() <= 4 && IsDigits(text) && Part(text, 0, 4) / 100 < 24 && Part(text, 0, 4) % 100 < 60;
}

/// What a value of the kind has to be, and how to tell; any text is a text.
struct KindCheck {
    bool (*suits)(std::string_view value);
    const char* rule;
    const char* is;
};
KindCheck CheckOf(ColumnKind kind) {
    switch (kind) {
    case ColumnKind::DayStatus:
        return {IsStatus, "status", "the status of a day"};
    case ColumnKind::Date:
        return {IsDate, "date", "a date as in 20260131"};
    case ColumnKind::Time:
        return {IsTime, "time", "a time as in 1830"};
    case ColumnKind::Figure:
    case ColumnKind::Whole:
        return {IsNumber, "number", "a number"};
    case ColumnKind::Color:
        return {IsColor, "color", "a colour as in #RRGGBB"};
    default:
        return {[](std::string_view) { return true; }, "", ""};
    }
}

bool IsFigure(const ColumnInfo& column) {
    return column.kind == ColumnKind::Figure || column.kind == ColumnKind::Whole;
}

int CountColumns(std::string_view line) { return 1 + static_cast<int>(std::count(line.begin(), line.end(), ',')); }

std::string Quoted(std::string_view text) { return '"' + std::string(text.substr(0, 40)) + '"'; }

std::string Count(int count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

/// Columns from 0 to here.
int EndOf(const ColumnInfo& column) { return column.index + column.count; }

/// Reads one file line by line and collects what doesn't suit.
class Check {
public:
    Check(const DataTable& table, std::string path, int series, std::size_t most)
        : m_form(table.form), m_columns(ColumnsFor(table, series)), m_path(std::move(path)), m_most(most) {
        for (const ColumnInfo& column : m_columns) {
            if (column.head != kEachRow)
                continue;
            if (column.isNeeded)
                m_wanted = std::max(m_wanted, EndOf(column));
            if (column.kind == ColumnKind::DayStatus)
                m_status = &column;
            if (IsFigure(column) && (!m_firstFigure || column.index < m_firstFigure->index))
                m_firstFigure = &column;
        }
    }

    DataFindings Run() {
        LineReader file(m_path.c_str());
        if (!file.IsOpen() || m_columns.empty()) // a missing file is for the reader to tell
            return {};
        for (std::size_t limit = Limit(); const char* line = file.Next(limit); limit = Limit()) {
            ++m_line;
            if (!Trimmed(line).empty())
                Take(line);
            if (GoesOn(line, limit))
                PassRestOfLine(file, limit);
        }
        if (m_rows < m_form.fewest)
            Find("rows", "ends behind " + Count(m_rows, "row") + " of figures; this kind takes " +
                             std::to_string(m_form.fewest));
        return std::move(m_findings);
    }

private:
    /// Characters that a reader takes of the next line.
    std::size_t Limit() const { return m_line < m_form.heads ? m_form.headLimit : m_form.rowLimit; }

    static bool GoesOn(std::string_view line, std::size_t limit) {
        return line.size() >= limit && !line.ends_with('\n');
    }

    /// What is behind the limit is a row of its own to a reader; here it is no more than that the line is too long.
    void PassRestOfLine(LineReader& file, std::size_t limit) {
        const char* rest = file.Next(limit);
        if (rest)
            Find("length", "longer than " + std::to_string(limit) + " characters: the rest counts as a further row");
        while (rest && GoesOn(rest, limit))
            rest = file.Next(limit);
    }

    void Take(const char* line) {
        m_row.Split(line);
        m_width = CountColumns(line);
        if (m_line > m_form.heads)
            TakeRow();
        else if (m_line == m_form.heads && IsRowOfFigures())
            Find("head",
                 "figures in a head row, of which there are " + std::to_string(m_form.heads) + ": they aren't drawn");
        else
            TakeColumns(m_line - 1);
    }

    std::string_view Field(int column) const { return Trimmed(m_row.View(column)); }

    /// Of one column a head could be a number as well, and where it has figures of its own they say nothing.
    bool IsRowOfFigures() const {
        if (m_wanted < 2 || m_width < m_wanted || !m_firstFigure || HasHeadFigureAt(m_firstFigure->index))
            return false;
        return (!m_status || IsStatus(Field(m_status->index))) && IsNumber(Field(m_firstFigure->index));
    }

    bool HasHeadFigureAt(int index) const {
        return std::any_of(m_columns.begin(), m_columns.end(), [&](const ColumnInfo& column) {
            return column.head == m_line - 1 && column.index == index && IsFigure(column);
        });
    }

    void TakeRow() {
        if (*m_form.row == '\0' || (m_form.hasWeeks && m_width == 1))
            return;
        ++m_rows;
        if (m_status && !IsStatus(Field(m_status->index)))
            return FindOther(*m_status, m_status->index);
        if (m_status && Field(m_status->index) != "0")
            return; // a day without figures
        if (m_width < m_wanted)
            return Find("columns", Count(m_width, "column") + "; this kind takes " + std::to_string(m_wanted));
        TakeColumns(kEachRow);
    }

    void TakeColumns(int head) {
        for (const ColumnInfo& column : m_columns)
            if (column.head == head)
                for (int at = column.index; at < EndOf(column); ++at)
                    IsFigure(column) ? TakeFigure(column, at) : TakeField(column, at);
    }

    void TakeField(const ColumnInfo& column, int at) {
        const std::string_view value = Field(at);
        if ((!value.empty() || column.kind == ColumnKind::Color) && !CheckOf(column.kind).suits(value))
            FindOther(column, at);
    }

    void TakeFigure(const ColumnInfo& column, int at) {
        const double plain = m_row.PlainField(at);
        if (plain >= column.least && plain <= column.most)
            return;
        const std::string_view value = Field(at);
        if (value.empty())
            return;
        const std::optional<double> figure = NumberOf(value);
        if (!figure)
            FindOther(column, at);
        else if (*figure < column.least || *figure > column.most)
            Find("range", std::string("beyond what the ") + column.name + " can be: " + Quoted(value), at);
    }

    void FindOther(const ColumnInfo& column, int at) {
        const KindCheck check = CheckOf(column.kind);
        Find(check.rule, std::string("not ") + check.is + ": " + Quoted(m_row.View(at)), at);
    }

    /// Without a column it is about the whole line.
    void Find(const char* rule, std::string text, int column = -1) {
        if (++m_findings.count <= m_most)
            m_findings.first.push_back({m_path, m_line, column + 1, rule, std::move(text)});
    }

    DataForm m_form;
    std::vector<ColumnInfo> m_columns;
    std::string m_path;
    std::size_t m_most;
    int m_wanted = 0;                          ///< columns of a row with figures
    const ColumnInfo* m_status = nullptr;      ///< null if the rows have none
    const ColumnInfo* m_firstFigure = nullptr; ///< likewise
    CsvRow m_row;
    int m_width = 0; ///< columns of the line
    int m_line = 0;  ///< from 1
    int m_rows = 0;  ///< behind the head rows
    DataFindings m_findings;
};

} // namespace

DataFindings CheckData(const DataTable& table, const std::string& path, int series, std::size_t most) {
    return Check(table, path + table.suffix, series, most).Run();
}

} // namespace melkar
