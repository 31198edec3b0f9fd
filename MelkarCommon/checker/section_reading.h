#pragma once

#include <MelkarCommon/checker/placed_profile.h>
#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/registry/catalogue.h>

#include <deque>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// @file
/// Internal. What a graph of some kind finds in a section, and what it leaves there.

namespace melkar {

/// The kind whose keys are read where charts of `row` are drawn.
const KindRow& KeyKindOf(const KindRow& row);

/// The keys after which a text is named that a section holds: KEY, where KEY_FONT or the like stands with it.
std::vector<std::string> TextKeysIn(const ProfileSection& section);

/// The number of a key in a numbered row "NAME%d"; nothing if it is none of the row, or above all that is read.
std::optional<int> NumberIn(const KeyInfo& row, std::string_view key);

/// The name of a row, with its number if it has one.
std::string NameIn(const KeyInfo& row, int index);

/// Those of a kind: its own, and those of the classes that it rests on. Names with "%s" stand once for each text.
class KindKeys {
public:
    KindKeys(const KindRow& row, const std::vector<std::string>& texts);

    const std::string& Kind() const { return m_kind; }
    const std::vector<KeyInfo>& Rows() const { return m_rows; }
    /// The row that reads a key of that section; null if none does.
    const KeyInfo* RowOf(KeySection section, std::string_view key) const;
    /// The row of that very name, with its "%d"; null if there is none.
    const KeyInfo* RowNamed(std::string_view name) const;
    /// Whether a chart of the kind isn't readable without it, or without the first of its numbered row.
    bool Needs(const KeyInfo& row) const;

private:
    void Expand(const KeyInfo& key, const std::vector<std::string>& texts);
    void Require(const std::string& name, const std::vector<std::string>& texts);
    const char* Keep(std::string name);

    std::string m_kind;
    std::deque<std::string> m_names; ///< that rows point to
    std::vector<KeyInfo> m_rows;
    std::vector<std::string> m_needed; ///< names of rows
};

/// A profile as a graph reads it that is made with a section of it.
class SectionReading {
public:
    /// `own` may be null: there is no such section.
    SectionReading(const PlacedProfile& file, const ProfileSection* own, const KindKeys& keys)
        : m_own(own), m_common(file.Find("COMMON")), m_keys(keys) {}

    const KindKeys& Keys() const { return m_keys; }
    const ProfileSection* Own() const { return m_own; }
    const ProfileSection* Common() const { return m_common; }
    const ProfileSection* SectionOf(const KeyInfo& row) const {
        return row.section == KeySection::Common ? m_common : m_own;
    }
    /// Null if it is missing.
    const ProfileEntry* Find(const KeyInfo& row, int index) const;
    const ProfileEntry* Find(const KeyInfo& row) const { return Find(row, row.firstIndex); }
    /// Whether it is there, or what does as well.
    bool Has(const KeyInfo& row) const;
    /// All that a row reads, with their numbers, in the order of these.
    std::vector<std::pair<int, const ProfileEntry*>> EntriesOf(const KeyInfo& row) const;
    /// Whether the switch is on that the row waits for, if it waits for one.
    bool IsOpen(const KeyInfo& row) const;

private:
    const ProfileSection* m_own;
    const ProfileSection* m_common;
    const KindKeys& m_keys;
};

/// A scale of the profile, with the key of its top.
struct ProfileScale {
    const ProfileEntry* top;
    double from;
    double to;
};
/// Nothing if the profile has no such scale, or its ends aren't numbers.
std::optional<ProfileScale> ScaleOf(const SectionReading& reading, const KeyInfo& top);

/// The kind whose keys a section has, by their number, and by what it would lack; null if there is none.
const KindRow* GuessKind(const ProfileSection& section);

} // namespace melkar
