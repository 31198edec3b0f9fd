#include <MelkarCommon/support/dates.h>

#include <MelkarCommon/platform/datetime.h>
#include <MelkarCommon/platform/files/profile_snapshot.h>
#include <MelkarCommon/platform/values/ascii.h>
#include <MelkarCommon/platform/values/locales.h>
#include <MelkarCommon/support/keep_locale.h>
#include <MelkarCommon/support/support.h>

#include <atomic>
#include <clocale>
#include <cstring>
#include <utility>

namespace {

constexpr int kDateLength = 8; // YYYYMMDD
constinit std::atomic<int> g_keepers{0};
constinit thread_local melkar::SharedDateFormats* g_shared = nullptr;

std::shared_ptr<const melkar::ProfileSnapshot> ReadDateProfile() {
    return melkar::ReadProfile(melkar::kSystemProfile, "SYSTEM", melkar::ReadingFor::Dates);
}

/// Callers are promised a process in the "C" locale after a date in a named one, unless they ask for their own. It is
/// set only if it is anything else, so that threads that format dates at once don't write it.
void PutProcessLocaleBack() {
    if (g_keepers > 0)
        return;
    const char* current = std::setlocale(LC_ALL, nullptr);
    if (!current || std::strcmp(current, "C") != 0)
        std::setlocale(LC_ALL, "C");
}

} // namespace

melkar::KeepLocale::KeepLocale() { ++g_keepers; }
melkar::KeepLocale::~KeepLocale() { --g_keepers; }

CString FormatDate(CString date, CString format, CString locale) {
    if (date.GetLength() < kDateLength)
        return date;
    COleDateTime day;
    const auto number = [&](std::size_t from, std::size_t count) {
        return melkar::ParseInt(date.View().substr(from, count));
    };
    day.SetDateTime(number(0, 4), number(4, 2), number(6, 2), 0, 0, 0);
    const melkar::ScopedFormatLocale language(locale);
    if (!locale.IsEmpty())
        PutProcessLocaleBack();
    return day.IsValid() ? day.Format(format) : date;
}

melkar::SharedDateFormats::SharedDateFormats() : m_outer(std::exchange(g_shared, this)) {}
melkar::SharedDateFormats::~SharedDateFormats() { g_shared = m_outer; }

std::shared_ptr<const melkar::ProfileSnapshot> melkar::SharedDateFormats::Read() {
    if (!m_profile)
        m_profile = ReadDateProfile();
    return m_profile;
}

CString melkar::DateFormat(const char* key) {
    constexpr std::size_t kLongestFormat = 99; // bytes
    const bool isShared = g_shared && g_shared->m_host == HostPlace();
    const auto profile = isShared ? g_shared->Read() : ReadDateProfile();
    const std::string* format = profile->FindOwn(key);
    return format ? format->substr(0, kLongestFormat).c_str() : "%m/%d/%Y";
}

CString FormatDateEx(CString date, CString key, CString locale) {
    return FormatDate(date, melkar::DateFormat(key), locale);
}
