#pragma once

#include <MelkarCommon/api.h>

#include <string>
#include <string_view>

/// @file
/// Byte strings.

/// Byte string in UTF-8 or the machine's code page; copying copies the bytes, nothing throws but a
/// lack of memory. Positions and lengths are bytes; those out of range are cut to what is there.
class MELKAR_API CString {
public:
    CString() = default;
    /// A copy of the text; null counts as empty.
    CString(const char* text) : m_text(text ? text : "") {}   // NOLINT: implicit on purpose
    CString(const char* text, int length);                    ///< at most `length` bytes, fewer at a NUL
    explicit CString(std::string_view text) : m_text(text) {} ///< a copy of the bytes, NULs included

    /// The bytes with a NUL behind them, valid until the text changes.
    operator const char*() const { return m_text.c_str(); }           // NOLINT: implicit on purpose
    const char* GetString() const { return m_text.c_str(); }          ///< the same
    std::string_view View() const { return m_text; }                  ///< the bytes, valid until the text changes
    int GetLength() const { return static_cast<int>(m_text.size()); } ///< bytes
    bool IsEmpty() const { return m_text.empty(); }                   ///< whether it has no byte
    void Empty() { m_text.clear(); }                                  ///< no byte is left

    /// Replaces the text by the formatted arguments; numbers are written as in the "C" locale,
    /// whatever locale the host has set.
    void Format(const char* format, ...) __attribute__((format(printf, 2, 3)));

    CString Left(int count) const;                   ///< the first bytes
    CString Right(int count) const;                  ///< the last bytes
    CString Mid(int first) const;                    ///< the bytes from a position on
    CString Mid(int first, int count) const;         ///< `count` of them
    int Find(const char* what, int from = 0) const;  ///< position, or -1
    int Find(char what, int from = 0) const;         ///< position, or -1
    int Replace(const char* what, const char* with); ///< number of replacements; none for an empty `what`
    CString& MakeLower();                            ///< ASCII letters only
    int Compare(const char* other) const;            ///< by bytes: below 0, 0, above 0

    CString& operator+=(const CString& tail); ///< appends a text
    CString& operator+=(const char* tail);    ///< appends a text; null counts as empty
    CString& operator+=(char tail);           ///< appends a byte

private:
    std::string m_text;
};

/// @name Joined and compared texts
/// @{

/// Both work on bytes, whatever they stand for.
MELKAR_API CString operator+(const CString& a, const CString& b);
MELKAR_API CString operator+(const CString& a, const char* b);
MELKAR_API CString operator+(const char* a, const CString& b);

inline bool operator==(const CString& a, const CString& b) { return a.View() == b.View(); }
inline bool operator==(const CString& a, const char* b) { return a.Compare(b) == 0; }
inline bool operator==(const char* a, const CString& b) { return b.Compare(a) == 0; }
inline bool operator!=(const CString& a, const CString& b) { return !(a == b); }
inline bool operator!=(const CString& a, const char* b) { return !(a == b); }
inline bool operator!=(const char* a, const CString& b) { return !(a == b); }
inline bool operator<(const CString& a, const CString& b) { return a.View() < b.View(); }
/// @}
