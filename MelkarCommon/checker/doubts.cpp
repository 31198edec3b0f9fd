#include <MelkarCommon/checker/doubts.h>

#include <MelkarCommon/checker/doubter.h>
#include <MelkarCommon/platform/values/ascii.h>
#include <MelkarCommon/telling/words.h>

#include <algorithm>
#include <set>
#include <string>

namespace melkar {

namespace {

constexpr const char* kCommon = "COMMON";

/// What is looked at, from the least that a graph can read to the looks of its picture.
constexpr void (*kPasses[])(const SectionReading& reading, PictureSize size, Doubter& doubter) = {
    DoubtKeys, DoubtMissing, DoubtValues, DoubtScales, DoubtBoxes, DoubtColors, DoubtFaces,
};

/// Sections that graphs are made with. Descriptions of pictures have one of their own, where no key is needed.
bool IsOfGraph(std::string_view name) {
    return !EqualNoCase(name, kCommon) && !EqualNoCase(name, DescriptionWords::kSection);
}

/// Sections of the file of an application's settings, whose keys are named by others.
bool IsOfSettings(std::string_view name) { return EqualNoCase(name, "SYSTEM") || EqualNoCase(name, "OTHER"); }

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), LowerAscii);
    return lower;
}

/// One look through a profile.
class Look {
public:
    Look(const PlacedProfile& file, const ProfileUse& use) : m_file(file), m_use(use), m_doubter(file) {}

    std::vector<Doubt> Doubts() {
        if (!m_file.IsRead())
            m_doubter.Tell("unreadable", 0, 0, "can't be read");
        else if (m_file.HasZeros())
            m_doubter.Tell("bytes", 0, 0, "holds bytes of value 0: is it UTF-16, or no text at all?");
        else
            LookThrough();
        return m_doubter.Take();
    }

private:
    void LookThrough() {
        DoubtLines();
        DoubtNames();
        if (const ProfileSection* common = m_file.Find(kCommon))
            DoubtCommon(*common, m_doubter);
        if (!m_use.section.empty() && !m_file.Find(m_use.section))
            m_doubter.Tell("no-section", 0, 0, "no section " + InBrackets(m_use.section));
        for (const ProfileSection& section : m_file.Sections())
            if (IsLookedAt(section) && m_file.Find(section.name) == &section && IsOfGraph(section.name))
                LookAt(section);
    }

    /// COMMON goes along with every section.
    bool IsLookedAt(const ProfileSection& section) const {
        return m_use.section.empty() || EqualNoCase(section.name, m_use.section) ||
               EqualNoCase(section.name, kCommon) || section.line == 0;
    }

    void DoubtLines() {
        const auto& sections = m_file.Sections();
        for (const OddLine& odd : m_file.OddLines()) {
            const auto behind = std::find_if(sections.begin(), sections.end(),
                                             [&](const ProfileSection& section) { return section.line > odd.line; });
            if (IsLookedAt(*(behind - 1)))
                m_doubter.Tell("line-form", odd.line, 0, Advice(odd.text));
        }
    }

    static std::string Advice(std::string_view text) {
        if (text.front() == '[')
            return "no bracket closes the name of the section: " + Quoted(text);
        if (text.front() == '#' || text.starts_with("//"))
            return "a comment begins with a semicolon: " + Quoted(text);
        if (text.find(':') != std::string_view::npos)
            return "not KEY=VALUE: " + Quoted(text) + "; an equals sign stands between them";
        return "neither a comment nor [SECTION] nor KEY=VALUE: " + Quoted(text);
    }

    void DoubtNames() {
        std::set<std::string> sections;
        for (const ProfileSection& section : m_file.Sections()) {
            if (!IsLookedAt(section))
                continue;
            if (section.line > 0 && !sections.insert(Lower(section.name)).second)
                m_doubter.Tell("double-section", section.line, 0,
                               InBrackets(section.name) +
                                   " stands above already, and counts there; this one isn't read");
            std::set<std::string> keys;
            for (const ProfileEntry& entry : section.entries) {
                if (section.line == 0)
                    m_doubter.TellKey("stray-key", entry, "stands before the first section");
                else if (!keys.insert(Lower(entry.key)).second)
                    m_doubter.TellKey("double-key", entry, "stands above already, and counts there");
            }
        }
    }

    void LookAt(const ProfileSection& section) {
        const KindRow* kind = m_use.kind.empty() ? GuessKind(section) : FindKind(m_use.kind);
        if (kind)
            return LookAt(section, *kind);
        if (!m_use.kind.empty())
            m_doubter.Tell("no-kind", 0, 0, "no kind of chart: " + m_use.kind);
        else if (!IsOfSettings(section.name))
            m_doubter.Tell("foreign-section", section.line, 0,
                           "no kind of chart reads a key of " + InBrackets(section.name));
    }

    void LookAt(const ProfileSection& section, const KindRow& kind) {
        std::vector<std::string> texts = TextKeysIn(section);
        if (!m_use.key.empty())
            texts.push_back(m_use.key);
        const KindKeys keys(kind, texts);
        if (keys.Rows().empty())
            return;
        if (!m_use.kind.empty() && IsOfOther(section, keys))
            return;
        const SectionReading reading(m_file, &section, keys);
        if (!m_file.Find(kCommon) && NeedsCommon(keys))
            m_doubter.Tell("missing-common", section.line, 0,
                           "there is no section [COMMON], whose keys all graphs read");
        for (const auto pass : kPasses)
            pass(reading, {m_use.width, m_use.height}, m_doubter);
    }

    /// A section that hardly has a key of the kind that it is to be drawn as.
    bool IsOfOther(const ProfileSection& section, const KindKeys& keys) {
        const auto isRead = [&](const ProfileEntry& entry) {
            return keys.RowOf(KeySection::Own, entry.key) != nullptr;
        };
        const auto read = std::count_if(section.entries.begin(), section.entries.end(), isRead);
        const KindRow* other = 2 * read < static_cast<long>(section.entries.size()) ? GuessKind(section) : nullptr;
        if (!other || other->kind == keys.Kind())
            return false;
        m_doubter.Tell("other-kind", section.line, 0,
                       InBrackets(section.name) + " has the keys of kind " + other->kind + ", not of " + keys.Kind());
        return true;
    }

    static bool NeedsCommon(const KindKeys& keys) {
        return std::any_of(keys.Rows().begin(), keys.Rows().end(),
                           [&](const KeyInfo& row) { return row.section == KeySection::Common && keys.Needs(row); });
    }

    const PlacedProfile& m_file;
    const ProfileUse& m_use;
    Doubter m_doubter;
};

} // namespace

std::vector<Doubt> Doubts(const std::string& path, const ProfileUse& use) {
    const PlacedProfile file(path.empty() ? kGraphProfile : path);
    return Look(file, use).Doubts();
}

std::vector<Doubt> Doubts(const std::string& path, const std::string& section, const std::string& kind) {
    ProfileUse use;
    use.section = section;
    use.kind = kind;
    return Doubts(path, use);
}

} // namespace melkar
