#include "day_files.h"

#include "figures.h"
#include "table_file.h"

#include <MelkarCommon/frame/day_status.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace melkar::importer {
namespace {

constexpr int kMostFilled = 366; ///< days in a row

std::string ShowStatus(DayStatus status) { return std::to_string(static_cast<unsigned>(status)); }

/// The example that the table gives: what suits a column that no source has.
std::string UsualValue(const ColumnInfo& column) {
    const std::string_view all = column.example;
    return std::string(all.substr(0, all.find('|')));
}

/// All values of the figures of that name.
std::vector<double> ValuesOf(const DayFiles& files, const DayBook& book, std::string_view name) {
    std::vector<double> values;
    for (const auto& [day, entry] : book.Days())
        for (std::size_t i = 0; i < files.figures.size(); ++i)
            if (files.figures[i].wanted.name == name && entry.figures[i].count > 0)
                values.push_back(entry.figures[i].value);
    return values;
}

/// Writes days row by row, each into all files of the kind.
class DayWriter {
public:
    DayWriter(const DayFiles& files, const DayBook& book, Notes& notes)
        : m_files(files), m_book(book), m_notes(notes), m_span(SpanOf(book.Days(), book.Range())),
          m_carried(files.figures.size()) {
        for (std::size_t i = 0; i < m_carried.size(); ++i) // days before the first have the first
            if (const auto values = ValuesOf(files, book, files.figures[i].wanted.name);
                files.figures[i].wanted.isCarried && !values.empty())
                m_carried[i] = values.front();
        for (const DataTable& table : files.plan->files)
            m_made.push_back(std::make_unique<TableFile>(
                table, Series(), files.path, [this](const ColumnInfo& column, int) { return HeadValue(column); }));
    }

    std::string Run() {
        if (std::none_of(m_book.Days().begin(), m_book.Days().end(),
                         [this](const auto& day) { return LackOf(day.second).empty(); }))
            throw Refusal("no day has figures; the first one has no " + LackOf(m_book.Days().begin()->second));
        TellLacks();
        int next = *m_span.first;
        for (const auto& [day, entry] : m_book.Days()) {
            Fill(next, day, entry.line);
            AddDay(day, &entry);
            next = day + 1;
        }
        Fill(next, *m_span.last + 1, 0);
        for (const auto& file : m_made)
            file->Commit();
        return ShowSpan(m_span);
    }

private:
    int Series() const {
        return static_cast<int>(std::count_if(m_files.figures.begin(), m_files.figures.end(),
                                              [](const Bound& one) { return one.wanted.isSeries; }));
    }

    /// Figures that the kind draws all the same.
    void TellLacks() const {
        for (const Wanted& wanted : m_files.plan->figures)
            if (!wanted.mayLack && std::none_of(m_files.figures.begin(), m_files.figures.end(),
                                                [&](const Bound& one) { return one.wanted.name == wanted.name; }))
                m_notes.Chosen("nobody names a source of " + wanted.name + ": the chart draws it at 0");
    }

    /// Head rows say of the whole file what its rows can't.
    std::string HeadValue(const ColumnInfo& column) {
        const std::string_view name = column.name;
        if (name == "first" || name == "start")
            return ShowDay(*m_span.first);
        if (name == "last")
            return ShowDay(*m_span.last);
        if (name == "number")
            return "0";
        if (name == "average")
            return Average();
        if (name == "top")
            return Top(column);
        if (name == "highest" || name == "lowest")
            return WeightBound(name == "highest");
        return "";
    }

    std::vector<double> FirstFigures() const { return ValuesOf(m_files, m_book, m_files.figures.front().wanted.name); }

    std::string Average() const {
        const std::vector<double> values = FirstFigures();
        if (values.empty())
            return "";
        return ShowFigure(std::round(std::accumulate(values.begin(), values.end(), 0.0) / double(values.size())));
    }

