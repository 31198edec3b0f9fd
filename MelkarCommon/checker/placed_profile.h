#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// @file
/// Internal. A profile with the places where its keys stand. Sections, keys and values are those that graphs read.

namespace melkar {

/// A key as it stands in the file. Lines and columns count from 1; a column is a byte.
struct ProfileEntry {
    std::string_view key;
    std::string_view value; ///< without blanks and quotes around it
    int line;
    int keyColumn;
    int valueColumn;
};

struct ProfileSection {
    std::string_view name; ///< empty of what stands before the first section
    int line = 0;
    std::vector<ProfileEntry> entries;

    /// The first of that name, which counts; null if there is none.
    const ProfileEntry* Find(std::string_view key) const;
};

/// A line that says nothing to a graph, and isn't meant as a comment.
struct OddLine {
    int line;
    std::string_view text;
};

class PlacedProfile {
public:
    /// Reads the file; a missing or unreadable one has no sections.
    explicit PlacedProfile(const std::string& path);
    PlacedProfile(const PlacedProfile&) = delete;
    PlacedProfile& operator=(const PlacedProfile&) = delete;

    bool IsRead() const { return m_isRead; }
    bool HasZeros() const { return m_text.find('\0') != std::string::npos; }
    const std::string& Path() const { return m_path; }
    const std::string& Text() const { return m_text; }
    /// In the order of the file, with that before the first one.
    const std::vector<ProfileSection>& Sections() const { return m_sections; }
    /// The first of that name, which counts; null if there is none.
    const ProfileSection* Find(std::string_view name) const;
    const std::vector<OddLine>& OddLines() const { return m_oddLines; }
    /// Whether a comment silences the rule there.
    bool Allows(const std::string& rule, int line) const;

private:
    void TakeLine(std::string_view line, int number, int column);
    void TakeComment(std::string_view comment);

    using Rules = std::set<std::string, std::less<>>;
    std::string m_path;
    bool m_isRead = false;
    std::string m_text; ///< all views are of it
    std::vector<ProfileSection> m_sections;
    std::vector<OddLine> m_oddLines;
    Rules m_pending;              ///< of comments before the line to come
    std::map<int, Rules> m_lines; ///< silenced there; at the head of a section, or right behind it: in all of it
};

} // namespace melkar
