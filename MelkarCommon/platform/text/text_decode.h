#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// @file
/// Internal. From bytes to characters: valid UTF-8 is UTF-8, other bytes are read in the code page of a character set.

namespace melkar {

/// Whether a byte of UTF-8 goes on with the character of the one before.
constexpr bool IsContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80; }

/// The length of the character at `i` of valid UTF-8.
std::size_t LengthAt(std::string_view utf8, std::size_t i);

/// Controls, and what Pango would take for the end of a paragraph: U+0085 (among U+0080 to U+009F), U+2028, U+2029.
bool IsControl(std::string_view character);

/// The longest head of `bytes` of at most `limit` bytes that cuts no character in two, in the reading that the
/// whole of `bytes` has under `charset`.
std::string_view CutBytes(std::string_view bytes, std::size_t limit, int charset);

/// `bytes` as valid UTF-8; what can't be read, and code points that are no characters, become U+FFFD.
std::string DecodeText(std::string_view bytes, int charset);

/// The same on one line, a blank for each control, cut to at most `limit` bytes: for titles, names and log lines.
std::string DecodeLine(std::string_view bytes, int charset, std::size_t limit);

} // namespace melkar
