#include "epoch_book.h"

#include "figures.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace melkar::importer {
namespace {

constexpr double kSecondsAMinute = 60;

} // namespace

/// Epochs at each whole level.
struct EpochBook::Cell {
    std::array<std::uint16_t, kMostLevel + 1> counts{};
    std::array<float, kMostLevel + 1> sums{};

    bool IsEmpty() const {
        return std::all_of(counts.begin(), counts.end(), [](int count) { return count == 0; });
    }
    double Level() const {
        std::size_t most = 0;
        for (std::size_t level = 1; level < counts.size(); ++level)
            if (counts[level] > 0 && counts[level] >= counts[most])
                most = level;
        return counts[most] > 0 ? double(sums[most]) / counts[most] : 0;
    }
};

struct EpochBook::OpenDay {
    int day = 0;
    long firstLine = 0;
    long lastLine = 0;
    std::array<Cell, kCells> cells{};
};

EpochBook::EpochBook(int epochSeconds, Notes& notes)
    : m_epochSeconds(epochSeconds), m_notes(notes), m_last(std::numeric_limits<std::int64_t>::min()) {}

EpochBook::~EpochBook() = default;

bool EpochBook::Take(const Moment& moment, double level, long line) {
    const std::int64_t second = std::int64_t{moment.day} * kSecondsADay + moment.second;
    if (second <= m_last) {
        m_notes.Skipped(line, "not behind the epoch before it: " + ShowDay(moment.day) + " " + ShowTime(moment.second));
        return false;
    }
    m_last = second;
    if (level >= 0 && level <= kMostLevel)
        Add(moment, level, line);
    else
        m_notes.Skipped(line, "a level beyond 0 to 9: " + ShowFigure(level));
    return true;
}

void EpochBook::Add(const Moment& moment, double level, long line) {
    if (m_open != nullptr && m_open->day != moment.day)
        Finish();
    if (m_open == nullptr) {
        m_open = std::make_unique<OpenDay>();
        m_open->day = moment.day;
        m_open->firstLine = line;
    }
    m_open->lastLine = line;
    Cell& cell = m_open->cells[static_cast<std::size_t>(moment.second / kCellSeconds)];
    const auto whole = static_cast<std::size_t>(std::lround(level));
    ++cell.counts[whole];
    cell.sums[whole] += static_cast<float>(level);
}

void EpochBook::Close() {
    if (m_open != nullptr)
        Finish();
}

/// The file of a day knows rest only, not that nobody looked.
void EpochBook::TellGaps(const OpenDay& open) const {
    const auto& cells = open.cells;
    for (std::size_t start = 0; start < cells.size();) {
        std::size_t end = start;
        while (end < cells.size() && cells[end].IsEmpty())
            ++end;
        if (end > start)
            m_notes.Filled(open.lastLine, ShowDay(open.day) + " from " + ShowTime(int(start) * kCellSeconds) + " to " +
                                              ShowTime(int(end) * kCellSeconds) + " has no epochs: drawn as rest");
        start = end + 1;
    }
}

void EpochBook::Finish() {
    constexpr double kTenths = 10;
    EpochDay& day = m_days[m_open->day];
    day.line = m_open->firstLine;
    for (std::size_t i = 0; i < day.tenths.size(); ++i) {
        const Cell& cell = m_open->cells[i];
        day.tenths[i] = static_cast<std::uint8_t>(std::lround(cell.Level() * kTenths));
        for (std::size_t level = 0; level < day.minutes.size(); ++level)
            day.minutes[level] += cell.counts[level] * m_epochSeconds / kSecondsAMinute;
    }
    TellGaps(*m_open);
    m_open.reset();
}

} // namespace melkar::importer
