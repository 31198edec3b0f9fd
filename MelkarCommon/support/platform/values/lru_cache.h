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
    Entry* Find(const Key& key) {
        const auto found = index_.find(key);
        if (found == index_.end())
            return nullptr;
        entries_.splice(entries_.begin(), entries_, found->second);
        return &*found->second;
    }

    /// Adds an entry whose key isn't there yet.
    Entry& Add(Entry entry) {
        entries_.push_front(std::move(entry));
        index_.emplace(entries_.front().Key(), entries_.begin());
        return entries_.front();
    }

    std::size_t Size() const { return entries_.size(); }
    const Entry& Oldest() const { return entries_.back(); }

    void DropOldest() {
        index_.erase(entries_.back().Key());
        entries_.pop_back();
    }

private:
    std::list<Entry> entries_; ///< youngest first
    std::unordered_map<Key, typename std::list<Entry>::iterator, Hash> index_;
};

} // namespace melkar
