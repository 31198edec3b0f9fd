#pragma once

#include <cstdint>
#include <span>
#include <vector>

/// @file
/// Internal. Codes of bits for symbols, fewer for those that are frequent, as compressed streams describe them.

namespace melkar {

struct PrefixCode {
    std::uint16_t bits = 0;  ///< its first bit is the lowest one
    std::uint8_t length = 0; ///< 0: the symbol doesn't occur
};

/// A code for each symbol. One that stands alone gets a bit of its own. @param counts how often each occurs, below 2^31
/// together @param longest the most bits that a code may have, 15 at most; enough for that many symbols
std::vector<PrefixCode> PrefixCodesFor(std::span<const std::uint32_t> counts, int longest);

} // namespace melkar
