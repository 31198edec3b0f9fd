#include <MelkarCommon/checker/doubter.h>

#include <MelkarCommon/checker/spelling.h>
#include <MelkarCommon/platform/values/ascii.h>
#include <MelkarCommon/registry/key_reference.h>

#include <algorithm>
#include <string>
#include <vector>

/// @file
/// Whether keys are read, and whether those are there that a chart needs.

namespace melkar {

namespace {

constexpr int kMostUnread = 100; // of a section; a file with more is none of ours

/// A table of the catalogue, and the kind that is made with it.
const char* KindThatReads(KeySection section, std::string_view key) {
    for (const KindRow& row : Catalogue())
        if (*row.kind && *row.starter && KindKeys(row, {}).RowOf(section, key))
            return row.kind;
    return nullptr;
}

/// The names of the rows of a section. A numbered row has the number of the key that is asked for.
std::vector<std::string> NamesLike(const std::vector<KeyInfo>& rows, KeySection section, std::string_view key) {
    const auto digit = std::find_if(key.begin(), key.end(), IsDigit);
    const int number = digit == key.end() ? 0 : ParseInt(key.substr(static_cast<std::size_t>(digit - key.begin())));
    std::vector<std::string> names;
    for (const KeyInfo& row : rows)
        if (row.section == section)
            names.push_back(NameIn(row, std::max(number, row.firstIndex)));
    return names;
}

std::string DidYouMean(const std::string& name) { return name.empty() ? "" : "; did you mean " + name + "?"; }

void DoubtUnread(const SectionReading& reading, const ProfileEntry& entry, Doubter& doubter) {
    const KindKeys& keys = reading.Keys();
    if (keys.RowOf(KeySection::Common, entry.key))
        return doubter.TellKey("wrong-section", entry, "all graphs read it in [COMMON], and there only");
    if (const char* kind = KindThatReads(KeySection::Own, entry.key))
        return doubter.TellKey("other-kind", entry, "a key of kind " + std::string(kind) + ", not of " + keys.Kind());
    const std::string close = ClosestName(entry.key, NamesLike(keys.Rows(), KeySection::Own, entry.key));
    doubter.TellKey("unknown-key", entry, "nothing reads this key" + DidYouMean(close));
}

/// A key that waits for a switch which isn't on.
void DoubtClosed(const SectionReading& reading, const KeyInfo& row, const ProfileEntry& entry, Doubter& doubter) {
    const KeyInfo* gate = reading.Keys().RowNamed(row.gate);
    const ProfileEntry* its = gate ? reading.Find(*gate) : nullptr;
    const bool isMeantOff = its && (EqualNoCase(its->value, "false") || its->value == "0" || its->value.empty());
    doubter.TellKey(isMeantOff ? "switched-off" : "closed-key", entry,
                    std::string("read while ") + row.gate + " is on, which " +
                        (its ? "is " + Quoted(its->value) : std::string("is missing")));
}

void DoubtRead(const SectionReading& reading, const KeyInfo& row, const ProfileEntry& entry, Doubter& doubter) {
    if (row.role == KeyRole::Idle)
        doubter.TellKey("idle-key", entry, "nothing is painted by it");
    if (!reading.IsOpen(row))
        return DoubtClosed(reading, row, entry, doubter);
    const int number = NumberIn(row, entry.key).value_or(row.firstIndex);
    if (row.firstIndex > 0 && number > row.firstIndex && !reading.Find(row, number - 1))
        doubter.TellKey("list-gap", entry, "not read, for " + NameIn(row, number - 1) + " is missing");
}

/// Whether somebody who wrote the section meant that key, and mistyped it.
bool IsMistyped(const SectionReading& reading, const KeyInfo& row) {
    const ProfileSection* section = reading.SectionOf(row);
    return section && std::any_of(section->entries.begin(), section->entries.end(), [&](const ProfileEntry& entry) {
               return !reading.Keys().RowOf(row.section, entry.key) &&
                      !ClosestName(entry.key, {NameIn(row, row.firstIndex)}).empty();
           });
}

} // namespace

void DoubtKeys(const SectionReading& reading, PictureSize, Doubter& doubter) {
    if (!reading.Own())
        return;
    int unread = 0;
    for (const ProfileEntry& entry : reading.Own()->entries) {
        if (const KeyInfo* row = reading.Keys().RowOf(KeySection::Own, entry.key))
            DoubtRead(reading, *row, entry, doubter);
        else if (++unread <= kMostUnread)
            DoubtUnread(reading, entry, doubter);
    }
}

void DoubtMissing(const SectionReading& reading, PictureSize, Doubter& doubter) {
    for (const KeyInfo& row : reading.Keys().Rows()) {
        const ProfileSection* section = reading.SectionOf(row);
        if (!section || !reading.Keys().Needs(row) || reading.Has(row) || !reading.IsOpen(row) ||
            IsMistyped(reading, row))
            continue;
        const bool isCommon = row.section == KeySection::Common;
        doubter.Tell("missing-key", section->line, 0,
                     InBrackets(section->name) + " lacks " + NameIn(row, row.firstIndex) + " (" + row.meaning +
                         "), which " +
                         (isCommon ? "charts need" : "a chart of kind " + reading.Keys().Kind() + " needs"));
    }
}

void DoubtCommon(const ProfileSection& common, Doubter& doubter) {
    std::vector<KeyInfo> rows;
    for (const ClassKeys& table : AllProfileKeys())
        rows.insert(rows.end(), table.keys.begin(), table.keys.end());
    int unread = 0;
    for (const ProfileEntry& entry : common.entries) {
        const auto reads = [&](const KeyInfo& row) {
            return row.section == KeySection::Common && EqualNoCase(row.name, entry.key);
        };
        const auto row = std::find_if(rows.begin(), rows.end(), reads);
        if (row != rows.end()) {
            if (row->role == KeyRole::Idle)
                doubter.TellKey("idle-key", entry, "nothing is painted by it");
            DoubtForm(*row, entry, doubter);
        } else if (++unread > kMostUnread) {
            return;
        } else if (const std::string close = ClosestName(entry.key, NamesLike(rows, KeySection::Common, entry.key));
                   !close.empty()) {
            doubter.TellKey("unknown-key", entry, "nothing reads this key" + DidYouMean(close));
        } else if (KindThatReads(KeySection::Own, entry.key)) {
            doubter.TellKey("wrong-section", entry, "read in the section of a graph, not in [COMMON]");
        } else {
            doubter.TellKey("unknown-key", entry, "nothing reads this key");
        }
    }
}

} // namespace melkar
