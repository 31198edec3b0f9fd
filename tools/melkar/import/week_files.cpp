#include "week_files.h"

#include "day_files.h"
#include "figures.h"
#include "table_file.h"

#include <MelkarCommon/frame/day_status.h>

namespace melkar::importer {
namespace {

constexpr int kSunday = 7;
constexpr std::size_t kFirstModerate = 4; ///< level from which on time counts as active

/// Writes a row for each day.
class WeekWriter {
public:
    WeekWriter(const WeekFiles& files, const EpochBook& epochs, const DayBook& book, Notes& notes)
        : m_files(files), m_epochs(epochs), m_book(book), m_notes(notes), m_span(SpanOf(epochs.Days(), book.Range())),
          m_file(files.plan->files.front(), 1, files.path, [this](const ColumnInfo& column, int) {
              return std::string_view(column.name) == "first date" ? ShowDay(*m_span.first) : std::string();
          }) {}

    std::string Run() {
        TellLacks();
        int next = *m_span.first;
        for (const auto& [day, epochs] : m_epochs.Days()) {
            Fill(next, day, epochs.line);
            AddDay(day, &epochs);
            next = day + 1;
        }
        Fill(next, *m_span.last + 1, 0);
        m_file.Commit();
        return ShowSpan(m_span);
    }

private:
    void TellLacks() {
        std::string lacks;
        for (const char* name : {"steps", "activity calories", "total calories"})
            if (FigureOf(name) == m_files.figures.size())
                lacks.append(lacks.empty() ? "" : ", ").append(name);
        if (!lacks.empty())
            m_notes.Chosen("nobody names a column of " + lacks + ": 0 in the summary");
        const int sunday = *m_span.first + kSunday - WeekdayOf(*m_span.first);
        if (std::string_view(m_files.plan->kind->kind) == "week" && sunday < *m_span.last)
            m_notes.Chosen("the sheet of a week ends with " + ShowDay(sunday) + "; --from begins with another");
    }

    void Fill(int first, int day, long line) {
        FillDays(first, day, line, m_notes);
        for (int missing = first; missing < day; ++missing)
            AddDay(missing, nullptr);
    }

    void AddDay(int day, const EpochDay* epochs) {
        m_file.AddRow([&](const ColumnInfo& column, int i) { return DayValue(column, i, day, epochs); });
        if (m_files.plan->files.front().form.hasWeeks && WeekdayOf(day) == kSunday)
            m_file.AddEmptyRow();
    }

    std::string DayValue(const ColumnInfo& column, int i, int day, const EpochDay* epochs) const {
        const DayStatus status = epochs == nullptr ? DayStatus::NoRecords : DayStatus::Figures;
        if (column.kind == ColumnKind::DayStatus)
            return std::to_string(static_cast<unsigned>(status));
        if (column.kind == ColumnKind::Date)
            return ShowDay(day);
        return epochs == nullptr ? "" : Value(column, i, day, *epochs);
    }

    std::string Value(const ColumnInfo& column, int i, int day, const EpochDay& epochs) const {
        constexpr double kTenth = 0.1;
        const std::string_view name = column.name;
        const auto at = static_cast<std::size_t>(i);
        if (name == "intensity")
            return ShowFigure(epochs.tenths[at] * kTenth);
        if (name == "level")
            return ShowFigure(epochs.minutes[at + 1] * column.perUnit);
        if (name == "time")
            return ActiveTime(column, epochs);
        const std::size_t figure = FigureOf(name);
        if (figure < m_files.figures.size())
            return ShowAs(column, m_book.Days().at(day).figures[figure].value);
        return name == "exercise" ? "-1" : ""; // none
    }

    /// In the file for paper it stands where the minutes of a level do, and is left to these.
    std::string ActiveTime(const ColumnInfo& column, const EpochDay& epochs) const {
        if (m_files.plan->files.front().form.hasWeeks)
            return "";
        double minutes = 0;
        for (std::size_t level = kFirstModerate; level < epochs.minutes.size(); ++level)
            minutes += epochs.minutes[level];
        return ShowFigure(minutes * column.perUnit);
    }

    /// The place of the figure of that name; behind the last if nobody named it.
    std::size_t FigureOf(std::string_view name) const {
        std::size_t i = 0;
        while (i < m_files.figures.size() && m_files.figures[i].wanted.name != name)
            ++i;
        return i;
    }

    const WeekFiles& m_files;
    const EpochBook& m_epochs;
    const DayBook& m_book;
    Notes& m_notes;
    DayRange m_span;
    TableFile m_file;
};

/// The minutes at each level, of all days together.
std::string WriteLevels(const WeekFiles& files, const EpochBook& epochs, const DayBook& book) {
    const DayRange span = SpanOf(epochs.Days(), book.Range());
    TableFile file(files.plan->files.front(), 1, files.path, [](const ColumnInfo&, int) { return ""; });
    for (std::size_t level = 1; level <= kMostLevel; ++level) {
        double minutes = 0;
        for (const auto& [day, one] : epochs.Days())
            minutes += one.minutes[level];
        file.AddRow([minutes](const ColumnInfo&, int) { return ShowFigure(minutes); });
    }
    file.Commit();
    return "minutes of " + ShowSpan(span);
}

} // namespace

std::string WriteWeekFile(const WeekFiles& files, const EpochBook& epochs, const DayBook& book, Notes& notes) {
    if (files.plan->layout == Layout::Levels)
        return WriteLevels(files, epochs, book);
    return WeekWriter(files, epochs, book, notes).Run();
}

} // namespace melkar::importer
