#include <MelkarCommon/checker/section_reading.h>

#include <MelkarCommon/checker/spelling.h>
#include <MelkarCommon/platform/values/ascii.h>

#include <algorithm>
#include <iterator>
#include <span>
#include <sstream>
#include <tuple>

namespace melkar {

namespace {

constexpr std::string_view kNumber = "%d";
constexpr std::string_view kText = "%s";

bool EndsNoCase(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && EqualNoCase(text.substr(text.size() - end.size()), end);
}

bool StartsNoCase(std::string_view text, std::string_view start) {
    return EqualNoCase(text.substr(0, start.size()), start);
}

std::string Replaced(std::string_view name, std::string_view what, std::string_view by) {
    std::string text(name);
    if (const auto at = text.find(what); at != std::string::npos)
        text.replace(at, what.size(), by);
    return text;
}

/// Whether the name of the key stands in the table, and isn't that of a text.
bool IsNamed(const KeyInfo& row) { return std::string_view(row.name).find(kText) == std::string_view::npos; }

bool IsList(const KeyInfo& row) { return row.firstIndex > 0; }

/// As many keys as a section is known by.
std::span<const ProfileEntry> FirstOf(const ProfileSection& section) {
    constexpr std::size_t kEnough = 500;
    return std::span(section.entries).first(std::min(section.entries.size(), kEnough));
}

/// How well a section suits a kind.
struct Fit {
    int known;   ///< keys of the section that the kind reads
    int missing; ///< keys that it needs and the section hasn't
};

/// A needed key that is there, or mistyped, isn't missing.
bool IsThere(const SectionReading& reading, const KeyInfo& row, const std::vector<std::string>& unknown) {
    return reading.Has(row) || !ClosestName(NameIn(row, row.firstIndex), unknown).empty();
}

Fit FitOf(const ProfileSection& section, const KindKeys& keys, const SectionReading& reading) {
    constexpr std::size_t kMostUnknown = 20; // mistyped keys are few
    Fit fit{0, 0};
    std::vector<std::string> unknown;
    for (const ProfileEntry& entry : FirstOf(section)) {
        if (keys.RowOf(KeySection::Own, entry.key))
            ++fit.known;
        else if (unknown.size() < kMostUnknown)
            unknown.emplace_back(entry.key);
    }
    for (const KeyInfo& row : keys.Rows())
        if (row.section == KeySection::Own && keys.Needs(row) && !IsThere(reading, row, unknown))
            ++fit.missing;
    return fit;
}

} // namespace

const KindRow& KeyKindOf(const KindRow& row) {
    const KindRow* other = FindKind(row.keysOf);
    return other ? *other : row;
}

std::vector<std::string> TextKeysIn(const ProfileSection& section) {
    std::vector<std::string> texts;
    for (const ProfileEntry& entry : FirstOf(section))
        for (const std::string_view of : {"_FONT", "_FONTNAME", "_RGB"}) {
            if (!EndsNoCase(entry.key, of))
                continue;
            const std::string_view text = entry.key.substr(0, entry.key.size() - of.size());
            const auto same = [&](const std::string& other) { return EqualNoCase(other, text); };
            if (section.Find(text) && std::none_of(texts.begin(), texts.end(), same))
                texts.emplace_back(text);
        }
    return texts;
}

std::optional<int> NumberIn(const KeyInfo& row, std::string_view key) {
    const std::string_view name = row.name;
    const auto at = name.find(kNumber);
    if (at == std::string_view::npos)
        return EqualNoCase(name, key) ? std::optional(row.firstIndex) : std::nullopt;
    const std::string_view behind = name.substr(at + kNumber.size());
    if (key.size() <= at + behind.size() || !StartsNoCase(key, name.substr(0, at)) || !EndsNoCase(key, behind))
        return std::nullopt;
    const std::string_view digits = key.substr(at, key.size() - at - behind.size());
    const int number = ParseInt(digits);
    const int most = IsList(row) ? row.firstIndex + kMostListItems : kMostCounted;
    const bool isRead = number >= row.firstIndex && number < most && std::to_string(number) == digits;
    return isRead ? std::optional(number) : std::nullopt;
}

std::string NameIn(const KeyInfo& row, int index) { return Replaced(row.name, kNumber, std::to_string(index)); }

KindKeys::KindKeys(const KindRow& row, const std::vector<std::string>& texts) : m_kind(row.kind) {
    const KindRow& kind = KeyKindOf(row);
    const std::vector<ClassKeys> tables = KeysReadBy(kind);
    for (const ClassKeys& table : tables)
        std::copy_if(table.keys.begin(), table.keys.end(), std::back_inserter(m_rows), IsNamed);
    std::vector<std::string> named;
    std::copy_if(texts.begin(), texts.end(), std::back_inserter(named),
                 [&](const std::string& text) { return !RowOf(KeySection::Own, text); });
    if (named.empty())
        named.emplace_back("TEXT");
    for (const ClassKeys& table : tables)
        for (const KeyInfo& key : table.keys)
            if (!IsNamed(key))
                Expand(key, named);
    std::istringstream starter(kind.starter);
    for (std::string line; std::getline(starter, line);)
        Require(line.substr(0, line.find('=')), named);
}

const char* KindKeys::Keep(std::string name) { return m_names.emplace_back(std::move(name)).c_str(); }

void KindKeys::Expand(const KeyInfo& key, const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
        KeyInfo one = key;
        one.name = Keep(Replaced(key.name, kText, text));
        m_rows.push_back(one);
    }
}

