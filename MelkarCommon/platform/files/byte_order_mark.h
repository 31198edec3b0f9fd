#pragma once

#include <string_view>

/// @file
/// Internal. What may stand before the first character of a text file.

namespace melkar {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

constexpr std::string_view WithoutByteOrderMark(std::string_view text) {
    return text.starts_with(kByteOrderMark) ? text.substr(kByteOrderMark.size()) : text;
}

} // namespace melkar
