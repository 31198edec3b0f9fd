#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/cstring.h>
#include <MelkarCommon/platform/host_directory.h>
#include <MelkarCommon/platform/types.h>
#include <MelkarCommon/support/ini_reader.h>
#include <MelkarCommon/support/numbers.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

/// @file
/// The profile keys of a class, stated once. A class keeps a table of rows; its `ReadIniFile` walks the table over
/// one reading of the profile, and whoever documents or checks profiles walks the same rows.
///
/// @code{.cpp}
/// class CThermometer : public CGraph {
/// public:
///     CThermometer(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon)
///         : CGraph(window, dc, section, shared, second, balloon) {
///         CThermometer::ReadIniFile(GraphProfile());
///     }
///     long ReadIniFile(char* path) override { return melkar::ReadKeys(KeyRows::rows, *this, path, m_strSection), 0; }
///     static melkar::ClassKeys ProfileKeys() { return {"CThermometer", melkar::InfoOf(KeyRows::rows)}; }
///
/// protected:
///     int m_nMax = 0, m_bScale = 0, m_nScaleSize = 0;
///     COLORREF m_crColumn = 0, m_crFrame = 0;
///
/// private:
///     struct KeyRows : melkar::Keys<CThermometer> {
///         static constexpr Gate Scale{"SCALE", On<&G::m_bScale>};
///         static constexpr Row rows[] = {
///             Number<&G::m_nMax>(Own, "MAX", 40, "top of the scale").Example("60"),
///             Color<&G::m_crColumn>(Own, "COLUMN_RGB", "the column"),
///             Color<&G::m_crFrame>(Own, "FRAME_RGB", "its frame").Else<&G::m_crColumn>("COLUMN_RGB"),
///             TrueWord<&G::m_bScale>(Own, "SCALE", "the scale exists"),
///             Number<&G::m_nScaleSize>(Own, "SCALE_SIZE", 12, "scale labels, points").When(Scale),
///         };
///     };
/// };
/// @endcode
///
/// Rows are read from the first to the last, so a gate and a member that stands in for a missing key come first.

namespace melkar {

class ProfileSnapshot;
struct ProfileFile;

/// Which section of the profile holds the key: the graph's own, or COMMON.
enum class KeySection : std::uint8_t { Own, Common };

/// How the value of a key is read.
enum class KeyType : std::uint8_t {
    Text,     ///< as it stands, with a line feed for every "__YN__"
    Message,  ///< text with a line feed for every " __n__ "
    Number,   ///< a whole number
    Switch,   ///< a number; 1 if it is above 0, else 0
    TrueWord, ///< 1 if the value is the word "true" in any case, else 0
    Real,     ///< a number with decimals
    Color,    ///< "red,green,blue"
    Point,    ///< "x,y"
};

/// What a key is to who checks profiles, beyond its type; no graph asks.
enum class KeyRole : std::uint8_t {
    Plain,
    Idle,         ///< kept: nothing is painted by it
    Figure,       ///< a text that has to be a number
    Format,       ///< a text that is the format of one figure
    Face,         ///< a text that names a font
    TextColor,    ///< of texts on the ground `with`
    TitleColor,   ///< the same; in the colour of the ground they are hidden, and keep their room
    MarkColor,    ///< of marks on the ground `with`
    PlainColor,   ///< of all texts that no other key has a colour for, in the place of black
    Ground,       ///< a colour that such texts stand on
    ScaleTop,     ///< end of the scale that begins at `with`
    FreeScaleTop, ///< the same; at or below that there is no such scale
    ScaleStep,    ///< step of the scale that ends at `with`
    ScaleParts,   ///< into how many parts the scale that ends at `with` is divided
    Box,          ///< left and top of a box, from those of the picture; right and bottom are `with`
    TitleBox,     ///< the same with a distance from the right, `with`, and a height, `beside`; none has no box
};

/// What a profile's author needs to know of a key.
struct KeyInfo {
    KeySection section;  ///< where it stands
    const char* name;    ///< with "%d" in it: one key for each of a numbered row; with "%s": named by the graph's maker
    KeyType type;        ///< how it is read
    int fallback;        ///< of numbers, switches and colours; other values start empty, at 0 or at (0, 0)
    const char* meaning; ///< what it sets, in a few words
    const char* fallbackText = ""; ///< of texts
    const char* fallbackKey = "";  ///< the key whose value stands in for a missing one, if there is such a key
    const char* gate = "";         ///< the key of the switch without which this one isn't read, if there is one
    const char* example = "";      ///< a value as it may stand in the profile; see `ExampleOf`
    int firstIndex = 0;            ///< what "%d" counts from
    KeyRole role = KeyRole::Plain; ///< what it is to who checks profiles
    const char* with = "";         ///< the other key that the role speaks of
    const char* beside = "";       ///< of a colour: key of one that stands next to it, for people to tell apart
    const char* instead = "";      ///< a key that does as well where a chart needs this one
};

/// A value of the key as it may stand in a profile: its own example, or one that its type suggests.
MELKAR_API std::string ExampleOf(const KeyInfo& key);
/// What a missing key stands for, in words: a figure, "empty", "black", "as BASE_RGB".
MELKAR_API std::string FallbackOf(const KeyInfo& key);

/// The keys of one class.
struct ClassKeys {
    const char* className;     ///< as in the source
    std::vector<KeyInfo> keys; ///< in the order in which they are read
};

constexpr int kMostCounted = 10;      ///< a numbered row for a counted array ends here
constexpr int kMostListItems = 10000; ///< a list that grows with its numbered row ends here: nobody reads more

constexpr const char* kGraphProfile = "..\\conf\\graph.cnf"; ///< of all graphs
/// The same for `ReadIniFile`, which takes a pointer that it could write to; nobody does.
MELKAR_API char* GraphProfile();

/// One reading of a profile, as seen by one graph.
class MELKAR_API KeyReader {
public:
    /// @param path empty for the profile of all graphs @param ownSection name of the graph's own section @param stem
    /// stands for "%s" in the name of a key
    KeyReader(const char* path, const char* ownSection, const char* stem = "");

