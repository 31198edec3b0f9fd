#pragma once

#include <MelkarCommon/platform/cstring.h>

namespace melkar {

/// The format that `FormatDateEx` uses for `key`: for many dates in one go.
CString DateFormat(const char* key);

} // namespace melkar
