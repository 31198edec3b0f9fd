#pragma once

#include <string>

/// @file
/// Paths with backslashes, and files that are read whole.

namespace melkar {

/// The path itself if it has no backslash or if such a file exists as it stands, else the path with
/// slashes in place of the backslashes, as always for one that leads to the directory above ("..\name"). A relative one
/// counts from `directory`, unless that is empty.
std::string ResolvePath(const char* path, const std::string& directory = "");

/// The same of a profile or a log, which this thread may find from a directory of its own (host_directory.h).
std::string HostPath(const char* path);

/// The whole of a regular file, at the path as it stands, with no translation, or an empty text if it can't be read or
/// has more than 256 MiB; `found` (may be null) tells that from an empty file.
std::string ReadWholeFile(const std::string& path, bool* found);

} // namespace melkar
