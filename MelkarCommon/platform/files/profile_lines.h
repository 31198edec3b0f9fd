#pragma once

#include <MelkarCommon/platform/values/ascii.h>

#include <optional>
#include <string_view>

/// @file
/// Internal. What the single lines of a profile are, for who reads its values and who tells of its lines.

namespace melkar {

/// Cuts the first line off `rest`. @return it without blanks at its ends, so without a carriage return, too.
inline std::string_view TakeLine(std::string_view& rest) {
    const std::size_t end = rest.find('\n');
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return TrimBlanks(line);
}

/// The name in a line that begins with a bracket; it goes to the end of the line if no bracket closes it.
inline std::string_view SectionName(std::string_view header) {
    return TrimBlanks(header.substr(1, header.find(']') - 1));
}

inline std::string_view WithoutQuotes(std::string_view value) {
    const bool isQuoted =
        value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
    return isQuoted ? value.substr(1, value.size() - 2) : value;
}

struct KeyAndValue {
    std::string_view key;
    std::string_view value;
};

/// Nothing for a comment and for a line without a key.
inline std::optional<KeyAndValue> SplitProfileLine(std::string_view line) {
    const std::size_t equals = line.find('=');
    if (line.starts_with(';') || equals == std::string_view::npos || equals == 0)
        return std::nullopt;
    return KeyAndValue{TrimBlanks(line.substr(0, equals)), WithoutQuotes(TrimBlanks(line.substr(equals + 1)))};
}

} // namespace melkar
