#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

/// @file
/// Internal. Figures as nearly all are written, read without the ways that others need.

namespace melkar {

inline bool EndsField(char c) { return c == ',' || c == '\n' || c == '\0'; }

/// Takes the digits at `field`. More than 19 of them overflow, which is for the caller to see by their number.
inline std::uint64_t TakeDigits(const char*& field, std::uint64_t number) {
    for (unsigned digit = 0; (digit = static_cast<unsigned char>(*field) - unsigned{'0'}) <= 9; ++field)
        number = number * 10 + digit;
    return number;
}

inline constexpr std::ptrdiff_t kExactDigits = 15;
inline constexpr double kPowers[] = {1,   1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                     1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

/// The value of a field of plain digits with at most one point, or of an empty one, as nearly all are; not a number for
/// any other field. Whole number and power of ten are exact, so that their quotient is the nearest double, as of any
/// other way of reading.
inline double PlainDecimal(const char* field) {
    const char* at = field;
    std::uint64_t number = TakeDigits(at, 0);
    std::ptrdiff_t digits = at - field;
    std::ptrdiff_t decimals = 0;
    if (*at == '.') {
        const char* point = at++;
        number = TakeDigits(at, number);
        decimals = at - point - 1;
        digits += decimals;
    }
    if (digits > kExactDigits || !EndsField(*at) || (digits == 0 && at != field))
        return std::numeric_limits<double>::quiet_NaN();
    return static_cast<double>(static_cast<std::int64_t>(number)) / kPowers[decimals];
}

} // namespace melkar
