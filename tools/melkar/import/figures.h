#pragma once

#include <optional>
#include <string>
#include <string_view>

/// @file
/// Figures as people's programs write them: 1234.5, 1,234.5, 1.234,5, 1 234,5, 1'234.5, 1.2e3.

namespace melkar::importer {

/// What stands before the decimals.
enum class Decimals { Point, Comma };

constexpr double kMostFigure = 1e9; ///< what is beyond is a slip, or an identifier

/// None if the text isn't a figure in that style; groups of thousands have three digits.
std::optional<double> ReadFigure(std::string_view text, Decimals decimals);

/// Up to three decimals, as many as there are.
std::string ShowFigure(double value);

/// Finds out how a column writes its decimals. A figure such as 1,234 may be one or a thousand: it proves nothing, and
/// a column of nothing else is for a person to judge.
class DecimalSurvey {
public:
    void Look(std::string_view text, long line);

    /// @param columnsHaveCommas between them, so that a point before three digits stands before decimals
    /// Throws `Refusal` if the column has both styles, or doubt. @param name of the column, for that
    Decimals Answer(const std::string& name, bool columnsHaveCommas) const;
    long FirstComma() const { return m_comma; } ///< the line that proves decimal commas; 0: none

private:
    long m_point = 0; ///< first lines that prove, or leave in doubt
    long m_comma = 0;
    long m_doubt = 0;
    std::string m_doubtful;
    bool m_doubtHasComma = false;
};

} // namespace melkar::importer
