#include "profiles.h"

#include "input.h"

#include <MelkarCommon/registry/key_reference.h>

#include <algorithm>

namespace melkar::fuzz {

namespace {

/// "%d" and "%s" of a key's name filled in.
std::string Named(std::string name, const std::string& with) {
    if (const std::size_t at = name.find('%'); at != std::string::npos)
        name.replace(at, 2, with);
    return name;
}

/// What stands for "%d" or "%s", the text of kind `text`, in the keys of a small profile.
constexpr const char* kNumbers[] = {"0", "1", "2", "TEXT"};

template <class Value> std::string MakeProfile(const KindRow& row, Value valueOf) {
    std::string common = "[COMMON]\n", own = "[OWN]\n";
    for (const ClassKeys& table : KeysReadBy(row))
        for (const KeyInfo& key : table.keys)
            for (const char* number : kNumbers) {
                const std::string line = Named(key.name, number) + "=" + valueOf(key) + "\n";
                std::string& section = key.section == KeySection::Own ? own : common;
                if (section.find("\n" + line) == std::string::npos)
                    section += line;
            }
    return common + own;
}

int ColumnsOf(const DataTable& table) {
    int columns = 1;
    for (const ColumnInfo& column : table.columns)
        columns = std::max(columns, column.index + column.count);
    return columns;
}

} // namespace

std::string ProfileOf(const KindRow& row) { return MakeProfile(row, ExampleOf); }

std::string ProfileOf(const KindRow& row, const std::string& value) {
    return MakeProfile(row, [&value](const KeyInfo&) { return value; });
}

void AddProfileWords(Seeds& seeds) {
    seeds.words.insert({"[COMMON]", "[OWN]", "\n", "=", "OWN."});
    seeds.words.insert(kHurtful.begin(), kHurtful.end());
    for (const ClassKeys& table : AllProfileKeys())
        for (const KeyInfo& key : table.keys)
            for (const char* number : kNumbers)
                seeds.words.insert("\n" + Named(key.name, number) + "=");
}

std::string DataOf(const DataTable& table, const std::string& value) {
    constexpr int kRows = 3;
    std::vector<std::string> fields(static_cast<std::size_t>(ColumnsOf(table)), value);
    for (const ColumnInfo& column : table.columns)
        if (column.kind == ColumnKind::DayStatus)
            fields[static_cast<std::size_t>(column.index)] = "0"; // else nobody looks at the rest
    std::string line;
    for (const std::string& field : fields)
        line += field + ",";
    line.back() = '\n';
    std::string text;
    for (int row = 0; row < table.form.heads + kRows; ++row)
        text += line;
    return text;
}

} // namespace melkar::fuzz
