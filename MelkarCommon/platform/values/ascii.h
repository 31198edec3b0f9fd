#pragma once

#include <string_view>

/// @file
/// Internal. Bytes read as ASCII, whatever locale the host has set: blanks, case, whole numbers.

namespace melkar {

/// What `isspace` accepts in the "C" locale.
constexpr bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

constexpr char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

constexpr std::string_view TrimBlanks(std::string_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

constexpr bool EqualNoCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (LowerAscii(a[i]) != LowerAscii(b[i]))
            return false;
    return true;
}

/// `atoi`: leading blanks, a sign, digits; 0 if nothing parses, the nearest bound beyond 32 bits.
int ParseInt(std::string_view text);

} // namespace melkar
