#pragma once

#include <MelkarCommon/api.h>

/// @file
/// The locale of the process, for hosts that have set one.

namespace melkar {

/// While one lives, no call of the library changes the locale of the process, on any thread. Without one, a date that
/// is formatted in a locale of its own (key LOCALE of a profile) leaves the process in "C", as it always did, and a
/// host that has called `setlocale(LC_ALL, "")` loses its own to the first chart with dates. Texts and numbers of
/// charts are the same with it and without: the library reads and writes them by locale objects. They may stand in each
/// other, and on several threads at once.
///
/// @code{.cpp}
/// const melkar::KeepLocale keep; // first in main()
/// std::setlocale(LC_ALL, "");
/// @endcode
class MELKAR_API KeepLocale {
public:
    KeepLocale();
    ~KeepLocale();
    KeepLocale(const KeepLocale&) = delete;
    KeepLocale& operator=(const KeepLocale&) = delete;
};

} // namespace melkar
