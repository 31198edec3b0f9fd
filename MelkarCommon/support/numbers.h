#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/cstring.h>

/// @file
/// Figures stay text from the file to the drawing; these read and write them, the same whatever locale
/// the host has set.

namespace melkar {

/// `atof` of the "C" locale: leading blanks, sign, digits, exponent, inf, nan; 0 if nothing parses, the
/// infinities beyond the range. Null counts as empty.
MELKAR_API double ToDouble(const char* text);

/// `atoi`: leading blanks, sign, digits; 0 if nothing parses, the nearest bound beyond 32 bits.
MELKAR_API int ToInt(const char* text);

/// Truncates towards zero; not a number gives 0, what lies beyond 32 bits the nearest bound.
MELKAR_API int Truncate(double value);

/// "%.*f" of the value with 0 to 30 decimals (others are cut to that range).
MELKAR_API CString FormatFixed(double value, int decimals);

/// The shortest text that reads as that number: "78.6", which a file has said.
MELKAR_API CString FormatShortest(float value);

} // namespace melkar
