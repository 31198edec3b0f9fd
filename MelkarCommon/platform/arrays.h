#pragma once

#include <MelkarCommon/platform/cstring.h>
#include <MelkarCommon/platform/types.h>

#include <cstddef>
#include <vector>

/// @file
/// Arrays that grow by `SetAtGrow` and are cut by `SetSize`. An index out of range reads as an empty
/// element and writes nothing (except `SetAtGrow`, which makes room); a negative size does nothing.

namespace melkar {

/// An array of values of one type.
template <class T> class GrowingArray {
public:
    int GetSize() const { return static_cast<int>(m_items.size()); } ///< number of elements
    bool IsEmpty() const { return m_items.empty(); }                 ///< whether there is no element
    /// A copy of the element; an empty one for an index out of range.
    T GetAt(int index) const { return Holds(index) ? m_items[static_cast<std::size_t>(index)] : T{}; }
    /// The element in place, valid until the array changes; an empty one for an index out of range.
    const T& operator[](int index) const {
        static const T kEmpty{};
        return Holds(index) ? m_items[static_cast<std::size_t>(index)] : kEmpty;
    }
    /// Replaces an element.
    void SetAt(int index, const T& value) {
        if (Holds(index))
            m_items[static_cast<std::size_t>(index)] = value;
    }
    /// Elements between the former end and `index` become empty ones. Throws std::bad_alloc.
    void SetAtGrow(int index, const T& value) {
        if (index < 0)
            return;
        if (!Holds(index))
            m_items.resize(static_cast<std::size_t>(index) + 1);
        m_items[static_cast<std::size_t>(index)] = value;
    }
    /// @return the index of the new element.
    int Add(const T& value) {
        m_items.push_back(value);
        return GetSize() - 1;
    }
    /// Cuts the array, or adds empty elements.
    void SetSize(int size) {
        if (size >= 0)
            m_items.resize(static_cast<std::size_t>(size));
    }
    void RemoveAll() { m_items.clear(); } ///< no element is left

private:
    bool Holds(int index) const { return index >= 0 && static_cast<std::size_t>(index) < m_items.size(); }

    std::vector<T> m_items;
};

} // namespace melkar

using CStringArray = melkar::GrowingArray<CString>; ///< texts
using CDWordArray = melkar::GrowingArray<DWORD>;    ///< numbers

/// An entry of `CObArray`: a pointer to four ints (left, top, right, bottom) that the array owns.
/// Null for an index out of range; valid until the array changes.
class CObEntry {
public:
    CObEntry() = default;
    explicit CObEntry(RECT* rect) : m_rect(rect) {} ///< of that rectangle, the array's

    /// @name As a pointer
    /// @{

    /// The rectangle, as a pointer to it or to its four edges; null for an index out of range.
    operator int*() const { return m_rect ? &m_rect->left : nullptr; } // NOLINT: implicit on purpose
    operator RECT*() const { return m_rect; }                          // NOLINT: implicit on purpose
    RECT* operator->() const { return m_rect; }
    RECT& operator*() const { return *m_rect; }
    int& operator[](int edge) const { return (&m_rect->left)[edge]; }
    bool operator==(std::nullptr_t) const { return m_rect == nullptr; }
    explicit operator bool() const { return m_rect != nullptr; }
    /// @}

private:
    RECT* m_rect = nullptr;
};

/// Array of rectangles that lie on the heap and belong to the array; a set copies the rectangle in.
/// Its memory is kept across `RemoveAll`, so that redrawing allocates nothing.
class CObArray {
public:
    int GetSize() const { return m_rects.GetSize(); } ///< number of rectangles
    /// As of an array of pointers: the pointer is handed out as it is, from a constant array too.
    CObEntry GetAt(int index) const {
        return index >= 0 && index < GetSize() ? CObEntry(const_cast<RECT*>(&m_rects[index])) : CObEntry();
    }
    CObEntry operator[](int index) const { return GetAt(index); } ///< the same

    /// @name Changes
    /// @{

    /// As of the other arrays.
    void SetAt(int index, const RECT& rect) { m_rects.SetAt(index, rect); }
    void SetAtGrow(int index, const RECT& rect) { m_rects.SetAtGrow(index, rect); }
    int Add(const RECT& rect) { return m_rects.Add(rect); }
    void SetSize(int size) { m_rects.SetSize(size); }
    void RemoveAll() { m_rects.RemoveAll(); }
    /// @}

private:
    melkar::GrowingArray<RECT> m_rects;
};
