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

int CountColumns(std::string_view line) { return 1 + static_cast<int>(std::count(line.begin(), line.end(), ',')); }

/// Reads one file line by line and collects what doesn't suit.
class Check {
public:
    Check(const DataForm& form, const ChartOptions& options, std::string path)
        : m_form(form), m_path(std::move(path)), m_columns(form.columns), m_lastFigure(form.lastFigure) {
        if (form.isSeries && options.series > 1) {
            m_columns += options.series - 1;
            m_lastFigure += options.series - 1;
        }
    }

    std::vector<std::string> Run() {
        std::ifstream file(m_path);
        std::string line;
        for (int number = 1; std::getline(file, line); ++number)
            Take(line, number);
        if (m_count > kMostWarnings)
            m_warnings.push_back(m_path + ": and " + std::to_string(m_count - kMostWarnings) + " more");
        return std::move(m_warnings);
    }

private:
    void Take(const std::string& line, int number) {
        if (Trimmed(line).empty())
            return;
        if (number > m_form.headRows)
            TakeDay(line, number);
        else if (number == m_form.headRows && m_form.hasStatus && IsDay(line))
            Warn(number, 0,
                 "a day in a head row, of which there are " + std::to_string(m_form.headRows) + ": it isn't drawn");
    }

    bool IsDay(const std::string& line) const {
        const CString status = getCSV(line.c_str(), 0);
        const CString figure = getCSV(line.c_str(), m_form.firstFigure);
        return CountColumns(line) >= m_columns && IsStatus(Trimmed(status.View())) && IsNumber(Trimmed(figure.View()));
    }

    void TakeDay(const std::string& line, int number) {
        const CString status = getCSV(line.c_str(), 0);
        if (m_form.hasStatus && !IsStatus(Trimmed(status.View())))
            return Warn(number, 1, "not the status of a day: " + Quoted(status));
        if (m_form.hasStatus && Trimmed(status.View()) != "0")
            return; // a day without figures
        if (CountColumns(line) < m_columns)
            return Warn(number, 0,
                        std::to_string(CountColumns(line)) + " columns; this kind takes " + std::to_string(m_columns));
        for (int column = m_form.firstFigure; column <= m_lastFigure; ++column)
            TakeFigure(getCSV(line.c_str(), column), number, column + 1);
    }

    void TakeFigure(const CString& text, int number, int column) {
        const std::string_view figure = Trimmed(text.View());
        if (!figure.empty() && !IsNumber(figure))
            Warn(number, column, "not a number: " + Quoted(text));
    }

    static std::string Quoted(const CString& text) { return '"' + std::string(text.View().substr(0, 40)) + '"'; }

    /// Column 0 stands for the whole line.
    void Warn(int line, int column, const std::string& what) {
        if (++m_count <= kMostWarnings)
            m_warnings.push_back(m_path + ": line " + std::to_string(line) +
                                 (column > 0 ? ", column " + std::to_string(column) : "") + ": " + what);
    }

    const DataForm& m_form;
    std::string m_path;
    int m_columns;
    int m_lastFigure;
    std::size_t m_count = 0;
    std::vector<std::string> m_warnings;
};

} // namespace

std::vector<std::string> DataWarnings(const Kind& kind, const ChartOptions& options, const std::string& path) {
    return kind.form.columns > 0 ? Check(kind.form, options, path).Run() : std::vector<std::string>{};
}

} // namespace melkar::tool
