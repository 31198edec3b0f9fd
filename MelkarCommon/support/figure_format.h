#pragma once

#include <MelkarCommon/platform/cstring.h>

/// @file
/// Formats of figures that come from a profile. A profile is data: a format is used only if it can do no harm.

namespace melkar {

/// Whether a `printf` format holds exactly one conversion of a double (e, f, g or a, in either case, with flags, a
/// width up to 99 and a precision up to 30) and beside it only text and "%%".
bool IsFigureFormat(const char* format);

/// A format that was looked at once and then serves any number of figures. An empty one shows nothing; a hostile one
/// leaves a line in the log and `fallback` stands in.
class FigureFormat {
public:
    FigureFormat(CString format, const char* fallback);
    CString Of(double value) const; ///< the same whatever locale the host has set

private:
    CString m_format;
};

} // namespace melkar
