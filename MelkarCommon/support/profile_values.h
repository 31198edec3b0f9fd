#pragma once

#include <MelkarCommon/platform/cstring.h>
#include <MelkarCommon/platform/types.h>

#include <string>
#include <string_view>

/// @file
/// What values of a profile stand for that was read already.

namespace melkar {

/// The colour, as `GetRGBEx` reads it; at most 1023 bytes count.
COLORREF ParseColor(const char* value, COLORREF fallback);
/// The point, as `GetPOINT` reads it.
POINT ParsePoint(std::string_view value);
/// The text, as `CIniReader::ReadString` gives it; null stands for a missing value.
CString ProfileText(const std::string* value, const char* fallback);

} // namespace melkar
