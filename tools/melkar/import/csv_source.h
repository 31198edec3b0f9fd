#pragma once

#include "csv_rows.h"
#include "figures.h"
#include "moments.h"
#include "notes.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

/// @file
/// Rows with named columns: what is read of them is a moment and figures.

namespace melkar::importer {

/// How a file of rows is read.
struct CsvReading {
    std::string path;
    std::string date;                 ///< column of the moment
    std::vector<std::string> figures; ///< columns of figures
    MomentFormat format = MomentFormat::Usual();
    std::optional<Decimals> decimals; ///< told; else each column is looked through
};

class CsvSource {
public:
    /// Gets a row: its moment, and of each column the figure that stands there.
    using Sink = std::function<void(const Moment&, std::span<const std::optional<double>>, long line)>;

    /// Finds delimiter and columns by the head row, and looks through the figures. Throws `Refusal` if that fails.
    CsvSource(CsvReading reading, Notes& notes);

    /// As the head row has it in brackets behind the name, "weight (lb)"; empty if it hasn't.
    const std::string& UnitOf(std::size_t figure) const { return m_figures[figure].unit; }
    void Read(const Sink& sink);

private:
    struct Column {
        std::size_t index = 0;
        std::string name;
        std::string unit;
        Decimals decimals = Decimals::Point;
    };

    bool FindColumns(const std::vector<std::string>& head);
    void Survey();
    std::optional<Moment> MomentOf(const CsvRows& rows);
    void TakeRow(const CsvRows& rows, const Sink& sink);
    std::string WhyNotARow(const CsvRows& rows) const;

    CsvReading m_reading;
    Notes& m_notes;
    char m_delimiter = ',';
    std::size_t m_width = 0; ///< columns of the head row
    Column m_date;
    std::vector<Column> m_figures;
    std::vector<std::optional<double>> m_values; ///< of the row at hand
    bool m_hasToldOfUtc = false;
};

} // namespace melkar::importer
