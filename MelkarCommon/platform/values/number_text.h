#pragma once

#include <cstdint>
#include <string>

/// @file
/// Internal. Numbers as pages and records have them, in any locale.

namespace melkar {

/// Appends a length: at most three decimals, no zeros at their end, no sign before a zero. What is no number, and what
/// is infinite, is told in words.
void AppendLength(std::string& text, double value);

/// Appends the last `digits` hexadecimal digits. @param letters the sixteen to write with
void AppendHex(std::string& text, std::uint32_t value, int digits, const char* letters);

inline constexpr const char* kLargeHex = "0123456789ABCDEF";
inline constexpr const char* kSmallHex = "0123456789abcdef";

} // namespace melkar