    /// Of all figures that stand on this scale, whoever was named first.
    std::vector<double> FiguresOn(const char* scale) const {
        std::vector<double> values;
        for (const DataTable& file : m_files.plan->files)
            for (const ColumnInfo& column : file.columns)
                if (column.scale == std::string_view(scale) && column.head == kEachRow) {
                    const std::vector<double> more = ValuesOf(m_files, m_book, column.name);
                    values.insert(values.end(), more.begin(), more.end());
                }
        return values;
    }

    /// Over the highest bar is room for its figure.
    std::string Top(const ColumnInfo& column) {
        constexpr double kRoom = 1.05;
        constexpr double kStep = 1000; // a line of the scale at each
        const std::vector<double> values = FiguresOn(column.scale);
        const double highest = values.empty() ? 0 : *std::max_element(values.begin(), values.end());
        const double top = std::max(std::ceil(highest * kRoom / kStep), 1.0) * kStep;
        m_notes.Chosen("top of the scale " + ShowFigure(top) + " " + column.unit + ", over " + ShowFigure(highest));
        return ShowFigure(top);
    }

    /// Whole kilograms around all weights, those of the plan as well.
    std::string WeightBound(bool isHighest) const {
        std::vector<double> values = ValuesOf(m_files, m_book, "weight");
        const std::vector<double> planned = ValuesOf(m_files, m_book, "plan");
        values.insert(values.end(), planned.begin(), planned.end());
        if (values.empty())
            return "";
        const auto [least, most] = std::minmax_element(values.begin(), values.end());
        return ShowFigure(isHighest ? std::floor(*most) + 1 : std::ceil(*least) - 1);
    }

    void Fill(int first, int day, long line) {
        FillDays(first, day, line, m_notes);
        for (int missing = first; missing < day; ++missing)
            AddDay(missing, nullptr);
    }

    /// What is needed, and isn't there.
    std::string LackOf(const DayEntry& entry) const {
        std::string names;
        for (std::size_t i = 0; i < m_files.figures.size(); ++i) {
            const Wanted& wanted = m_files.figures[i].wanted;
            if (entry.figures[i].count == 0 && wanted.isNeeded && !wanted.mayLack && !wanted.isCarried)
                names += (names.empty() ? "" : ", ") + wanted.name;
        }
        return names;
    }

    DayStatus StatusOf(int day, const DayEntry* entry) {
        if (entry == nullptr)
            return DayStatus::NoRecords;
        const std::string lack = LackOf(*entry);
        if (lack.empty())
            return DayStatus::Figures;
        m_notes.Filled(entry->line, ShowDay(day) + " has no " + lack + ": status " + ShowStatus(DayStatus::NoData));
        return DayStatus::NoData;
    }

    void AddDay(int day, const DayEntry* entry) {
        const DayStatus status = StatusOf(day, entry);
        for (std::size_t i = 0; i < m_carried.size(); ++i)
            if (m_files.figures[i].wanted.isCarried && entry != nullptr && entry->figures[i].count > 0)
                m_carried[i] = entry->figures[i].value;
        for (const auto& file : m_made)
            file->AddRow([&](const ColumnInfo& column, int i) { return DayValue(column, i, day, entry, status); });
    }

    std::string DayValue(const ColumnInfo& column, int i, int day, const DayEntry* entry, DayStatus status) const {
        switch (column.kind) {
        case ColumnKind::DayStatus:
            return ShowStatus(status);
        case ColumnKind::Caption:
            return ShowDay(day, m_files.caption);
        case ColumnKind::Date:
            return ShowDay(day);
        default:
            return Figure(column, i, entry);
        }
    }

    std::string Figure(const ColumnInfo& column, int i, const DayEntry* entry) const {
        for (std::size_t at = 0; at < m_files.figures.size(); ++at) {
            const Wanted& wanted = m_files.figures[at].wanted;
            if (wanted.name != column.name || i-- > 0)
                continue;
            if (wanted.isCarried && m_carried[at])
                return ShowAs(column, *m_carried[at]);
            return entry != nullptr && entry->figures[at].count > 0 ? ShowAs(column, entry->figures[at].value) : "";
        }
        return "";
    }

