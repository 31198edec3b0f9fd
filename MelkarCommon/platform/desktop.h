#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/types.h>

/// @file
/// What the desktop is asked for: its work area, names of days.

/// Answers `SPI_GETWORKAREA`: stores the desktop's work area, as `SetWorkArea` set it, in the RECT that
/// `data` points to. @return TRUE; FALSE for another query or a null pointer.
MELKAR_API BOOL SystemParametersInfoA(UINT query, UINT parameter, void* data, UINT flags);

/// Abbreviated day names (`LOCALE_SABBREVDAYNAME1` is Monday) in the locale of the environment.
/// @return the bytes stored with the NUL, or 0 for another query or a buffer that is too small;
/// with a size of 0 the room that is needed.
MELKAR_API int GetLocaleInfoA(DWORD locale, DWORD query, char* buffer, int size);
