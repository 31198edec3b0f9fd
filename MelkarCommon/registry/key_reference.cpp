#include <MelkarCommon/registry/key_reference.h>

#include <MelkarCommon/registry/catalogue.h>
#include <MelkarCommon/registry/starters.h>
#include <MelkarCommon/reports/report.h>
#include <MelkarCommon/reports/report_header.h>

#include <algorithm>
#include <optional>
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
KindKeys MakeKind(const char* kind, const char* className, std::vector<ClassKeys> tables, const char* starter) {
    KindKeys made{kind, className, std::move(tables), {}};
    std::istringstream lines(starter);
    for (std::string line; std::getline(lines, line);)
        if (const auto row = FindRow(made.tables, line.substr(0, line.find('='))))
            made.starter.push_back({*row, line});
    return made;
}

const std::vector<KindKeys>& AllKinds() {
    static const std::vector<KindKeys> kinds = [] {
        std::vector<KindKeys> all;
        for (const GraphClass& graph : Catalogue())
            if (*graph.kind)
                all.push_back(MakeKind(graph.kind, graph.name, KeysReadBy(graph), graph.starter));
        // A report draws no graph of its own, so it isn't in the catalogue.
        all.push_back(MakeKind("report", "CReportHeader", {CReport::ProfileKeys(), CReportHeader::ProfileKeys()},
                               starters::kReport));
        return all;
    }();
    return kinds;
}

/// Null if there is no kind of that name.
const KindKeys* FindKind(std::string_view name) {
    for (const KindKeys& kind : AllKinds())
        if (kind.kind == name)
            return &kind;
    return nullptr;
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

std::string Row(const KeyInfo& key, const std::vector<const KindKeys*>& kinds) {
    return std::string("| ") + (key.section == KeySection::Common ? "COMMON" : "own") + " | `" + key.name + "` | " +
           TypeName(key.type) + " | " + FallbackOf(key) + " | " + Example(key, kinds) + " | " + Meaning(key) + " |\n";
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

std::vector<const KindKeys*> KindsThatRead(std::string_view className) {
    std::vector<const KindKeys*> kinds;
    for (const KindKeys& kind : AllKinds())
        if (Reads(kind, className))
            kinds.push_back(&kind);
    return kinds;
}

std::string KindRow(const KindKeys& kind) {
    std::string tables;
    for (const ClassKeys& one : kind.tables)
        tables += std::string(tables.empty() ? "" : ", ") + one.className;
    return "| `" + kind.kind + "` | " + kind.className + " | " + tables + " |\n";
}

} // namespace

std::vector<ClassKeys> AllProfileKeys() {
    std::vector<ClassKeys> all;
    for (const GraphClass& graph : Catalogue())
        if (graph.keys)
            all.push_back(graph.keys());
    all.push_back(CReport::ProfileKeys());
    all.push_back(CReportHeader::ProfileKeys());
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
    for (const KindKeys& kind : AllKinds())
        page += KindRow(kind);
    for (const ClassKeys& one : AllProfileKeys())
        page += Table(one, KindsThatRead(one.className));
    return page;
}

std::string KeyReferenceOf(std::string_view name) {
    const KindKeys* kind = FindKind(name);
    if (!kind)
        return "";
    std::string page = "# Profile keys of `" + kind->kind + "`\n\nThe keys of `graph.cnf` that " + kind->className +
                       " reads. \"own\" is the section that it was made with. Without the keys that are needed it "
                       "isn't readable.\n";
    for (const ClassKeys& one : kind->tables)
        page += Table(one, {kind});
    return page;
}

std::string StarterProfile(std::string_view name, const std::string& section) {
    const KindKeys* kind = FindKind(name);
    if (!kind)
        return "";
    std::string common = "[COMMON]\n";
    std::string own = "[" + section + "]\n";
    for (const StarterLine& line : kind->starter)
        (line.row.section == KeySection::Common ? common : own) += line.text + "\n";
    return common + own;
}

} // namespace melkar
