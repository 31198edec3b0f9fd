#include "csv_source.h"

#include <algorithm>
#include <cctype>
#include <fstream>

namespace melkar::importer {
namespace {

struct Delimiter {
    char letter;
    const char* name;
};
constexpr Delimiter kDelimiters[] = {{',', "commas"}, {';', "semicolons"}, {'\t', "tabs"}};

std::vector<std::string> HeadOf(const std::string& path, char delimiter) {
    CsvRows rows(path, delimiter);
    std::vector<std::string> head;
    if (rows.Next())
        for (std::size_t i = 0; i < rows.Size(); ++i)
            head.emplace_back(Trimmed(rows.Field(i)));
    return head;
}

/// "weight (lb)" as "weight" and "lb".
std::pair<std::string, std::string> SplitUnit(const std::string& name) {
    const std::size_t open = name.find_last_of("([");
    const bool hasUnit = open != std::string::npos && open > 0 && (name.back() == ')' || name.back() == ']');
    if (!hasUnit)
        return {name, ""};
    return {std::string(Trimmed(std::string_view(name).substr(0, open))),
            name.substr(open + 1, name.size() - open - 2)};
}

std::string Lowered(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char letter) { return std::tolower(letter); });
    return text;
}

constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

/// The column of that name: as it stands, else without the unit behind it, else in any case.
std::size_t FindColumn(const std::vector<std::string>& head, const std::string& name) {
    const std::function<bool(const std::string&)> same[] = {
        [&](const std::string& one) { return one == name; },
        [&](const std::string& one) { return SplitUnit(one).first == name; },
        [&](const std::string& one) { return Lowered(one) == Lowered(name); },
        [&](const std::string& one) { return Lowered(SplitUnit(one).first) == Lowered(name); },
    };
    for (const auto& is : same) {
        const auto found = std::find_if(head.begin(), head.end(), is);
        if (found == head.end())
            continue;
        if (std::find_if(found + 1, head.end(), is) != head.end())
            throw Refusal("two columns are called \"" + name + "\"");
        return static_cast<std::size_t>(found - head.begin());
    }
    return kNowhere;
}

std::string NamesOf(const std::vector<std::string>& head) {
    std::string names;
    for (const std::string& name : head)
        names += (names.empty() ? "" : ", ") + Quoted(name);
    return names.empty() ? "none" : names;
}

bool IsUtf8(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const std::size_t more = byte < 0x80 ? 0 : byte >> 5 == 6 ? 1 : byte >> 4 == 14 ? 2 : byte >> 3 == 30 ? 3 : 4;
        if (more == 4 || i + more >= text.size())
            return false;
        for (std::size_t k = 1; k <= more; ++k)
            if (static_cast<unsigned char>(text[i + k]) >> 6 != 2)
                return false;
        i += more + 1;
    }
    return true;
}

void RequireText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    char start[4] = "";
    file.read(start, sizeof start);
    const std::string format = ForeignFormat(std::string_view(start, static_cast<std::size_t>(file.gcount())));
    if (!format.empty())
        throw Refusal("this is " + format);
}

/// Which format reads the text; where two do, day and month can't be told apart, and nobody guesses.
std::string DateHint(const MomentFormat& format, std::string_view text) {
    if (format.Example() != MomentFormat::Usual().Example())
        return "";
    std::string hint;
    for (const char* pattern : {"DD.MM.YYYY", "MM.DD.YYYY", "DD/MM/YYYY", "MM/DD/YYYY", "DD-MM-YYYY", "MM-DD-YYYY"})
        if (MomentFormat::Parse(pattern)->Read(text))
            hint.append(hint.empty() ? "; --date-format " : " or ").append(pattern);
    return hint;
}

} // namespace

