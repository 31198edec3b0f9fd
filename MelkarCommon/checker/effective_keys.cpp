#include <MelkarCommon/checker/effective_keys.h>

#include <MelkarCommon/checker/placed_profile.h>
#include <MelkarCommon/checker/section_reading.h>

#include <algorithm>
#include <set>
#include <string_view>

namespace melkar {

namespace {

constexpr const char* kCommon = "COMMON";

/// As many lines of a text, with their ends.
std::size_t LengthOfLines(std::string_view text, int lines) {
    std::size_t end = 0;
    for (; lines > 0 && end < text.size(); --lines) {
        const std::size_t feed = text.find('\n', end);
        end = feed == std::string_view::npos ? text.size() : feed + 1;
    }
    return end;
}

std::string ColorText(COLORREF color) {
    if (color == kNoColor)
        return "none";
    const auto channel = [color](unsigned shift) { return std::to_string(color >> shift & 0xFFU); };
    return channel(0) + "," + channel(8) + "," + channel(16);
}

/// The numbers of a row that are worth a look.
std::set<int> NumbersOf(const SectionReading& reading, const KeyInfo& row) {
    std::set<int> numbers{row.firstIndex};
    if (std::string_view(row.name).find("%d") == std::string_view::npos)
        return numbers;
    for (const auto& [number, entry] : reading.EntriesOf(row)) {
        numbers.insert(number);
        numbers.insert(number + 1);
    }
    for (int number = 0; row.firstIndex == 0 && number < kMostCounted; ++number)
        numbers.insert(number);
    return numbers;
}

/// What the keys of a section come to, one after the other.
class Effects {
public:
    Effects(const std::string& path, const std::string& section, const SectionReading& reading)
        : m_reader(path.c_str(), section.c_str()), m_section(section), m_reading(reading) {}

    void Add(const KeyInfo& row, int number) {
        const ProfileEntry* entry = m_reading.Find(row, number);
        EffectiveKey key;
        key.section = row.section == KeySection::Common ? kCommon : m_section;
        key.name = NameIn(row, number);
        key.value = !entry && *row.fallbackKey ? ValueOfKey(row.fallbackKey) : ValueOf(row, number);
        key.line = entry ? entry->line : 0;
        key.type = row.type;
        key.role = row.role;
        key.meaning = row.meaning;
        m_keys.push_back(std::move(key));
    }
    std::vector<EffectiveKey> Take() { return std::move(m_keys); }

private:
    /// Of a key that stands before.
    std::string ValueOfKey(std::string_view name) const {
        const auto found =
            std::find_if(m_keys.begin(), m_keys.end(), [&](const EffectiveKey& key) { return key.name == name; });
        return found != m_keys.end() ? found->value : std::string();
    }

    std::string ValueOf(const KeyInfo& row, int number) const {
        switch (row.type) {
        case KeyType::Number:
        case KeyType::Switch:
            return std::to_string(m_reader.Number(row, number));
        case KeyType::TrueWord:
            return m_reader.Number(row, number) != 0 ? "true" : "false";
        case KeyType::Color:
            return ColorText(m_reader.Color(row, number));
        case KeyType::Point:
            return std::to_string(m_reader.Point(row).x) + "," + std::to_string(m_reader.Point(row).y);
        default: // as it stands: a text has its line feeds in words, and nothing is lost of a decimal
            const ProfileEntry* entry = m_reading.Find(row, number);
            return entry ? std::string(entry->value) : row.fallbackText;
        }
    }

    KeyReader m_reader;
    std::string m_section;
    const SectionReading& m_reading;
    std::vector<EffectiveKey> m_keys;
};

} // namespace

std::vector<EffectiveKey> EffectiveKeys(const std::string& profile, const ProfileUse& use) {
    const KindRow* kind = FindKind(use.kind);
    if (!kind)
        return {};
    const std::string path = profile.empty() ? kGraphProfile : profile;
    const PlacedProfile file(path);
    const ProfileSection* own = file.Find(use.section);
    std::vector<std::string> texts = own ? TextKeysIn(*own) : std::vector<std::string>();
    if (!use.key.empty())
        texts.push_back(use.key);
    const KindKeys keys(*kind, texts);
    const SectionReading reading(file, own, keys);
    Effects effects(path, use.section, reading);
    for (const KeyInfo& row : keys.Rows())
        for (const int number : NumbersOf(reading, row))
            effects.Add(row, number);
    return effects.Take();
}

std::string ChangedProfile(const std::string& profile, const EffectiveKey& key, const std::string& value) {
    const PlacedProfile file(profile.empty() ? kGraphProfile : profile);
    const std::string line = key.name + "=\"" + value + "\"\n"; // of quotes the outermost go
    std::string text = file.Text();
    if (!text.empty() && text.back() != '\n')
        text += '\n';
    const ProfileSection* section = file.Find(key.section);
    return section ? text.insert(LengthOfLines(text, section->line), line) : text + "[" + key.section + "]\n" + line;
}

} // namespace melkar
