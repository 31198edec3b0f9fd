#include <MelkarCommon/registry/data_check.h>

#include <MelkarCommon/platform/files.h>
#include <MelkarCommon/support/fields.h>
#include <MelkarCommon/support/numbers.h>

#include <algorithm>
#include <charconv>
#include <map>
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
    if (text.size() != 8 || !IsDigits(text))
        return false;
    constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const int year = Part(text, 0, 4);
    const int month = Part(text, 4, 2);
    const int day = Part(text, 6, 2);
    const bool isLeap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month >= 1 && month <= 12 && day >= 1 && day <= kDays[month - 1] + (isLeap && month == 2 ? 1 : 0);
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
    Check(const DataTable& table, std::string path, const DataUse& use)
        : m_form(table.form), m_columns(ColumnsFor(table, use.series)), m_path(std::move(path)), m_use(use) {
        for (const ColumnInfo& column : m_columns) {
            if (column.head != kEachRow)
                continue;
            m_known = std::max(m_known, EndOf(column));
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
            if (Trimmed(line).empty())
                m_isInWeek = false;
            else
                Take(line);
            if (m_isOther)
                return std::move(m_findings);
            if (GoesOn(line, limit))
                PassRestOfLine(file, limit);
        }
        FindMissing();
        return std::move(m_findings);
    }