CsvSource::CsvSource(CsvReading reading, Notes& notes) : m_reading(std::move(reading)), m_notes(notes) {
    RequireText(m_reading.path);
    std::vector<std::string> widest;
    for (const Delimiter& delimiter : kDelimiters) {
        const std::vector<std::string> head = HeadOf(m_reading.path, delimiter.letter);
        if (head.size() > widest.size())
            widest = head;
        m_delimiter = delimiter.letter;
        if (!FindColumns(head))
            continue;
        if (delimiter.letter != ',')
            m_notes.Chosen(std::string("columns between ") + delimiter.name, 1);
        if (!IsUtf8(NamesOf(head)))
            m_notes.Chosen("names that aren't UTF-8 are compared byte for byte", 1);
        m_values.resize(m_figures.size());
        Survey();
        return;
    }
    std::vector<std::string> wanted = m_reading.figures;
    wanted.insert(wanted.begin(), m_reading.date);
    for (const std::string& name : wanted)
        if (FindColumn(widest, name) == kNowhere)
            throw Refusal("no column " + Quoted(name) + "; there are: " + NamesOf(widest));
}

bool CsvSource::FindColumns(const std::vector<std::string>& head) {
    m_width = head.size();
    m_date.index = FindColumn(head, m_reading.date);
    m_figures.clear();
    for (const std::string& name : m_reading.figures) {
        const std::size_t index = FindColumn(head, name);
        if (index != kNowhere)
            m_figures.push_back({index, name, SplitUnit(head[index]).second});
    }
    return m_date.index != kNowhere && m_figures.size() == m_reading.figures.size();
}

void CsvSource::Survey() {
    for (Column& column : m_figures)
        column.decimals = m_reading.decimals.value_or(Decimals::Point);
    if (m_reading.decimals)
        return;
    std::vector<DecimalSurvey> surveys(m_figures.size());
    CsvRows rows(m_reading.path, m_delimiter);
    rows.Next();
    while (rows.Next())
        for (std::size_t i = 0; i < m_figures.size(); ++i)
            if (WhyNotARow(rows).empty())
                surveys[i].Look(Trimmed(rows.Field(m_figures[i].index)), rows.Line());
    for (std::size_t i = 0; i < m_figures.size(); ++i) {
        m_figures[i].decimals = surveys[i].Answer(m_figures[i].name, m_delimiter == ',');
        if (m_figures[i].decimals == Decimals::Comma)
            m_notes.Chosen("decimal commas in column " + Quoted(m_figures[i].name), surveys[i].FirstComma());
    }
}

/// A row that can't be trusted to have its fields in their columns.
std::string CsvSource::WhyNotARow(const CsvRows& rows) const {
    if (rows.HasStrayQuote())
        return "text behind a closing quote";
    if (rows.Size() > m_width)
        return std::to_string(rows.Size()) + " columns, and the head has " + std::to_string(m_width) +
               (m_delimiter == ',' ? ": a decimal comma without quotes?" : "");
    return "";
}

std::optional<Moment> CsvSource::MomentOf(const CsvRows& rows) {
    const std::string_view text = Trimmed(rows.Field(m_date.index));
    const std::optional<Moment> moment = m_reading.format.Read(text);
    if (!moment)
        m_notes.Skipped(rows.Line(), "not a date as " + m_reading.format.Example() + ": " + Quoted(text) +
                                         DateHint(m_reading.format, text));
    if (moment && moment->isUtc && !m_hasToldOfUtc) {
        m_notes.Chosen("times in UTC: the days are those of UTC", rows.Line());
        m_hasToldOfUtc = true;
    }
    return moment;
}

void CsvSource::TakeRow(const CsvRows& rows, const Sink& sink) {
    const std::string why = WhyNotARow(rows);
    if (!why.empty())
        return m_notes.Skipped(rows.Line(), why);
    const std::optional<Moment> moment = MomentOf(rows);
    if (!moment)
        return;
    for (std::size_t i = 0; i < m_figures.size(); ++i) {
        const std::string_view text = Trimmed(rows.Field(m_figures[i].index));
        m_values[i] = ReadFigure(text, m_figures[i].decimals);
        if (!m_values[i] && !text.empty())
            m_notes.Skipped(rows.Line(), "no figure in column " + Quoted(m_figures[i].name) + ": " + Quoted(text));
    }
    sink(*moment, m_values, rows.Line());
}

void CsvSource::Read(const Sink& sink) {
    CsvRows rows(m_reading.path, m_delimiter);
    rows.Next();
    while (rows.Next())
        TakeRow(rows, sink);
}

} // namespace melkar::importer
