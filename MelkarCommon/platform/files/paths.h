#pragma once

#include <string>

/// @file
/// Paths with backslashes, and files that are read whole.

namespace melkar {

/// The path itself if it has no backslash or if such a file exists as it stands, else the path with
/// slashes in place of the backslashes.
std::string ResolvePath(const char* path);

/// The whole of a regular file with no translation, or an empty text if it can't be read or has more than
/// 256 MiB; `found` (may be null) tells that from an empty file.
std::string ReadWholeFile(const char* path, bool* found);

} // namespace melkar
