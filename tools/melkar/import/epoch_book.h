#pragma once

#include "moments.h"
#include "notes.h"

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <vector>

/// @file
/// Levels of intensity, epoch by epoch, as the sheet of a day has them: one for two minutes, and the minutes at each.

namespace melkar::importer {

constexpr int kCells = 720; ///< of a day
constexpr int kCellSeconds = 120;
constexpr int kMostLevel = 9;

/// A day put together.
struct EpochDay {
    long line = 0;                                ///< the first about it
    std::array<std::uint8_t, kCells> tenths{};    ///< of a level, in each cell
    std::array<double, kMostLevel + 1> minutes{}; ///< at each level, from 0
};

/// Takes epochs in the order of time, so that one day at most is open. What a cell shows is the level at which most of
/// its time was spent, of equal ones the higher: a level that really was there, however short the epochs are. An
/// average of rest and running would show as a walk that nobody took, and the highest of a hundred epochs as a run.
/// Epochs at the same whole level are averaged, so that fractions stay.
class EpochBook {
public:
    EpochBook(int epochSeconds, Notes& notes);
    ~EpochBook();

    /// @return false for an epoch that isn't behind the one before it: it was there already, or a clock was put back
    bool Take(const Moment& moment, double level, long line);
    void Close(); ///< behind the last epoch

    const std::map<int, EpochDay>& Days() const { return m_days; }

private:
    struct Cell;
    struct OpenDay;

    void Add(const Moment& moment, double level, long line);
    void Finish();
    void TellGaps(const OpenDay& open) const;

    int m_epochSeconds;
    Notes& m_notes;
    std::unique_ptr<OpenDay> m_open;
    std::int64_t m_last = -1; ///< second of the last epoch
    std::map<int, EpochDay> m_days;
};

} // namespace melkar::importer
