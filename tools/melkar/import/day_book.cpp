#include "day_book.h"

#include "figures.h"

namespace melkar::importer {

bool DayBook::See(const Moment& moment, long line) {
    ++m_rows;
    if (!m_range.Has(moment.day)) {
        ++m_outside;
        return false;
    }
    if (m_latest == nullptr || m_latest->first != moment.day)
        m_latest = &*m_days.try_emplace(moment.day, DayEntry{line, std::vector<DayFigure>(m_rules.size())}).first;
    return true;
}

void DayBook::Take(std::size_t figure, const Moment& moment, double value, long line, bool isTotal) {
    const FigureRule& rule = m_rules[figure];
    if (value < 0 && !rule.mayBeNegative)
        return m_notes.Skipped(line, rule.name + " below zero: " + ShowFigure(value));
    DayFigure& former = m_days.at(moment.day).figures[figure];
    const DayFigure one{value * rule.factor, 1, moment.second, line, isTotal};
    if (former.count == 0 || (isTotal && !former.isTotal)) {
        former = one;
    } else if (former.isTotal && !isTotal) {
        // It is in the total.
    } else if (rule.addsUp && !isTotal) {
        former.value += one.value;
        ++former.count;
        former.line = line;
    } else {
        const bool holds = moment.second >= former.second;
        m_notes.Skipped(holds ? former.line : line,
                        rule.name + " of " + ShowDay(moment.day) + " stands again on line " +
                            std::to_string(holds ? line : former.line) + ", and that one holds");
        if (holds)
            former = one;
    }
}

} // namespace melkar::importer
