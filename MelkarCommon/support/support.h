#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/cstring.h>
#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/types.h>

/// @file
/// The free functions that every graph leans on: profile values, number and date text, point sizes, the basic
/// shapes. Fields are in fields.h, the log in ring_log.h.

// Profile values. A missing file or key gives the default of the call.

/// Colour from the three keys `key`_R, _G and _B, the low 8 bits of each; a missing one is 0.
MELKAR_API unsigned long GetRGB(const char* file, const char* section, const char* key);
/// Colour from one key of three numbers with commas between them, the low 8 bits of each; fewer than two commas give
/// `fallback`.
MELKAR_API unsigned long GetRGBEx(const char* file, const char* section, const char* key, unsigned long fallback);
/// Point from one key of two numbers with a comma between them; (0, 0) without a comma.
MELKAR_API POINT GetPOINT(const char* file, const char* section, const char* key);

// Number and date text

/// The number truncated to a whole one if `decimals` is below 1, else rounded to that many decimals.
MELKAR_API CString getDecimalNumber(const char* number, int decimals);

/// Formats a date YYYYMMDD (what follows the eighth character is ignored) with a `strftime` pattern in the named
/// locale, with an empty name as the process stands. A shorter text, and eight characters that are no day, come back
/// unchanged. With a locale name the locale of the process is "C" afterwards.
MELKAR_API CString FormatDate(CString date, CString format, CString locale);
/// The same with the format under `key` in section SYSTEM of "..\conf\config.cnf"; "%m/%d/%Y" without such a key. At
/// most 99 bytes of it count.
MELKAR_API CString FormatDateEx(CString date, CString key, CString locale);

/// `MulDiv`, with 11 in place of a size that is 0 or negative.
MELKAR_API int ChartMulDiv(int size, int numerator, int denominator);

// Basic shapes

/// A rectangle with an inside frame of `lineWidth`. @return 0; -1 with nothing drawn if the right edge or the top is
/// negative, left equals right or top equals bottom.
MELKAR_API int DrawRectangle(HDC surface, RECT rect, unsigned long fill, unsigned long line, int lineWidth);
/// The outline only; `fill` colours nothing. @return 0.
MELKAR_API int DrawTransParentRectangle(HDC surface, RECT rect, unsigned long fill, unsigned long line, int lineWidth);
/// A line that leaves out its end point, with `pen` or, if it is null, the surface's pen. @return 0.
MELKAR_API int DrawLine(HDC surface, CPoint from, CPoint to, HPEN pen);