    /// @name Values
    /// @{

    /// The value of a key, or what stands for a missing one; `index` counts the keys of a numbered row.
    CString Text(const KeyInfo& key, int index = 0) const;
    int Number(const KeyInfo& key, int index = 0) const;
    COLORREF Color(const KeyInfo& key, int index = 0) const;
    float Real(const KeyInfo& key) const;
    POINT Point(const KeyInfo& key) const;
    /// @}

    /// One line in the log if the profile can't be read or lacks the graph's own section: all keys are at their
    /// defaults then, and a chart of defaults is black.
    void LogWhatIsMissing() const;

private:
    MELKAR_LOCAL const std::string* Find(const KeyInfo& key, int index) const;

    std::shared_ptr<const ProfileSnapshot> m_file;
    std::string m_own;
    std::string m_stem;
};

/// While it lives, the graphs that this thread makes take their keys from one reading of the profile of all graphs: a
/// sheet of seven is made of one state of it, and reads it once. The file is read with the first key.
class MELKAR_API SharedProfile {
public:
    SharedProfile();
    ~SharedProfile(); ///< what an outer one shares is shared again
    SharedProfile(const SharedProfile&) = delete;
    SharedProfile& operator=(const SharedProfile&) = delete;

private:
    friend class KeyReader;
    MELKAR_LOCAL std::shared_ptr<const ProfileSnapshot> Read(const std::string& ownSection);

