#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/types.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// @file
/// Reads of profile files: sections in brackets, one "key = value" a line. Sections and keys match in
/// any case; blanks around names and values are dropped, one pair of quotes around a value is removed,
/// lines that begin with a semicolon are ignored, the first of equal sections and keys counts. CR LF,
/// a byte order mark and a missing last line feed are ordinary.

namespace melkar {

/// One profile file as it stood when it was read: for many reads in one pass. A section is taken apart
/// when it is first asked for a key, so a snapshot serves one thread at a time.
class ProfileSnapshot {
public:
    /// Reads the whole file; a missing or unreadable one gives an empty snapshot.
    explicit ProfileSnapshot(const char* path);
    ProfileSnapshot(const ProfileSnapshot&) = delete;
    ProfileSnapshot& operator=(const ProfileSnapshot&) = delete;

    /// The value as it stands in the file, null if there is no such key. Valid as long as the snapshot.
    const std::string* Find(std::string_view section, std::string_view key) const;
    bool HasSection(std::string_view section) const;
    bool IsRead() const { return m_isRead; } ///< false if the file couldn't be read
    const std::string& Path() const { return m_path; }

private:
    struct Entry {
        std::string_view key;
        std::string value;
    };
    struct Section {
        void Split();

        std::string_view unsplit; ///< its lines, until it is first asked for a key
        std::vector<Entry> entries;
    };

    std::string m_path;
    bool m_isRead = false;
    std::string m_text;                                          ///< keys and sections point into it
    mutable std::unordered_map<std::string, Section> m_sections; ///< by name in lower case
};

/// The integer that a profile value stands for: leading blanks, a sign, decimal digits; what follows
/// is ignored, a value without digits is 0, one beyond 32 bits becomes the nearest bound. An empty
/// value stands for `fallback`.
int ProfileInt(const std::string* value, int fallback);

} // namespace melkar

/// Copies the key's value, or `fallback` if there is none, into `buffer`, cut to `size` - 1 bytes and
/// NUL-terminated. Each call reads the file. @return the number of bytes copied without the NUL.
MELKAR_API DWORD GetPrivateProfileStringA(const char* section, const char* key, const char* fallback, char* buffer,
                                          DWORD size, const char* path);
/// The key's value as an integer, or `fallback` if there is no such key. Each call reads the file.
MELKAR_API int GetPrivateProfileIntA(const char* section, const char* key, int fallback, const char* path);
