#pragma once

#include <MelkarCommon/platform/cstring.h>

namespace melkar {

constexpr const char* kSystemProfile = "..\\conf\\config.cnf"; ///< formats of dates, and whether to print in colour

/// The format that `FormatDateEx` uses for `key`: for many dates in one go.
CString DateFormat(const char* key);

} // namespace melkar
