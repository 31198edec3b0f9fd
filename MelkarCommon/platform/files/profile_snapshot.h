#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// @file
/// A profile read in one pass; what stands in such a file is told in platform/profile.h.

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
