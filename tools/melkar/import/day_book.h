#pragma once

#include "moments.h"
#include "notes.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

/// @file
/// The figures of days, as they come in: several of a day become one.

namespace melkar::importer {

/// What becomes of a figure.
struct FigureRule {
    std::string name;
    double factor = 1;         ///< from the source's unit
    bool addsUp = false;       ///< figures of a day make a sum; else the last one holds
    bool mayBeNegative = true; ///< false where it measures something
};

struct DayFigure {
    double value = 0;
    int count = 0;        ///< of figures that it is made of; 0: none
    int second = 0;       ///< of the day, of the last one
    long line = 0;        ///< likewise
    bool isTotal = false; ///< told for the whole day, so that nothing is added
};

struct DayEntry {
    long line = 0; ///< the first that told of the day
    std::vector<DayFigure> figures;
};

/// First and last day that are wanted.
struct DayRange {
    std::optional<int> first;
    std::optional<int> last;

    bool Has(int day) const { return !(first && day < *first) && !(last && day > *last); }
};

class DayBook {
public:
    DayBook(std::vector<FigureRule> rules, DayRange range, Notes& notes)
        : m_rules(std::move(rules)), m_range(range), m_notes(notes) {}

    /// A line about that day. @return false if the day isn't wanted
    bool See(const Moment& moment, long line);
    /// A figure of a day that was seen. @param isTotal it is that of the whole day, to which nothing is added
    void Take(std::size_t figure, const Moment& moment, double value, long line, bool isTotal = false);

    const std::map<int, DayEntry>& Days() const { return m_days; }
    const DayRange& Range() const { return m_range; }
    long Rows() const { return m_rows; }       ///< that were seen
    long Outside() const { return m_outside; } ///< rows of days that aren't wanted

private:
    std::vector<FigureRule> m_rules;
    DayRange m_range;
    Notes& m_notes;
    std::map<int, DayEntry> m_days;
    std::pair<const int, DayEntry>* m_latest = nullptr; ///< where the next row mostly belongs
    long m_rows = 0;
    long m_outside = 0;
};

} // namespace melkar::importer