/// A kind whose texts go by other names than those of the starter needs these.
void KindKeys::Require(const std::string& name, const std::vector<std::string>& texts) {
    const KeyInfo* row = RowOf(KeySection::Own, name);
    if (!row)
        row = RowOf(KeySection::Common, name);
    if (row)
        m_needed.emplace_back(row->name);
    else if (StartsNoCase(name, "TEXT"))
        for (const std::string& text : texts)
            m_needed.push_back(text + name.substr(4));
}

const KeyInfo* KindKeys::RowOf(KeySection section, std::string_view key) const {
    const KeyInfo* found = nullptr;
    for (const KeyInfo& row : m_rows) {
        if (row.section != section)
            continue;
        if (EqualNoCase(row.name, key))
            return &row;
        if (NumberIn(row, key))
            found = &row;
    }
    return found;
}

const KeyInfo* KindKeys::RowNamed(std::string_view name) const {
    const auto found = std::find_if(m_rows.begin(), m_rows.end(), [&](const KeyInfo& row) { return name == row.name; });
    return found != m_rows.end() ? &*found : nullptr;
}

bool KindKeys::Needs(const KeyInfo& row) const {
    return std::find(m_needed.begin(), m_needed.end(), row.name) != m_needed.end();
}

const ProfileEntry* SectionReading::Find(const KeyInfo& row, int index) const {
    const ProfileSection* section = SectionOf(row);
    return section ? section->Find(NameIn(row, index)) : nullptr;
}

bool SectionReading::Has(const KeyInfo& row) const {
    const KeyInfo* instead = *row.instead ? m_keys.RowNamed(row.instead) : nullptr;
    return Find(row) || (instead && Find(*instead));
}

std::vector<std::pair<int, const ProfileEntry*>> SectionReading::EntriesOf(const KeyInfo& row) const {
    std::vector<std::pair<int, const ProfileEntry*>> entries;
    const ProfileSection* section = SectionOf(row);
    if (!section)
        return entries;
    for (const ProfileEntry& entry : section->entries)
        if (const auto number = NumberIn(row, entry.key))
            entries.emplace_back(*number, &entry);
    std::stable_sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    const auto same = [](const auto& a, const auto& b) { return a.first == b.first; };
    entries.erase(std::unique(entries.begin(), entries.end(), same), entries.end());
    return entries;
}

bool SectionReading::IsOpen(const KeyInfo& row) const {
    const KeyInfo* gate = *row.gate ? m_keys.RowNamed(row.gate) : nullptr;
    if (!gate)
        return true;
    const ProfileEntry* entry = Find(*gate);
    if (!entry)
        return false;
    return gate->type == KeyType::TrueWord ? EqualNoCase(entry->value, "true") : ParseInt(entry->value) > 0;
}

const KindRow* GuessKind(const ProfileSection& section) {
    static const PlacedProfile kNoFile{std::string()};
    const KindRow* best = nullptr;
    Fit bestFit{0, 0};
    for (const KindRow& row : Catalogue()) {
        if (!*row.starter || !*row.kind)
            continue;
        const KindKeys keys(row, TextKeysIn(section));
        const Fit fit = FitOf(section, keys, SectionReading(kNoFile, &section, keys));
        if (fit.known > 0 && std::tuple(fit.known, -fit.missing) > std::tuple(bestFit.known, -bestFit.missing)) {
            best = &row;
            bestFit = fit;
        }
    }
    return best;
}

} // namespace melkar
