#pragma once

#include <array>
#include <charconv>
#include <cmath>
#include <string>

/// @file
/// Internal. Numbers as texts.

namespace melkar {

/// The shortest text that reads back as the number, in any locale; "null" for what isn't finite.
inline std::string NumberText(double value) {
    if (!std::isfinite(value))
        return "null";
    std::array<char, 32> text{};
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value);
    return std::string(text.data(), end);
}

} // namespace melkar
