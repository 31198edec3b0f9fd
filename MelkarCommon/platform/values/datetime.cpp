#include <MelkarCommon/platform/datetime.h>

#include <MelkarCommon/platform/values/locales.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <ctime>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t kLongestFormatted = std::size_t{64} * 1024;

/// The locale objects of this thread. Opening one costs far more than a date; unknown names are kept as "C".
class LocaleCache {
public:
    LocaleCache() = default;
    LocaleCache(const LocaleCache&) = delete;
    LocaleCache& operator=(const LocaleCache&) = delete;
    ~LocaleCache() { Clear(); }

    locale_t Get(const char* name) {
        for (const auto& [known, locale] : m_locales)
            if (known == name)
                return locale;
        if (m_locales.size() >= kMostKept && scopes == 0)
            Clear();
        const locale_t opened = melkar::OpenLocale(name);
        return m_locales.emplace_back(name, opened ? opened : melkar::CLocale()).second;
    }

    locale_t current = nullptr; ///< null: as the process, or the thread, stands
    int scopes = 0;             ///< alive on this thread; they hold on to locales

private:
    static constexpr std::size_t kMostKept = 16;

    void Clear() {
        for (const auto& [name, locale] : m_locales)
            if (locale != melkar::CLocale())
                freelocale(locale);
        m_locales.clear();
    }

    std::vector<std::pair<std::string, locale_t>> m_locales;
};

LocaleCache& Locales() {
    thread_local LocaleCache cache;
    return cache;
}

std::chrono::sys_days Day(int year, int month, int day) {
    return std::chrono::year(year) / std::chrono::month(static_cast<unsigned>(month)) /
           std::chrono::day(static_cast<unsigned>(day));
}

bool IsDay(int year, int month, int day) {
    using std::chrono::year_month_day;
    if (year < 100 || year > 9999 || month < 1 || month > 12 || day < 1 || day > 31)
        return false;
    return year_month_day(Day(year, month, day)).month() == std::chrono::month(static_cast<unsigned>(month));
}

bool IsTime(int hour, int minute, int second) {
    return hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 && second < 60;
}

std::size_t FormatIn(locale_t locale, std::span<char> text, const std::string& pattern, const std::tm& moment) {
    return locale ? strftime_l(text.data(), text.size(), pattern.c_str(), &moment, locale)
                  : std::strftime(text.data(), text.size(), pattern.c_str(), &moment);
}

/// "" for a result that doesn't fit. The mark at the end tells an empty result from one that is too long.
CString FormatMoment(const char* pattern, const std::tm& moment) {
    const std::string marked = std::string(pattern) + '.';
    const auto formatted = [&](std::span<char> room) -> std::optional<CString> {
        const std::size_t length = FormatIn(Locales().current, room, marked, moment);
        return length > 0 ? std::optional<CString>(std::string_view(room.data(), length - 1)) : std::nullopt;
    };
    std::array<char, 256> usual;
    if (const auto text = formatted(usual))
        return *text;
    std::string all(kLongestFormatted + 2, '\0'); // with the mark and the NUL
    return formatted(all).value_or(CString());
}

} // namespace

int COleDateTime::SetDateTime(int year, int month, int day, int hour, int minute, int second) {
    m_valid = IsDay(year, month, day) && IsTime(hour, minute, second);
    if (!m_valid)
        return 1;
    m_year = year;
    m_month = month;
    m_day = day;
    m_hour = hour;
    m_minute = minute;
    m_second = second;
    return 0;
}

COleDateTime& COleDateTime::operator=(const SYSTEMTIME& time) {
    SetDateTime(time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond);
    return *this;
}

int COleDateTime::GetDayOfWeek() const {
    if (!m_valid)
        return 0;
    return static_cast<int>(std::chrono::weekday(Day(m_year, m_month, m_day)).c_encoding()) + 1;
}

CString COleDateTime::Format(const char* pattern) const {
    if (!m_valid || !pattern)
        return CString();
    const auto sinceNewYear = Day(m_year, m_month, m_day) - Day(m_year, 1, 1);
    std::tm moment{};
    moment.tm_year = m_year - 1900;
    moment.tm_mon = m_month - 1;
    moment.tm_mday = m_day;
    moment.tm_hour = m_hour;
    moment.tm_min = m_minute;
    moment.tm_sec = m_second;
    moment.tm_wday = GetDayOfWeek() - 1;
    moment.tm_yday = static_cast<int>(sinceNewYear.count());
    moment.tm_isdst = -1; // no zone belongs to it
    return FormatMoment(pattern, moment);
}

void GetLocalTime(SYSTEMTIME* time) {
    if (!time)
        return;
    std::timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    std::tm local{};
    localtime_r(&now.tv_sec, &local);
    time->wYear = static_cast<WORD>(local.tm_year + 1900);
    time->wMonth = static_cast<WORD>(local.tm_mon + 1);
    time->wDayOfWeek = static_cast<WORD>(local.tm_wday);
    time->wDay = static_cast<WORD>(local.tm_mday);
    time->wHour = static_cast<WORD>(local.tm_hour);
    time->wMinute = static_cast<WORD>(local.tm_min);
    time->wSecond = static_cast<WORD>(local.tm_sec);
    time->wMilliseconds = static_cast<WORD>(now.tv_nsec / 1'000'000);
}

namespace melkar {

ScopedFormatLocale::ScopedFormatLocale(const char* name) : m_former(Locales().current) {
    if (name && *name)
        Locales().current = Locales().Get(name);
    ++Locales().scopes;
}

ScopedFormatLocale::~ScopedFormatLocale() {
    Locales().current = static_cast<locale_t>(m_former);
    --Locales().scopes;
}

} // namespace melkar
