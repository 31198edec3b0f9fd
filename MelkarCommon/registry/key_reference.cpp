#include <MelkarCommon/registry/key_reference.h>

#include <MelkarCommon/registry/catalogue.h>

#include <algorithm>
#include <optional>
#include <set>
#include <sstream>
#include <utility>

namespace melkar {

namespace {

/// A line of a starter profile, and the row of the key tables that reads it.
struct StarterLine {
    KeyInfo row;
    std::string text; ///< "KEY=VALUE"

    std::string Value() const { return text.substr(text.find('=') + 1); }
};

struct KindKeys {
    std::string kind;
    std::string className;
    std::vector<ClassKeys> tables;
    std::vector<StarterLine> starter;
};

/// Whether a row with "%d" or "%s" in its name reads the key.
bool IsOneOf(std::string_view row, std::string_view key) {
    const auto at = row.find('%');
    if (at == std::string_view::npos)
        return false;
    const std::string_view before = row.substr(0, at);
    const std::string_view behind = row.substr(at + 2);
    if (key.size() <= before.size() + behind.size() || !key.starts_with(before) || !key.ends_with(behind))
        return false;
    const std::string_view inside = key.substr(at, key.size() - before.size() - behind.size());
    return row[at + 1] == 's' || inside.find_first_not_of("0123456789") == std::string_view::npos;
}

/// The row of that very name, else one that stands for many names; none if no row reads the key.
std::optional<KeyInfo> FindRow(const std::vector<ClassKeys>& tables, std::string_view key) {
    std::optional<KeyInfo> found;
    for (const ClassKeys& one : tables) {
        for (const KeyInfo& row : one.keys) {
            if (row.name == key)
                return row;
            if (IsOneOf(row.name, key))
                found = row;
        }
    }
    return found;
}

/// A line that no row reads is no help to anybody: it is left out.
KindKeys KeysOf(const KindRow& row) {
    KindKeys made{row.kind, row.className, KeysReadBy(row), {}};
    std::istringstream lines(row.starter);
    for (std::string line; std::getline(lines, line);)
        if (const auto key = FindRow(made.tables, line.substr(0, line.find('='))))
            made.starter.push_back({*key, line});
    return made;
}

/// Of the kinds that have a profile of their own.
std::vector<KindKeys> AllKinds() {
    std::vector<KindKeys> all;
    for (const KindRow& row : Catalogue())
        if (*row.starter)
            all.push_back(KeysOf(row));
    return all;
}

/// Those of the kind whose profile it is drawn by; none if there is no such kind, or it reads no keys.
std::optional<KindKeys> KeysOfKind(std::string_view name) {
    const KindRow* row = FindKind(name);
    if (row && *row->keysOf)
        return KeysOfKind(row->keysOf);
    return row && *row->starter ? std::optional(KeysOf(*row)) : std::nullopt;
}

const char* TypeName(KeyType type) {
    switch (type) {
    case KeyType::Text:
        return "text";
    case KeyType::Message:
        return "text; ` __n__ ` breaks the line";
    case KeyType::Number:
        return "number";
    case KeyType::Switch:
        return "0 or 1";
    case KeyType::TrueWord:
        return "`true` or anything else";
    case KeyType::Real:
        return "number with decimals";
    case KeyType::Color:
        return "red,green,blue";
    case KeyType::Point:
        return "x,y";
    }
    return "";
}

/// What a readable chart of the kind has under the key; null if it can do without.
const StarterLine* NeedOf(const KindKeys& kind, const KeyInfo& row) {
    for (const StarterLine& line : kind.starter)
        if (std::string_view(line.row.name) == row.name)
            return &line;
    return nullptr;
}

/// A value that suits, and the kinds among those given that can't do without the key. One kind alone isn't named.
std::string Example(const KeyInfo& row, const std::vector<const KindKeys*>& kinds) {
    std::string value;
    std::string needs;
    for (const KindKeys* kind : kinds) {
        const StarterLine* need = NeedOf(*kind, row);
        if (!need)
            continue;
        if (value.empty())
            value = need->Value();
        needs += needs.empty() ? " (needed" : ",";
        if (kinds.size() > 1)
            needs += (needs.back() == ',' ? " " : " by ") + kind->kind;
    }
    if (needs.empty())
        return std::string("`") + ExampleOf(row) + "`";
    return std::string("`") + value + "`" + needs + ")";
}

/// What the key is for, from where its numbers count, and the switch that it waits for.
std::string Meaning(const KeyInfo& key) {
    return std::string(key.meaning) + (key.firstIndex == 1 ? "; numbered from 1" : "") +
           (*key.gate ? std::string("; read with `") + key.gate + "`" : "");
}

/// A bar would end the cell.
std::string InCell(std::string text) {
    for (auto at = text.find('|'); at != std::string::npos; at = text.find('|', at + 2))
        text.insert(at, 1, '\\');
    return text;
}

std::string Row(const KeyInfo& key, const std::vector<const KindKeys*>& kinds) {
    return std::string("| ") + (key.section == KeySection::Common ? "COMMON" : "own") + " | `" + key.name + "` | " +
           TypeName(key.type) + " | " + InCell(FallbackOf(key)) + " | " + InCell(Example(key, kinds)) + " | " +
           Meaning(key) + " |\n";
}

std::string Table(const ClassKeys& table, const std::vector<const KindKeys*>& kinds) {
    std::string text = std::string("\n## ") + table.className +
                       "\n\n| Section | Key | Value | Default | Example | Meaning |\n|---|---|---|---|---|---|\n";
    for (const KeyInfo& key : table.keys)
        text += Row(key, kinds);
    return text;
}

bool Reads(const KindKeys& kind, std::string_view className) {
    return std::any_of(kind.tables.begin(), kind.tables.end(),
                       [&](const ClassKeys& table) { return table.className == className; });
}

std::vector<const KindKeys*> KindsThatRead(const std::vector<KindKeys>& all, std::string_view className) {
    std::vector<const KindKeys*> kinds;
    for (const KindKeys& kind : all)
        if (Reads(kind, className))
            kinds.push_back(&kind);
    return kinds;
}

std::string RowOfKind(const KindKeys& kind) {
    std::string tables;
    for (const ClassKeys& one : kind.tables)
        tables += std::string(tables.empty() ? "" : ", ") + one.className;
    return "| `" + kind.kind + "` | " + kind.className + " | " + tables + " |\n";
}

} // namespace

std::vector<ClassKeys> AllProfileKeys() {
    std::vector<ClassKeys> all;
    for (const KindRow& row : Catalogue())
        if (row.keys)
            all.push_back(row.keys());
    return all;
}

std::string KeyReference() {
    std::string page = "# Profile keys\n\n"
                       "The keys of `graph.cnf`, class by class; a class also reads those of its base classes. \"own\" "
                       "is the section that the graph was made with. `%d` counts from 0 unless told otherwise, `%s` is "
                       "the key that the graph was made with. A chart isn't readable without the keys that its kind "
                       "needs. `melkar keys KIND` prints the keys of one kind, and with `--profile` a profile to start "
                       "from.\n\n"
                       "| Kind | Class | Reads the keys of |\n|---|---|---|\n";
    const std::vector<KindKeys> kinds = AllKinds();
    for (const KindKeys& kind : kinds)
        page += RowOfKind(kind);
    for (const ClassKeys& one : AllProfileKeys())
        page += Table(one, KindsThatRead(kinds, one.className));
    return page;
}

std::string KeyReferenceOf(std::string_view name) {
    const std::optional<KindKeys> kind = KeysOfKind(name);
    if (!kind)
        return "";
    std::string page = "# Profile keys of `" + kind->kind + "`\n\nThe keys of `graph.cnf` that " + kind->className +
                       " reads. \"own\" is the section that it was made with. Without the keys that are needed it "
                       "isn't readable.\n";
    for (const ClassKeys& one : kind->tables)
        page += Table(one, {&*kind});
    return page;
}

std::string StarterSectionOf(std::string_view kind) {
    std::string section(kind);
    for (char& letter : section)
        letter = letter == '-' ? '_' : letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
    return section;
}

std::string StarterProfile(std::string_view name, const std::string& section) {
    return StarterProfile({{std::string(name), section}});
}

/// The first of two kinds that need a common key says its value; a test sees to it that they agree.
std::string StarterProfile(const std::vector<StarterSection>& sections) {
    std::string common = "[COMMON]\n";
    std::string own;
    std::set<std::string> known; // keys of COMMON
    for (const auto& [name, section] : sections) {
        const std::optional<KindKeys> kind = KeysOfKind(name);
        if (!kind)
            return "";
        own += "[" + section + "]\n";
        for (const StarterLine& line : kind->starter)
            if (line.row.section == KeySection::Own)
                own += line.text + "\n";
            else if (known.insert(line.text.substr(0, line.text.find('='))).second)
                common += line.text + "\n";
    }
    return common + own;
}

} // namespace melkar
