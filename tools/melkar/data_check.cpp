#include "data_check.h"

#include <MelkarCommon/support/fields.h>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <string_view>

namespace melkar::tool {
namespace {

constexpr std::size_t kMostWarnings = 5;

/// Without the blanks around it: those before a figure, and a carriage return, do no harm to a reader.
std::string_view Trimmed(std::string_view text) {
    constexpr const char* kBlanks = " \t\r";
    const auto first = text.find_first_not_of(kBlanks);
    return first == std::string_view::npos ? std::string_view{}
                                           : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool IsNumber(std::string_view text) {
    double value = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && stop == text.data() + text.size();
}

bool IsStatus(std::string_view text) { return text.size() == 1 && text[0] >= '0' && text[0] <= '4'; }

bool IsColor(std::string_view text) {
    return text.size() == 7 && text[0] == '#' && text.find_first_not_of("0123456789abcdefABCDEF", 1) == text.npos;
}

int CountColumns(std::string_view line) { return 1 + static_cast<int>(std::count(line.begin(), line.end(), ',')); }

std::string Quoted(const CString& text) { return '"' + std::string(text.View().substr(0, 40)) + '"'; }

/// Reads one file line by line and collects what doesn't suit.
class Check {
public:
    Check(const DataForm& form, const ChartOptions& options, std::string path)
        : m_form(form), m_path(std::move(path)), m_further(form.isSeries ? std::max(options.series, 1) - 1 : 0) {}

    std::vector<std::string> Run() {
        std::ifstream file(m_path);
        if (!file) // that is for the reader to tell
            return {};
        for (std::string line; std::getline(file, line);) {
            ++m_line;
            if (!Trimmed(line).empty())
                Take(line);
        }
        if (m_rows < m_form.rows)
            Warn("ends behind " + Count(m_rows, "row") + " of figures; this kind takes " + std::to_string(m_form.rows));
        if (m_count > kMostWarnings)
            m_warnings.push_back(m_path + ": and " + std::to_string(m_count - kMostWarnings) + " more");
        return std::move(m_warnings);
    }

private:
    static std::string Count(int count, const std::string& what) {
        return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
    }

    void Take(const std::string& line) {
        m_row.Split(line.c_str());
        m_columns = CountColumns(line);
        if (m_line > m_form.headRows)
            TakeRow();
        else if (m_line == m_form.headRows && IsRowOfFigures())
            Warn("figures in a head row, of which there are " + std::to_string(m_form.headRows) +
                 ": they aren't drawn");
    }

    int ColumnsWanted() const { return m_form.columns + m_further; }

    /// Of one column a head could be a number as well.
    bool IsRowOfFigures() const {
        return m_form.columns > 1 && m_columns >= ColumnsWanted() && (!HasStatus() || IsStatus(Status())) &&
               IsNumber(Trimmed(m_row.Field(m_form.figures[0].first).View()));
    }

    bool HasStatus() const { return m_form.status != DataForm::kNone; }
    std::string Status() const { return std::string(Trimmed(m_row.Field(m_form.status).View())); }

    void TakeRow() {
        if (m_form.hasWeeks && m_columns == 1)
            return;
        ++m_rows;
        if (HasStatus() && !IsStatus(Status()))
            return Warn("not the status of a day: " + Quoted(m_row.Field(m_form.status)), m_form.status);
        if (HasStatus() && Status() != "0")
            return; // a day without figures
        if (m_columns < ColumnsWanted())
            return Warn(Count(m_columns, "column") + "; this kind takes " + std::to_string(ColumnsWanted()));
        TakeFigures();
    }

    void TakeFigures() {
        for (const ColumnRange& range : m_form.figures)
            for (int column = range.first; column <= range.last; ++column)
                TakeFigure(column);
        for (int further = 0; further < m_further; ++further)
            TakeFigure(m_form.columns + further);
        if (m_form.color == DataForm::kNone)
            return;
        const CString color = m_row.Field(m_form.color);
        if (!IsColor(Trimmed(color.View())))
            Warn("not a colour as in #RRGGBB: " + Quoted(color), m_form.color);
    }

    void TakeFigure(int column) {
        const CString text = m_row.Field(column);
        const std::string_view figure = Trimmed(text.View());
        if (!figure.empty() && !IsNumber(figure))
            Warn("not a number: " + Quoted(text), column);
    }

    /// Without a column it is about the whole line.
    void Warn(const std::string& what, int column = DataForm::kNone) {
        if (++m_count <= kMostWarnings)
            m_warnings.push_back(m_path + ": line " + std::to_string(m_line) +
                                 (column >= 0 ? ", column " + std::to_string(column + 1) : "") + ": " + what);
    }

    const DataForm& m_form;
    std::string m_path;
    int m_further; ///< columns of the second and further figures of a day
    melkar::CsvRow m_row;
    int m_columns = 0;
    int m_line = 0; ///< from 1
    int m_rows = 0; ///< behind the head rows
    std::size_t m_count = 0;
    std::vector<std::string> m_warnings;
};

} // namespace

std::vector<std::string> DataWarnings(const Kind& kind, const ChartOptions& options, const std::string& path) {
    if (!kind.form)
        return path.empty() ? std::vector<std::string>{} : std::vector{path + ": this kind takes no data file"};
    return kind.form->columns > 0 ? Check(*kind.form, options, path).Run() : std::vector<std::string>{};
}

} // namespace melkar::tool