private:
    void FindMissing() {
        if (m_rows < m_form.fewest)
            Find("rows", "ends behind " + Count(m_rows, "row") + " of figures; this kind takes " +
                             std::to_string(m_form.fewest));
        m_line = 0;
        if (m_form.hasWeeks && m_use.page != 0 && (m_use.page < 0 || m_use.page >= m_weeks))
            Find("no-page", "holds " + Count(m_weeks, "week") + ", from page 0 on: there is no page " +
                                std::to_string(m_use.page));
    }

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
        if (m_line > m_form.heads && m_width < m_wanted && IsSeparatedOtherwise(line))
            return;
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

    /// Rows that are split by something else: one finding tells it, for the rest would be about that alone.
    bool IsSeparatedOtherwise(std::string_view line) {
        for (const auto& [separator, name] : {std::pair(';', "semicolons"), {'\t', "tabs"}})
            if (std::count(line.begin(), line.end(), separator) + 1 >= m_wanted) {
                Find("separator", std::string("columns stand between ") + name + "; commas are read");
                m_isOther = true;
            }
        return m_isOther;
    }

    void TakeRow() {
        if (*m_form.row == '\0')
            return;
        if (m_form.hasWeeks && m_width == 1) {
            m_isInWeek = false;
            return;
        }
        m_weeks += std::exchange(m_isInWeek, true) ? 0 : 1;
        ++m_rows;
        if (*m_form.colorKey != '\0' && m_rows - 1 == m_use.colors)
            Find("no-color", "the profile has " + Count(m_use.colors, "colour") + " (" + m_form.colorKey +
                                 "): this row and those behind it aren't shown");
        CompareDates();
        if (m_status && !IsStatus(Field(m_status->index)))
            return FindOtherStatus();
        if (m_status && Field(m_status->index) != "0")
            return; // a day without figures
        if (m_width < m_wanted)
            return Find("columns", Count(m_width, "column") + "; this kind takes " + std::to_string(m_wanted));
        if (m_width > m_known)
            FindMore();
        TakeColumns(kEachRow);
        HoldAgainstScales();
    }

    /// A number beyond those that mean something is taken as it is. A long one is of another column.
    void FindOtherStatus() {
        const std::string_view value = Field(m_status->index);
        if (value.empty() || value.size() > 2 || !IsDigits(value))
            return FindOther(*m_status, m_status->index);
        Find("status-beyond", "a status from 0 to 4 has a meaning; this day has no figures: " + Quoted(value),
             m_status->index);
    }

    /// Dates go on from row to row, and from column to column.
    void CompareDates() {
        for (const ColumnInfo& column : m_columns) {
            if (column.kind != ColumnKind::Date || column.head != kEachRow)
                continue;
            const std::string date(Field(column.index));
            if (!IsDate(date))
                continue;
            std::string& before = m_dates[column.index];
            if (date <= before)
                Find("date-order", Quoted(date) + " doesn't come after " + Quoted(before) + " of the row before",
                     column.index);
            before = date;
        }
    }

    /// One column more than any is known for, behind a figure without decimals: its decimals, most likely.
    void FindMore() {
        for (const ColumnInfo& column : m_columns) {
            const int at = EndOf(column) - 1;
            if (column.head != kEachRow || !IsFigure(column) || m_width != m_known + 1)
                continue;
            const std::string whole(Field(at));
            const std::string decimals(Field(at + 1));
            constexpr std::size_t kMostDecimals = 2;
            if (IsNumber(whole) && whole.find('.') == std::string::npos && !decimals.empty() &&
                decimals.size() <= kMostDecimals && IsDigits(decimals))
                return Find("decimal-comma", Quoted(whole + "," + decimals) + ": a decimal comma? A figure has a point",
                            at);
        }
        Find("more-columns",
             Count(m_width, "column") + "; of this kind of file " + std::to_string(m_known) + " are read");
    }

    const DataScale* FindScale(const char* top) const {
        const auto found = std::find_if(m_use.scales.begin(), m_use.scales.end(),
                                        [&](const DataScale& scale) { return scale.top == top; });
        return found != m_use.scales.end() ? &*found : nullptr;
    }

    void HoldAgainstScales() {
        for (const ColumnInfo& column : m_columns) {
            const DataScale* scale = FindScale(column.scale);
            const auto top = m_tops.find(column.scale);
            if (column.head == kEachRow && (scale || top != m_tops.end()))
                HoldAgainst(column, scale ? scale->from : 0, top != m_tops.end() ? top->second : scale->to);
        }
    }

    /// Of stacked figures their sum counts.
    void HoldAgainst(const ColumnInfo& column, double from, double to) {
        if (const DataScale* big = FindScale(column.bigScale))
            to = std::max(to, big->to);
        double figure = 0;
        for (int at = column.index; at < EndOf(column); ++at)
            figure += m_row.DoubleField(at);
        const std::string range = detail::ShowNumber(from) + " to " + detail::ShowNumber(to);
        const bool isThere = !Field(column.index).empty();
        if (isThere && (figure > to || (figure < from && figure != 0)))
            Find("off-scale",
                 std::string("the ") + column.name + " is off its scale from " + range + ": " +
                     Quoted(detail::ShowNumber(figure)),
                 column.index);
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

    /// A scale is told in a head row.
    void TakeTop(const ColumnInfo& column, double figure) {
        if (column.isTop && figure > 0)
            m_tops[column.scale] = figure;
    }

    void TakeFigure(const ColumnInfo& column, int at) {
        const double plain = m_row.PlainField(at);
        if (plain >= column.least && plain <= column.most)
            return TakeTop(column, plain);
        const std::string_view value = Field(at);
        if (value.empty())
            return;
        const std::optional<double> figure = NumberOf(value);
        if (!figure)
            FindOther(column, at);
        else if (*figure < column.least || *figure > column.most)
            Find("range", std::string("beyond what the ") + column.name + " can be: " + Quoted(value), at);
        else
            TakeTop(column, *figure);
    }

    void FindOther(const ColumnInfo& column, int at) {
        const KindCheck check = CheckOf(column.kind);
        Find(check.rule, std::string("not ") + check.is + ": " + Quoted(m_row.View(at)), at);
    }

    /// Without a column it is about the whole line.
    void Find(const char* rule, std::string text, int column = -1) {
        if (++m_findings.count <= m_use.most)
            m_findings.first.push_back({m_path, m_line, column + 1, rule, std::move(text)});
    }

    DataForm m_form;
    std::vector<ColumnInfo> m_columns;
    std::string m_path;
    const DataUse& m_use;
    int m_wanted = 0;                          ///< columns of a row with figures
    int m_known = 0;                           ///< columns that are read of a row
    const ColumnInfo* m_status = nullptr;      ///< null if the rows have none
    const ColumnInfo* m_firstFigure = nullptr; ///< likewise
    CsvRow m_row;
    int m_width = 0; ///< columns of the line
    int m_line = 0;  ///< from 1
    int m_rows = 0;  ///< behind the head rows
    int m_weeks = 0; ///< of a file of weeks
    bool m_isInWeek = false;
    bool m_isOther = false;               ///< no rows that are split by commas
    std::map<std::string, double> m_tops; ///< of scales, as a head row says them
    std::map<int, std::string> m_dates;   ///< of the row before, by column
    DataFindings m_findings;
};

} // namespace

DataFindings CheckData(const DataTable& table, const std::string& path, const DataUse& use) {
    return Check(table, path + table.suffix, use).Run();
}

DataFindings CheckData(const DataTable& table, const std::string& path, int series, std::size_t most) {
    DataUse use;
    use.series = series;
    use.most = most;
    return CheckData(table, path, use);
}

} // namespace melkar
