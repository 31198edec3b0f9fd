#include <MelkarCommon/checker/placed_profile.h>

#include <MelkarCommon/platform/files/byte_order_mark.h>
#include <MelkarCommon/platform/files/paths.h>
#include <MelkarCommon/platform/files/profile_lines.h>

#include <algorithm>
#include <sstream>
#include <utility>

namespace melkar {

const ProfileEntry* ProfileSection::Find(std::string_view key) const {
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const ProfileEntry& entry) { return EqualNoCase(entry.key, key); });
    return found != entries.end() ? &*found : nullptr;
}

const ProfileSection* PlacedProfile::Find(std::string_view name) const {
    const auto found = std::find_if(m_sections.begin(), m_sections.end(), [&](const ProfileSection& section) {
        return section.line > 0 && EqualNoCase(section.name, name);
    });
    return found != m_sections.end() ? &*found : nullptr;
}

PlacedProfile::PlacedProfile(const std::string& path)
    : m_path(path), m_text(ReadWholeFile(HostPath(path.c_str()), &m_isRead)) {
    m_sections.emplace_back();
    std::string_view rest = WithoutByteOrderMark(m_text);
    for (int number = 1; !rest.empty(); ++number) {
        const char* start = rest.data();
        const std::string_view line = melkar::TakeLine(rest);
        if (!line.empty())
            TakeLine(line, number, static_cast<int>(line.data() - start) + 1);
    }
}

void PlacedProfile::TakeLine(std::string_view line, int number, int column) {
    if (line.front() == ';')
        return TakeComment(line.substr(1));
    if (!m_pending.empty()) {
        const bool isBehindHead = m_sections.back().entries.empty() && line.front() != '[';
        m_lines[isBehindHead ? m_sections.back().line : number].merge(m_pending);
        m_pending.clear();
    }
    if (line.front() == '[') {
        m_sections.push_back({SectionName(line), number, {}});
        if (line.find(']') == std::string_view::npos)
            m_oddLines.push_back({number, line});
        return;
    }
    const auto entry = SplitProfileLine(line);
    if (!entry) {
        m_oddLines.push_back({number, line});
        return;
    }
    const auto columnOf = [&](std::string_view part) { return column + static_cast<int>(part.data() - line.data()); };
    m_sections.back().entries.push_back(
        {entry->key, entry->value, number, columnOf(entry->key), columnOf(entry->value)});
}

/// Such as " melkar: allow color number".
void PlacedProfile::TakeComment(std::string_view comment) {
    std::istringstream words{std::string(comment)};
    std::string word;
    if (words >> word && word == "melkar:" && words >> word && word == "allow")
        while (words >> word)
            m_pending.insert(word);
}

bool PlacedProfile::Allows(const std::string& rule, int line) const {
    int head = 0;
    for (const ProfileSection& section : m_sections)
        if (section.line <= line)
            head = section.line;
    const auto holds = [&](int at) {
        const auto found = m_lines.find(at);
        return found != m_lines.end() && found->second.contains(rule);
    };
    return holds(line) || holds(head);
}

} // namespace melkar
