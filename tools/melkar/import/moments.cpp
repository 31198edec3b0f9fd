#include "moments.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <chrono>
#include <cstdio>

namespace melkar::importer {
namespace {

constexpr int kFirstYear = 1900;
constexpr int kLastYear = 2199;
constexpr std::array<const char*, 12> kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                 "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr std::array<const char*, 7> kWeekdays = {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
constexpr std::string_view kTokens = "YMDhms";

bool IsDigit(char letter) { return letter >= '0' && letter <= '9'; }
bool IsLetter(char letter) { return std::isalpha(static_cast<unsigned char>(letter)) != 0; }
bool IsToken(char letter) { return kTokens.find(letter) != std::string_view::npos; }

/// What is left of a text. Each `Take` moves on if it finds what it looks for, and says whether it did.
class Cursor {
public:
    explicit Cursor(std::string_view text) : m_left(text) {}

    bool IsAtEnd() const { return m_left.empty(); }
    bool Take(char letter) {
        const bool is = !m_left.empty() && m_left.front() == letter;
        m_left.remove_prefix(is ? 1 : 0);
        return is;
    }
    bool TakeNumber(std::size_t fewest, std::size_t most, int& number) {
        std::size_t count = 0;
        int value = 0;
        for (; count < most && count < m_left.size() && IsDigit(m_left[count]); ++count)
            value = value * 10 + (m_left[count] - '0');
        if (count < fewest)
            return false;
        m_left.remove_prefix(count);
        number = value;
        return true;
    }
    /// One of the names, short or written out. @param place from 1
    template <std::size_t Count> bool TakeName(const std::array<const char*, Count>& names, int& place) {
        const auto same = [this](const char* name) {
            return std::equal(name, name + 3, m_left.begin(), [](char a, char b) {
                return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
            });
        };
        const auto found = m_left.size() < 3 ? names.end() : std::find_if(names.begin(), names.end(), same);
        if (found == names.end())
            return false;
        place = static_cast<int>(found - names.begin()) + 1;
        TakeLetters();
        return true;
    }
    std::size_t TakeLetters() {
        const auto end = std::find_if_not(m_left.begin(), m_left.end(), IsLetter);
        const auto count = static_cast<std::size_t>(end - m_left.begin());
        m_left.remove_prefix(count);
        return count;
    }
    std::size_t Digits() const {
        return static_cast<std::size_t>(std::find_if_not(m_left.begin(), m_left.end(), IsDigit) - m_left.begin());
    }

private:
    std::string_view m_left;
};

/// Year to second, as they are found.
struct Parts {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    bool hasTime = false;
    bool isUtc = false;
};

bool ReadToken(Cursor& text, char letter, std::size_t count, bool isTight, Parts& parts) {
    const std::size_t fewest = isTight ? count : 1;
    const std::size_t most = std::max<std::size_t>(count, 2);
    int ignored = 0;
    switch (letter) {
    case 'Y':
        if (count == 2 && text.TakeNumber(2, 2, parts.year))
            parts.year += 2000;
        else if (count == 2 || !text.TakeNumber(4, 4, parts.year))
            return false;
        return true;
    case 'M':
        return count > 2 ? text.TakeName(kMonths, parts.month) : text.TakeNumber(fewest, most, parts.month);
    case 'D':
        return count > 2 ? text.TakeName(kWeekdays, ignored) : text.TakeNumber(fewest, most, parts.day);
    case 'h':
        parts.hasTime = true;
        return text.TakeNumber(fewest, most, parts.hour);
    case 'm':
        return text.TakeNumber(fewest, most, parts.minute);
    default:
        return text.TakeNumber(fewest, most, parts.second);
    }
}

bool ReadPattern(Cursor& text, std::string_view pattern, Parts& parts) {
    for (std::size_t at = 0; at < pattern.size();) {
        const char letter = pattern[at];
        if (!IsToken(letter)) {
            if (!text.Take(letter))
                return false;
            ++at;
            continue;
        }
        const std::size_t end = std::min(pattern.find_first_not_of(letter, at), pattern.size());
        const bool isTight = (at > 0 && IsToken(pattern[at - 1])) || (end < pattern.size() && IsToken(pattern[end]));
        if (!ReadToken(text, letter, end - at, isTight, parts))
            return false;
        at = end;
    }
    return true;
}

void TakeZone(Cursor& text, Parts& parts) {
    if (text.Take('+') || text.Take('-')) {
        int ignored = 0;
        text.TakeNumber(2, 2, ignored);
        text.Take(':');
        text.TakeNumber(2, 2, ignored);
    } else if (text.TakeLetters() > 0) { // Z, or a name such as UTC
        parts.isUtc = true;
    }
}

bool TakeHalf(Cursor& text, Parts& parts) {
    const bool isAfternoon = text.Take('P') || text.Take('p');
    if (!isAfternoon && !text.Take('A') && !text.Take('a'))
        return true;
    if (!(text.Take('M') || text.Take('m')) || parts.hour < 1 || parts.hour > 12)
        return false;
    parts.hour = parts.hour % 12 + (isAfternoon ? 12 : 0);
    return true;
}

/// "T08:15", " 8:15:30.25 pm", "T081530+0900", and nothing.
bool ReadTime(Cursor& text, Parts& parts) {
    if (text.IsAtEnd())
        return true;
    if (!text.Take('T'))
        while (text.Take(' ')) {
        }
    parts.hasTime = true;
    const bool isTight = text.Digits() >= 4;
    if (!text.TakeNumber(1, 2, parts.hour) || !(isTight || text.Take(':')) || !text.TakeNumber(2, 2, parts.minute))
        return false;
    if (isTight ? text.Digits() >= 2 : text.Take(':'))
        if (!text.TakeNumber(2, 2, parts.second))
            return false;
    constexpr std::size_t kMostDigits = 9;
    int ignored = 0;
    if (text.Take('.') && !text.TakeNumber(1, kMostDigits, ignored))
        return false;
    while (text.Take(' ')) {
    }
    if (!TakeHalf(text, parts))
        return false;
    while (text.Take(' ')) {
    }
    TakeZone(text, parts);
    return text.IsAtEnd();
}

std::optional<Moment> MomentOf(const Parts& parts) {
    namespace ch = std::chrono;
    const ch::year_month_day date{ch::year(parts.year), ch::month(static_cast<unsigned>(parts.month)),
                                  ch::day(static_cast<unsigned>(parts.day))};
    const bool isTime = parts.hour < 24 && parts.minute < 60 && parts.second < 60;
    if (!date.ok() || parts.year < kFirstYear || parts.year > kLastYear || !isTime)
        return std::nullopt;
    const int second = (parts.hour * 60 + parts.minute) * 60 + parts.second;
    const auto days = ch::sys_days(date).time_since_epoch().count();
    return Moment{static_cast<int>(days), second, parts.hasTime, parts.isUtc};
}

std::chrono::year_month_day DateOf(int day) { return std::chrono::sys_days(std::chrono::days(day)); }

std::string Digits(unsigned number, std::size_t count) {
    std::string text = std::to_string(number);
    return text.size() < count ? std::string(count - text.size(), '0') + text : text;
}

std::string ShowToken(char letter, std::size_t count, int day) {
    const auto date = DateOf(day);
    const auto month = static_cast<unsigned>(date.month());
    const auto year = static_cast<unsigned>(static_cast<int>(date.year()));
    switch (letter) {
    case 'Y':
        return count == 2 ? Digits(year % 100, 2) : Digits(year, 4);
    case 'M':
        return count > 2 ? kMonths[month - 1] : Digits(month, count);
    case 'D':
        return count > 2 ? kWeekdays[static_cast<std::size_t>(WeekdayOf(day)) - 1]
                         : Digits(static_cast<unsigned>(date.day()), count);
    default:
        return std::string(count, letter);
    }
}

} // namespace

std::optional<MomentFormat> MomentFormat::Parse(const std::string& pattern) {
    for (const char letter : {'Y', 'M', 'D'})
        if (pattern.find(letter) == std::string::npos)
            return std::nullopt;
    return MomentFormat({pattern});
}

MomentFormat MomentFormat::Usual() { return MomentFormat({"YYYY-MM-DD", "YYYY/MM/DD", "YYYYMMDD"}); }

std::optional<Moment> MomentFormat::Read(std::string_view text) const {
    for (const std::string& pattern : m_patterns) {
        Cursor cursor(text);
        Parts parts;
        if (ReadPattern(cursor, pattern, parts) && ReadTime(cursor, parts))
            if (const auto moment = MomentOf(parts))
                return moment;
    }
    return std::nullopt;
}

std::string ShowDay(int day) { return ShowDay(day, "YYYYMMDD"); }

std::string ShowDay(int day, std::string_view pattern) {
    std::string text;
    for (std::size_t at = 0; at < pattern.size();) {
        const std::size_t end = std::min(pattern.find_first_not_of(pattern[at], at), pattern.size());
        text += ShowToken(pattern[at], end - at, day);
        at = end;
    }
    return text;
}

std::string ShowTime(int second) {
    return Digits(static_cast<unsigned>(second / 3600), 2) + ":" + Digits(static_cast<unsigned>(second / 60 % 60), 2);
}

int WeekdayOf(int day) {
    const std::chrono::weekday weekday{std::chrono::sys_days(std::chrono::days(day))};
    return static_cast<int>(weekday.iso_encoding());
}

} // namespace melkar::importer
