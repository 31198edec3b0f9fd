#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// @file
/// A profile read in one pass; what stands in such a file is told in platform/profile.h.

namespace melkar {

/// One profile file as it stood when it was read.
struct ProfileFile {
    /// Reads the whole file; a missing or unreadable one gives an empty text.
    explicit ProfileFile(const char* path);

    std::string path;
    bool isRead = false; ///< false if the file couldn't be read
    std::string bytes;
};

/// What a graph wants of a profile, for many reads: the section of its own and COMMON. Nothing is kept of the others,
/// however many they are.
class ProfileSnapshot {
public:
    static constexpr std::string_view kCommon = "COMMON";

    ProfileSnapshot(const ProfileFile& file, std::string_view ownSection);

    /// The value as it stands in the file, null if there is no such key. Valid as long as the snapshot.
    const std::string* FindOwn(std::string_view key) const { return m_own.Find(key); }
    const std::string* FindCommon(std::string_view key) const { return m_common.Find(key); }
    bool HasOwn() const { return m_own.isThere; }
    bool IsOf(std::string_view ownSection) const { return m_ownName == ownSection; }
    std::size_t Size() const { return m_own.bytes + m_common.bytes; } ///< of what was kept, bytes
    bool IsRead() const { return m_isRead; }
    const std::string& Path() const { return m_path; }

private:
    struct Entry {
        std::string key;
        std::string value;
    };
    struct Section {
        void Take(std::string_view body);
        const std::string* Find(std::string_view key) const;

        bool isThere = false;
        std::size_t bytes = 0; ///< of its text
        std::vector<Entry> entries;
    };

    std::string m_path;
    bool m_isRead;
    std::string m_ownName;
    Section m_own;
    Section m_common;
};

/// Which of a thread's readings is kept until the next of its kind: none pushes out the other.
enum class ReadingFor : std::uint8_t { Graphs, Dates };

/// Reads a profile, unless this thread's last reading for that use was of the same section and the file is as it was:
/// the classes of one object read it once while the object is made, and draws read their format of dates when it
/// changes.
std::shared_ptr<const ProfileSnapshot> ReadProfile(const char* path, std::string_view ownSection,
                                                   ReadingFor use = ReadingFor::Graphs);

/// The next reading of this thread for that use goes to the file.
void ForgetProfile(ReadingFor use = ReadingFor::Graphs);

/// The integer that a profile value stands for: leading blanks, a sign, decimal digits; what follows
/// is ignored, a value without digits is 0, one beyond 32 bits becomes the nearest bound. An empty
/// value stands for `fallback`.
int ProfileInt(const std::string* value, int fallback);

} // namespace melkar
