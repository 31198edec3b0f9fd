#pragma once

#include <MelkarCommon/api.h>

/// @file
/// The ring log: a file of fixed-length records that never grows beyond 12200132 bytes. Offsets: 0 the counter of
/// the record last written (8 digits, CR LF); 10 + 122 x (k - 1) record k, 120 bytes padded with NUL, CR LF; behind
/// the last record an end mark of 119 "=" and a NUL, CR LF. After record 100000 comes record 1. A line is cut into
/// pieces of 120 bytes; only the first carries the time stamp.
///
/// @code{.cpp}
/// writeLog(kLogFile, "%d days imported", 31);
/// @endcode

/// The log of all graphs, relative to the current directory of the process or to that of a `melkar::HostDirectory`.
inline constexpr const char* kLogFile = "..\\log\\graph.log";

/// Writes a line "[date time]  text"; the text is cut to 3999 bytes. Processes and threads that write at once wait
/// for each other. One that holds the log and writes nothing is waited for a fifth of a second; a thread that waited in
/// vain doesn't wait again for ten seconds. An empty file is a new log. @return 0; 1 if the file can't be opened, made
/// or locked; 0, with nothing written, if its head can't be read, or if it is a symlink to something without the head
/// of a log.
MELKAR_API int writeLog(const char* file, const char* format, ...) __attribute__((format(printf, 2, 3)));
/// Writes "CODE = [code]".
MELKAR_API int writeLogCode(const char* file, int code);

namespace melkar {
/// Whether the folder is there in which that log is kept: nothing makes it, and without it nothing is logged.
MELKAR_API bool HasLogFolder(const char* file = kLogFile);
/// Writes a line into the log of all graphs, taken as it is: text from files is never a format. The first of
/// those for which there is no descriptor left is written ahead of the next one. Keeps `errno`.
MELKAR_API void LogText(const char* text);
} // namespace melkar
