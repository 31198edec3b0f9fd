#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/checker/doubts.h>
#include <MelkarCommon/frame/key_table.h>

#include <string>
#include <vector>

/// @file
/// What a graph finds in a profile: all keys that it reads, by the tables of its classes, with the values that count.
///
/// @code{.cpp}
/// melkar::ProfileUse use;
/// use.kind = "steps";
/// use.section = "STEPS";
/// for (const melkar::EffectiveKey& key : melkar::EffectiveKeys("../conf/graph.cnf", use))
///     std::printf("%s=%s\n", key.name.c_str(), key.value.c_str());
/// @endcode

namespace melkar {

/// A key, and the value that counts.
struct EffectiveKey {
    std::string section;           ///< that it is looked for in
    std::string name;              ///< with its number, if it has one
    std::string value;             ///< as a graph takes it: of a missing key what stands in for it
    int line = 0;                  ///< of the profile, from 1; 0: it isn't there
    KeyType type = KeyType::Text;  ///< how it is read
    KeyRole role = KeyRole::Plain; ///< what it is to who checks profiles
    std::string meaning;           ///< what it sets, in a few words
};

/// In the order of the tables. Of a numbered row those that are there and the next one, of one for a counted array all
/// that it can have. None without the kind. @param profile empty for that of all graphs @param use kind and section,
/// and the key of a text
MELKAR_API std::vector<EffectiveKey> EffectiveKeys(const std::string& profile, const ProfileUse& use);

/// The text of that profile with another value of a key, which counts before the one that it has. Nothing else changes.
/// @param profile as above @param key its section and its name @param value without a line feed
MELKAR_API std::string ChangedProfile(const std::string& profile, const EffectiveKey& key, const std::string& value);

} // namespace melkar
