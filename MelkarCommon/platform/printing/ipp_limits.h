#pragma once

#include <chrono>
#include <cstddef>

/// @file
/// Internal. What a host spends on a print server at most, whatever that does.

namespace melkar {

using Clock = std::chrono::steady_clock;

struct IppLimits {
    std::chrono::milliseconds exchange{15'000}; ///< from looking a name up to the last byte of the answer
    std::chrono::milliseconds document{45'000}; ///< all exchanges about one
    std::chrono::milliseconds watch{2'000};     ///< on what becomes of a job that the server has taken
    std::size_t answer = std::size_t{4} << 20;  ///< bytes; a thousand kinds of sheets take a tenth of it
};

} // namespace melkar
