#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/cstring.h>
#include <MelkarCommon/platform/types.h>

/// @file
/// Moments.

/// A day and a time of day. Valid years are 100 to 9999.
class MELKAR_API COleDateTime {
public:
    /// Sets the moment. @return 0, or 1 if there is no such moment; the object is invalid then.
    int SetDateTime(int year, int month, int day, int hour, int minute, int second);
    /// Takes a moment of the platform; invalid if there is no such one.
    COleDateTime& operator=(const SYSTEMTIME& time);

    bool IsValid() const { return m_valid; } ///< whether it holds a moment
    int GetDayOfWeek() const;                ///< 1 is Sunday, 7 Saturday; 0 if invalid

    /// Formats with a `strftime` pattern, as the locale of the process stands. A result above 64 KiB, and an invalid
    /// moment, give the empty string.
    CString Format(const char* pattern) const;

private:
    bool m_valid = false;
    int m_year = 0;
    int m_month = 0;
    int m_day = 0;
    int m_hour = 0;
    int m_minute = 0;
    int m_second = 0;
};

/// The machine's local time.
MELKAR_API void GetLocalTime(SYSTEMTIME* time);