    std::shared_ptr<const ProfileFile> m_file;
    std::shared_ptr<const ProfileSnapshot> m_last;
    HostPlace m_host; ///< of the file
    SharedProfile* m_outer;
};

namespace detail {

/// The field `Inner` of the member `Outer`.
template <auto Outer, auto Inner> struct Nested {};

template <class Graph, class Member> auto& Of(Graph& graph, Member member) { return graph.*member; }
template <class Graph, auto Outer, auto Inner> auto& Of(Graph& graph, Nested<Outer, Inner>) {
    return graph.*Outer.*Inner;
}

template <class Target, class Value> void Assign(Target& target, const Value& value) {
    if constexpr (std::is_arithmetic_v<Target>)
        target = static_cast<Target>(value);
    else
        target = value;
}

} // namespace detail

/// A field of a member that is a struct, as the target of a key.
template <auto Outer, auto Inner> constexpr detail::Nested<Outer, Inner> In{};

/// The switch that lets other keys be read: its key, and how it stands in a graph.
template <class Graph> struct KeyGate {
    const char* key;            ///< its name
    bool (*isOn)(const Graph&); ///< whether it is on in a graph that has read it
};

/// One row: the key, and how its value gets into a graph.
template <class Graph> struct KeyRow {
    KeyInfo info;                                            ///< the key
    void (*store)(Graph&, const KeyReader&, const KeyInfo&); ///< puts its value into the graph
    bool (*isOn)(const Graph&) = nullptr;                    ///< the gate; null lets the key be read always
    void (*standIn)(const Graph&, KeyInfo&) = nullptr;       ///< puts the value of the fallback key into the row

    /// Read only while that switch is on; the member keeps its value otherwise.
    constexpr KeyRow When(KeyGate<Graph> gate) const {
        KeyRow row = *this;
        row.info.gate = gate.key;
        row.isOn = gate.isOn;
        return row;
    }
    /// The default of a colour.
    constexpr KeyRow Else(int fallback) const {
        KeyRow row = *this;
        row.info.fallback = fallback;
        return row;
    }
    /// The default of a text.
    constexpr KeyRow Else(const char* fallback) const {
        KeyRow row = *this;
        row.info.fallbackText = fallback;
        return row;
    }
    /// A missing key has the value of that member, which the key `key` has set.
    template <auto Member> constexpr KeyRow Else(const char* key) const {
        KeyRow row = *this;
        row.info.fallbackKey = key;
        row.standIn = [](const Graph& graph, KeyInfo& info) {
            if constexpr (std::is_integral_v<std::remove_cv_t<std::remove_reference_t<decltype(graph.*Member)>>>)
                info.fallback = static_cast<int>(graph.*Member);
            else
                info.fallbackText = graph.*Member;
        };
        return row;
    }
    /// A value for the key reference.
    constexpr KeyRow Example(const char* value) const {
        KeyRow row = *this;
        row.info.example = value;
        return row;
    }

    /// @name For who checks profiles
    /// @{

    /// The key is to them what the role of that name tells.
    constexpr KeyRow Idle() const { return As(KeyRole::Idle); }
    constexpr KeyRow Figure() const { return As(KeyRole::Figure); }
    constexpr KeyRow Format() const { return As(KeyRole::Format); }
    constexpr KeyRow Face() const { return As(KeyRole::Face); }
    constexpr KeyRow TextOn(const char* ground) const { return As(KeyRole::TextColor, ground); }
    constexpr KeyRow TitleOn(const char* ground) const { return As(KeyRole::TitleColor, ground); }
    constexpr KeyRow MarkOn(const char* ground) const { return As(KeyRole::MarkColor, ground); }
    constexpr KeyRow ForPlainTexts() const { return As(KeyRole::PlainColor); }
    constexpr KeyRow UnderText() const { return As(KeyRole::Ground); }
    constexpr KeyRow TopFrom(const char* bottom) const { return As(KeyRole::ScaleTop, bottom); }
    constexpr KeyRow FreeTopFrom(const char* bottom) const { return As(KeyRole::FreeScaleTop, bottom); }
    constexpr KeyRow StepTo(const char* top) const { return As(KeyRole::ScaleStep, top); }
    constexpr KeyRow PartsTo(const char* top) const { return As(KeyRole::ScaleParts, top); }
    constexpr KeyRow BoxTo(const char* rightBottom) const { return As(KeyRole::Box, rightBottom); }
    constexpr KeyRow TitleBoxTo(const char* right, const char* height) const {
        return As(KeyRole::TitleBox, right).Beside(height);
    }
    /// @}

    /// The colour stands next to that of another key; of its own numbered row: next to the following one.
    constexpr KeyRow Beside(const char* key) const {
        KeyRow row = *this;
        row.info.beside = key;
        return row;
    }
    /// A chart that needs this key can do with that one in its place.
    constexpr KeyRow Or(const char* key) const {
        KeyRow row = *this;
        row.info.instead = key;
        return row;
    }

private:
    constexpr KeyRow As(KeyRole role, const char* with = "") const {
        KeyRow row = *this;
        row.info.role = role;
        row.info.with = with;
        return row;
    }
};

/// Makes the rows of one class, whose table derives from it; each value may feed several members (or fields of them,
/// by `In`).
template <class Graph> struct Keys {
    using G = Graph;                                         ///< the class, for `&G::m_member`
    using K = Keys;                                          ///< this
    using Row = KeyRow<Graph>;                               ///< a row of the table
    using Gate = KeyGate<Graph>;                             ///< a switch that rows can wait for
    static constexpr KeySection Own = KeySection::Own;       ///< in the graph's own section
    static constexpr KeySection Common = KeySection::Common; ///< in section COMMON

    /// A text, into CString members. @param at section @param name of the key @param says what it sets, of all rows
    template <auto... Members> static constexpr Row Text(KeySection at, const char* name, const char* says) {
        return {{at, name, KeyType::Text, 0, says}, StoreText<Members...>};
    }
    /// A text with a line feed for every " __n__ ".
    template <auto... Members> static constexpr Row Message(KeySection at, const char* name, const char* says) {
        return {{at, name, KeyType::Message, 0, says}, StoreText<Members...>};
    }
    /// A whole number, into members of any numeric type; `fallback` stands for a missing key.
    template <auto... Members>
    static constexpr Row Number(KeySection at, const char* name, int fallback, const char* says) {
        return {{at, name, KeyType::Number, fallback, says}, StoreNumber<Members...>};
    }
    /// 1 if the number is above 0, else 0.
    template <auto... Members> static constexpr Row Switch(KeySection at, const char* name, const char* says) {
        return {{at, name, KeyType::Switch, 0, says}, StoreNumber<Members...>};
    }
    /// 1 if the value is "true", else 0.
    template <auto... Members> static constexpr Row TrueWord(KeySection at, const char* name, const char* says) {
        return {{at, name, KeyType::TrueWord, 0, says}, StoreNumber<Members...>};
    }
    /// A number with decimals; 0 for a missing key.
    template <auto... Members> static constexpr Row Real(KeySection at, const char* name, const char* says) {
        return {{at, name, KeyType::Real, 0, says}, StoreReal<Members...>};
    }
    /// A colour; black for a missing key, or what `Else` says.
    template <auto... Members> static constexpr Row Color(KeySection at, const char* name, const char* says) {
        return {{at, name, KeyType::Color, 0, says}, StoreColor<Members...>};
    }
    /// A point; (0, 0) for a missing key.
    template <auto... Members> static constexpr Row Point(KeySection at, const char* name, const char* says) {
        return {{at, name, KeyType::Point, 0, says}, StorePoint<Members...>};
    }

    /// A numbered row of colours from 0, as many as `Count` says and at most ten.
    template <auto Array, auto Count> static constexpr Row Colors(KeySection at, const char* name, const char* says) {
        return {{at, name, KeyType::Color, 0, says}, StoreColors<Array, Count>};
    }
    /// The same of numbers with decimals, 0 where they are missing.
    template <auto Array, auto Count> static constexpr Row Decimals(KeySection at, const char* name, const char* says) {
        return {{at, name, KeyType::Text, 0, says}, StoreDecimals<Array, Count>};
    }
    /// The same of texts, into an array that grows as far as it has to.
    template <auto Array, auto Count> static constexpr Row Texts(KeySection at, const char* name, const char* says) {
        return {{at, name, KeyType::Text, 0, says}, StoreTexts<Array, Count>};
    }
    /// A numbered row of texts from 1 that ends at the first missing or empty one; `Field` of a new item of the growing
    /// `List` for each. The former items are gone.
    template <auto List, auto Field> static constexpr Row TextList(KeySection at, const char* name, const char* says) {
        return FromOne({{at, name, KeyType::Text, 0, says}, StoreList<List, Field, &KeyReader::Text>});
    }
    /// The same of colours; a missing or black one ends it.
    template <auto List, auto Field> static constexpr Row ColorList(KeySection at, const char* name, const char* says) {
        return FromOne({{at, name, KeyType::Color, 0, says}, StoreList<List, Field, &KeyReader::Color>});
    }
    /// A further colour of each item that a list has by now, numbered from 1.
    template <auto List, auto Field>
    static constexpr Row ColorOfEach(KeySection at, const char* name, const char* says) {
        return FromOne({{at, name, KeyType::Color, 0, says}, StoreOfEach<List, Field>});
    }

    /// Whether a member is on, for a gate.
    template <auto Member> static bool On(const Graph& graph) { return graph.*Member != 0; }

private:
    static constexpr Row FromOne(Row row) {
        row.info.firstIndex = 1;
        return row;
    }
    template <auto... Members, class Value> static void StoreAll(Graph& graph, const Value& value) {
        (detail::Assign(detail::Of(graph, Members), value), ...);
    }
    template <auto... Members> static void StoreText(Graph& graph, const KeyReader& reader, const KeyInfo& key) {
        StoreAll<Members...>(graph, reader.Text(key));
    }
    template <auto... Members> static void StoreNumber(Graph& graph, const KeyReader& reader, const KeyInfo& key) {
        StoreAll<Members...>(graph, reader.Number(key));
    }
    template <auto... Members> static void StoreReal(Graph& graph, const KeyReader& reader, const KeyInfo& key) {
        StoreAll<Members...>(graph, reader.Real(key));
    }
    template <auto... Members> static void StoreColor(Graph& graph, const KeyReader& reader, const KeyInfo& key) {
        StoreAll<Members...>(graph, reader.Color(key));
    }
    template <auto... Members> static void StorePoint(Graph& graph, const KeyReader& reader, const KeyInfo& key) {
        StoreAll<Members...>(graph, reader.Point(key));
    }
    /// Hands the index of each item of a counted array to `store`.
    template <auto Count, class Store> static void ForCounted(const Graph& graph, Store store) {
        for (int i = 0; i < graph.*Count && i < kMostCounted; ++i)
            store(i);
    }
    template <auto Array, auto Count>
    static void StoreColors(Graph& graph, const KeyReader& reader, const KeyInfo& key) {
        ForCounted<Count>(graph, [&](int i) { (graph.*Array)[i] = reader.Color(key, i); });
    }
    template <auto Array, auto Count>
    static void StoreDecimals(Graph& graph, const KeyReader& reader, const KeyInfo& key) {
        ForCounted<Count>(graph, [&](int i) { (graph.*Array)[i] = ToDouble(reader.Text(key, i)); });
    }
    template <auto Array, auto Count>
    static void StoreTexts(Graph& graph, const KeyReader& reader, const KeyInfo& key) {
        ForCounted<Count>(graph, [&](int i) { (graph.*Array).SetAtGrow(i, reader.Text(key, i)); });
    }
    template <auto List, auto Field, auto Read>
    static void StoreList(Graph& graph, const KeyReader& reader, const KeyInfo& key) {
        auto& list = graph.*List;
        list.clear();
        for (int index = key.firstIndex; index < key.firstIndex + kMostListItems; ++index) {
            const auto value = (reader.*Read)(key, index);
            if (value == decltype(value){})
                return;
            list.emplace_back();
            list.back().*Field = value;
        }
    }
    template <auto List, auto Field>
    static void StoreOfEach(Graph& graph, const KeyReader& reader, const KeyInfo& key) {
        int index = key.firstIndex;
        for (auto& item : graph.*List)
            item.*Field = reader.Color(key, index++);
    }
};

/// Reads a class's keys into the graph.
template <class Graph, std::size_t Count>
void ReadKeys(const KeyRow<Graph> (&rows)[Count], Graph& graph, const KeyReader& reader) {
    for (const KeyRow<Graph>& row : rows) {
        if (row.isOn && !row.isOn(graph))
            continue;
        KeyInfo key = row.info;
        if (row.standIn)
            row.standIn(graph, key);
        row.store(graph, reader, key);
    }
}

/// The same from the section of a profile, found from where the graph's own is.
template <class Graph, std::size_t Count>
void ReadKeys(const KeyRow<Graph> (&rows)[Count], Graph& graph, const char* path, const char* ownSection) {
    const HostDirectory here(detail::HostOf(graph, 0));
    ReadKeys(rows, graph, KeyReader(path, ownSection));
}

/// The rows without their targets, for who documents or checks profiles.
template <class Graph, std::size_t Count> std::vector<KeyInfo> InfoOf(const KeyRow<Graph> (&rows)[Count]) {
    std::vector<KeyInfo> keys;
    for (const KeyRow<Graph>& row : rows)
        keys.push_back(row.info);
    return keys;
}

} // namespace melkar
