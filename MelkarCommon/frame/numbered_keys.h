#pragma once

#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/support/numbers.h>

/// @file
/// Rows for numbered keys that aren't colours: as many as the member `Count` says, at most ten.

namespace melkar {

template <class Graph> struct NumberedKeys {
    /// Numbers with decimals, 0 where they are missing.
    template <auto Array, auto Count>
    static constexpr KeyRow<Graph> Decimals(KeySection at, const char* name, const char* says) {
        return {{at, name, KeyType::Text, 0, says}, StoreDecimals<Array, Count>};
    }
    /// Texts, into an array that grows as far as it has to.
    template <auto Array, auto Count>
    static constexpr KeyRow<Graph> Texts(KeySection at, const char* name, const char* says) {
        return {{at, name, KeyType::Text, 0, says}, StoreTexts<Array, Count>};
    }

private:
    static constexpr int kMostItems = 10;

    template <auto Array, auto Count>
    static void StoreDecimals(Graph& graph, const KeyReader& reader, const KeyInfo& key) {
        for (int i = 0; i < graph.*Count && i < kMostItems; ++i)
            (graph.*Array)[i] = ToDouble(reader.Text(key, i));
    }
    template <auto Array, auto Count>
    static void StoreTexts(Graph& graph, const KeyReader& reader, const KeyInfo& key) {
        for (int i = 0; i < graph.*Count && i < kMostItems; ++i)
            (graph.*Array).SetAtGrow(i, reader.Text(key, i));
    }
};

} // namespace melkar
