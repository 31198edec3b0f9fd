#pragma once

#include <array>
#include <locale.h> // NOLINT(modernize-deprecated-headers): newlocale and uselocale
#include <string>

/// @file
/// Internal. Locale objects: the locale of the process is a thing of the host and isn't changed here.

namespace melkar {

/// The "C" locale; never freed.
locale_t CLocale();

/// A new locale object, or null if there is none of this name. A name without a character set means UTF-8 where
/// the machine has that, so "ja_JP" opens "ja_JP.UTF-8" before whatever set the bare name stands for. The empty name
/// is the locale of the environment. The caller frees it.
locale_t OpenLocale(const std::string& name);

/// Numbers are printed as in the "C" locale by this thread for one scope.
class ScopedCLocale {
public:
    ScopedCLocale() : m_former(uselocale(CLocale())) {}
    ~ScopedCLocale() { uselocale(m_former); }
    ScopedCLocale(const ScopedCLocale&) = delete;
    ScopedCLocale& operator=(const ScopedCLocale&) = delete;

private:
    locale_t m_former;
};

/// Chooses, for one scope and this thread, the locale of `COleDateTime::Format`. An empty name changes
/// nothing; an unknown one leaves the "C" locale in force. The locale of the process is not touched.
class ScopedFormatLocale {
public:
    explicit ScopedFormatLocale(const char* name);
    ~ScopedFormatLocale();
    ScopedFormatLocale(const ScopedFormatLocale&) = delete;
    ScopedFormatLocale& operator=(const ScopedFormatLocale&) = delete;

private:
    void* m_former;
};

using DayNames = std::array<std::string, 7>; ///< Monday first
/// The abbreviated day names of a locale, the empty name being that of the environment; an unknown one counts as "C".
DayNames AbbreviatedDayNames(const char* locale);

} // namespace melkar