    const DayFiles& m_files;
    const DayBook& m_book;
    Notes& m_notes;
    DayRange m_span;
    std::vector<std::optional<double>> m_carried; ///< of figures that days take over
    std::vector<std::unique_ptr<TableFile>> m_made;
};

/// A point for each day with a figure, joined to the one before.
std::string WritePoints(const DayFiles& files, const DayBook& book, Notes& notes) {
    const DayRange span = SpanOf(book.Days(), book.Range());
    TableFile file(files.plan->files.front(), 1, files.path, [](const ColumnInfo&, int) { return ""; });
    notes.Chosen("x is the day from " + ShowDay(*span.first) + " on; size and colour of the points are usual ones");
    int points = 0;
    for (const auto& [day, entry] : book.Days()) {
        const DayFigure& figure = entry.figures.front();
        if (figure.count == 0)
            continue;
        file.AddRow([&, x = day - *span.first](const ColumnInfo& column, int) -> std::string {
            const std::string_view name = column.name;
            if (name == "x")
                return std::to_string(x);
            if (name == "y")
                return ShowFigure(figure.value);
            return name == "connect" ? points > 0 ? "1" : "0" : UsualValue(column);
        });
        ++points;
    }
    if (points == 0)
        throw Refusal("no row has a figure");
    file.Commit();
    return std::to_string(points) + " points, " + ShowSpan(span);
}

/// The sums of the figures, in their order.
std::string WriteSums(const DayFiles& files, const DayBook& book) {
    const DayRange span = SpanOf(book.Days(), book.Range());
    TableFile file(files.plan->files.front(), 1, files.path, [](const ColumnInfo&, int) { return ""; });
    for (std::size_t i = 0; i < files.figures.size(); ++i) {
        double sum = 0;
        for (const auto& [day, entry] : book.Days())
            sum += entry.figures[i].value;
        file.AddRow([&](const ColumnInfo& column, int) { return ShowAs(column, sum); });
    }
    file.Commit();
    return "sums of " + ShowSpan(span);
}

std::string WriteLatest(const DayFiles& files, const DayBook& book, Notes& notes) {
    const auto day = std::find_if(book.Days().rbegin(), book.Days().rend(),
                                  [](const auto& one) { return one.second.figures.front().count > 0; });
    if (day == book.Days().rend())
        throw Refusal("no row has a figure");
    const DayFigure& figure = day->second.figures.front();
    TableFile file(files.plan->files.front(), 1, files.path, [](const ColumnInfo&, int) { return ""; });
    file.AddRow([&](const ColumnInfo& column, int) { return ShowAs(column, figure.value); });
    file.Commit();
    notes.Chosen("the figure of the last day that has one", figure.line);
    return "the figure of " + ShowDay(day->first);
}

} // namespace

std::string WriteDayFiles(const DayFiles& files, const DayBook& book, Notes& notes) {
    switch (files.plan->layout) {
    case Layout::Points:
        return WritePoints(files, book, notes);
    case Layout::Sums:
        return WriteSums(files, book);
    case Layout::Latest:
        return WriteLatest(files, book, notes);
    default:
        return DayWriter(files, book, notes).Run();
    }
}

void FillDays(int first, int day, long line, Notes& notes) {
    const int count = day - first;
    if (count <= 0)
        return;
    const std::string days = count == 1 ? ShowDay(first) : ShowDay(first) + " to " + ShowDay(day - 1);
    if (count > kMostFilled)
        throw Refusal((line > 0 ? "line " + std::to_string(line) + ": " : "") + std::to_string(count) +
                      " days are missing, " + days + ": is a date mistyped? --from and --to leave days out");
    notes.Filled(line, days + (count == 1 ? " is" : " are") + " missing: status " + ShowStatus(DayStatus::NoRecords));
}

std::string ShowSpan(const DayRange& span) {
    const int count = *span.last - *span.first + 1;
    return std::to_string(count) + (count == 1 ? " day, " : " days, ") + ShowDay(*span.first) + " to " +
           ShowDay(*span.last);
}

} // namespace melkar::importer
