#include "figures.h"

#include "notes.h"

#include <charconv>
#include <cmath>
#include <iterator>

namespace melkar::importer {
namespace {

constexpr std::string_view kBlank = " ";
constexpr std::string_view kApostrophe = "'";
constexpr std::string_view kNoBreak = "\xC2\xA0";
constexpr std::string_view kThinNoBreak = "\xE2\x80\xAF";

bool IsDigit(char letter) { return letter >= '0' && letter <= '9'; }

/// Takes one mark that may stand between thousands.
bool TakeSeparator(std::string_view& text, Decimals decimals) {
    const std::string_view other = decimals == Decimals::Point ? "," : ".";
    for (const std::string_view mark : {other, kBlank, kApostrophe, kNoBreak, kThinNoBreak})
        if (text.starts_with(mark)) {
            text.remove_prefix(mark.size());
            return true;
        }
    return false;
}

std::size_t TakeDigits(std::string_view& text, std::string& number) {
    std::size_t count = 0;
    while (count < text.size() && IsDigit(text[count]))
        ++count;
    number.append(text.substr(0, count));
    text.remove_prefix(count);
    return count;
}

/// Whole digits, with or without marks between groups of three.
bool TakeWhole(std::string_view& text, Decimals decimals, std::string& number) {
    constexpr std::size_t kGroup = 3;
    const std::size_t first = TakeDigits(text, number);
    if (first == 0 || first > kGroup)
        return first > 0;
    while (TakeSeparator(text, decimals))
        if (TakeDigits(text, number) != kGroup)
            return false;
    return true;
}

void TakeExponent(std::string_view& text, std::string& number) {
    if (text.empty() || (text.front() != 'e' && text.front() != 'E'))
        return;
    number += 'e';
    text.remove_prefix(1);
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        if (text.front() == '-')
            number += '-';
        text.remove_prefix(1);
    }
    TakeDigits(text, number);
}

} // namespace

std::optional<double> ReadFigure(std::string_view text, Decimals decimals) {
    std::string number;
    if (text.starts_with('-'))
        number = "-";
    if (text.starts_with('-') || text.starts_with('+'))
        text.remove_prefix(1);
    if (!TakeWhole(text, decimals, number))
        return std::nullopt;
    if (text.starts_with(decimals == Decimals::Point ? '.' : ',')) {
        text.remove_prefix(1);
        number += '.';
        if (TakeDigits(text, number) == 0)
            return std::nullopt;
    }
    TakeExponent(text, number);
    double value = 0;
    const char* const end = number.data() + number.size();
    const auto [stop, error] = std::from_chars(number.data(), end, value);
    if (!text.empty() || error != std::errc() || stop != end || !(std::abs(value) <= kMostFigure))
        return std::nullopt;
    return value;
}

std::string ShowFigure(double value) {
    constexpr int kDecimals = 3;
    char text[512]; // the largest sum has 309 digits
    std::string figure(text, std::to_chars(text, std::end(text), value, std::chars_format::fixed, kDecimals).ptr);
    figure.erase(figure.find_last_not_of('0') + 1);
    if (figure.back() == '.')
        figure.pop_back();
    return figure == "-0" ? "0" : figure;
}

void DecimalSurvey::Look(std::string_view text, long line) {
    const auto point = ReadFigure(text, Decimals::Point);
    const auto comma = ReadFigure(text, Decimals::Comma);
    if (point == comma) // the same, or no figure at all
        return;
    if (!comma && m_point == 0)
        m_point = line;
    if (!point && m_comma == 0)
        m_comma = line;
    if (point && comma) {
        m_doubtHasComma |= text.find(',') != std::string_view::npos;
        if (m_doubt == 0)
            m_doubtful = text;
        m_doubt = m_doubt == 0 ? line : m_doubt;
    }
}

Decimals DecimalSurvey::Answer(const std::string& name, bool columnsHaveCommas) const {
    if (m_point > 0 && m_comma > 0)
        throw Refusal("column \"" + name + "\" has decimal points (line " + std::to_string(m_point) +
                      ") and decimal commas (line " + std::to_string(m_comma) + "); --decimal tells which holds");
    if (m_comma > 0)
        return Decimals::Comma;
    const bool isPlain = columnsHaveCommas && !m_doubtHasComma;
    if (m_point == 0 && m_doubt > 0 && !isPlain)
        throw Refusal("column \"" + name + "\", line " + std::to_string(m_doubt) + ": " + m_doubtful +
                      " may be one or a thousand, and nothing else in the column says; --decimal point or comma does");
    return Decimals::Point;
}

} // namespace melkar::importer
