#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/support/ini_reader.h>
#include <MelkarCommon/support/platform/cstring.h>
#include <MelkarCommon/support/platform/profile.h>
#include <MelkarCommon/support/platform/types.h>
#include <MelkarCommon/support/text.h>

#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

/// @file
/// The profile keys of a class, stated once. A class keeps a table of rows; its `ReadIniFile` walks the table over
/// one reading of the profile, and whoever documents or checks profiles walks the same rows.

namespace melkar {

/// Which section of the profile holds the key: the graph's own, or COMMON.
enum class KeySection : std::uint8_t { Own, Common };

enum class KeyType : std::uint8_t {
    Text,
    Message, ///< text with a line feed for every " __n__ "
    Number,
    Switch, ///< a number; 1 if it is above 0, else 0
    Color,  ///< "red,green,blue"
};

/// What a profile's author needs to know of a key.
struct KeyInfo {
    KeySection section;
    const char* name; ///< with "%d" in it: one key for each of a numbered row of items, from 0
    KeyType type;
    int fallback; ///< of numbers and switches; texts start empty, colours black
    const char* meaning;
};

/// The keys of one class.
struct ClassKeys {
    const char* className;
    std::vector<KeyInfo> keys;
};

constexpr int kMostColors = 10; ///< a numbered row of colours ends here

/// One reading of a profile, as seen by one graph.
class MELKAR_API KeyReader {
public:
    KeyReader(const char* path, const char* ownSection) : m_file(path), m_own(ownSection) {}

    CString Text(const KeyInfo& key) const;
    int Number(const KeyInfo& key) const;
    COLORREF Color(const KeyInfo& key) const;
    COLORREF Color(const KeyInfo& key, int index) const; ///< of a numbered row

private:
    const std::string* Find(const KeyInfo& key, const char* name) const;

    ProfileSnapshot m_file;
    std::string m_own;
};

/// One row: the key, and how its value gets into a graph.
template <class Graph> struct KeyRow {
    KeyInfo info;
    void (*store)(Graph&, const KeyReader&, const KeyInfo&);
};

namespace detail {

template <class Member> struct MemberOf;
template <class Owner, class Value> struct MemberOf<Value Owner::*> { using Class = Owner; };

/// The member of the graph, or of its title if it is one of `CText`.
template <auto Member, class Graph> auto& Of(Graph& graph) {
    if constexpr (std::is_same_v<typename MemberOf<decltype(Member)>::Class, CText>)
        return graph.m_Title.*Member;
    else
        return graph.*Member;
}

template <class Target, class Value> void Assign(Target& target, const Value& value) {
    if constexpr (std::is_arithmetic_v<Target>)
        target = static_cast<Target>(value);
    else
        target = value;
}

} // namespace detail

/// Makes the rows of one class; each value may feed several members.
template <class Graph> struct Keys {
    template <auto... Members> static constexpr KeyRow<Graph> Text(KeySection at, const char* name, const char* says) {
        return {{at, name, KeyType::Text, 0, says}, StoreText<Members...>};
    }
    template <auto... Members>
    static constexpr KeyRow<Graph> Message(KeySection at, const char* name, const char* says) {
        return {{at, name, KeyType::Message, 0, says}, StoreText<Members...>};
    }
    template <auto... Members>
    static constexpr KeyRow<Graph> Number(KeySection at, const char* name, int fallback, const char* says) {
        return {{at, name, KeyType::Number, fallback, says}, StoreNumber<Members...>};
    }
    template <auto... Members>
    static constexpr KeyRow<Graph> Switch(KeySection at, const char* name, const char* says) {
        return {{at, name, KeyType::Switch, 0, says}, StoreNumber<Members...>};
    }
    template <auto... Members> static constexpr KeyRow<Graph> Color(KeySection at, const char* name, const char* says) {
        return {{at, name, KeyType::Color, 0, says}, StoreColor<Members...>};
    }
    /// A numbered row of colours, as many as `Count` says and at most ten.
    template <auto Array, auto Count>
    static constexpr KeyRow<Graph> Colors(KeySection at, const char* name, const char* says) {
        return {{at, name, KeyType::Color, 0, says}, StoreColors<Array, Count>};
    }

private:
    template <auto... Members> static void StoreText(Graph& graph, const KeyReader& reader, const KeyInfo& key) {
        const CString value = reader.Text(key);
        (detail::Assign(detail::Of<Members>(graph), value), ...);
    }
    template <auto... Members> static void StoreNumber(Graph& graph, const KeyReader& reader, const KeyInfo& key) {
        const int value = reader.Number(key);
        (detail::Assign(detail::Of<Members>(graph), value), ...);
    }
    template <auto... Members> static void StoreColor(Graph& graph, const KeyReader& reader, const KeyInfo& key) {
        const COLORREF value = reader.Color(key);
        (detail::Assign(detail::Of<Members>(graph), value), ...);
    }
    template <auto Array, auto Count>
    static void StoreColors(Graph& graph, const KeyReader& reader, const KeyInfo& key) {
        for (int i = 0; i < graph.*Count && i < kMostColors; ++i)
            (graph.*Array)[i] = reader.Color(key, i);
    }
};

/// Reads a class's keys from the graph's profile into the graph.
template <class Graph, std::size_t Count>
void ReadKeys(const KeyRow<Graph> (&rows)[Count], Graph& graph, const char* path, const char* ownSection) {
    const KeyReader reader(path, ownSection);
    for (const KeyRow<Graph>& row : rows)
        row.store(graph, reader, row.info);
}

/// The rows without their targets, for who documents or checks profiles.
template <class Graph, std::size_t Count> std::vector<KeyInfo> InfoOf(const KeyRow<Graph> (&rows)[Count]) {
    std::vector<KeyInfo> keys;
    for (const KeyRow<Graph>& row : rows)
        keys.push_back(row.info);
    return keys;
}

} // namespace melkar
