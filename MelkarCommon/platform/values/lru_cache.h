#pragma once

#include <cstddef>
#include <list>
#include <unordered_map>
#include <utility>

/// @file
/// Internal. The entries used last, found by key. For one thread.

namespace melkar {

/// `Entry::Key()` gives an entry's key, which may point into the entry: entries never move. A look-up allocates
/// nothing.
template <class Key, class Entry, class Hash> class LruCache {
public:
    /// The entry of a key, now the youngest; null if there is none. Stays until it is dropped.
    /// Mostly it is the one that was found last: a text is measured and painted, and so is the next one of its face.
    Entry* Find(const Key& key) {
        if (!m_entries.empty() && m_entries.front().Key() == key)
            return &m_entries.front();
        const auto found = m_index.find(key);
        if (found == m_index.end())
            return nullptr;
        m_entries.splice(m_entries.begin(), m_entries, found->second);
        return &*found->second;
    }

    /// Adds an entry whose key isn't there yet.
    Entry& Add(Entry entry) {
        std::list<Entry> added; // with its key or not at all
        added.push_front(std::move(entry));
        m_index.emplace(added.front().Key(), added.begin());
        m_entries.splice(m_entries.begin(), added);
        return m_entries.front();
    }

    std::size_t Size() const { return m_entries.size(); }
    const Entry& Oldest() const { return m_entries.back(); }

    void DropOldest() {
        m_index.erase(m_entries.back().Key());
        m_entries.pop_back();
    }

private:
    std::list<Entry> m_entries; ///< youngest first
    std::unordered_map<Key, typename std::list<Entry>::iterator, Hash> m_index;
};

} // namespace melkar
