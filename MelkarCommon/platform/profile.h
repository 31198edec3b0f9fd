#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/types.h>

/// @file
/// Reads of profile files: sections in brackets, one "key = value" a line. Sections and keys match in
/// any case; blanks around names and values are dropped, one pair of quotes around a value is removed,
/// lines that begin with a semicolon are ignored, the first of equal sections and keys counts. CR LF,
/// a byte order mark and a missing last line feed are ordinary. A relative path counts from the current directory of
/// the process, or from that of a `melkar::HostDirectory`.

/// Copies the key's value, or `fallback` if there is none, into `buffer`, cut to `size` - 1 bytes and
/// NUL-terminated. Each call reads the file. @return the number of bytes copied without the NUL.
MELKAR_API DWORD GetPrivateProfileStringA(const char* section, const char* key, const char* fallback, char* buffer,
                                          DWORD size, const char* path);
/// The key's value as an integer, or `fallback` if there is no such key. Each call reads the file.
MELKAR_API int GetPrivateProfileIntA(const char* section, const char* key, int fallback, const char* path);
