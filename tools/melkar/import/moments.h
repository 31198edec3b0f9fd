#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// @file
/// Days and times as texts have them. A time is that of the clock that wrote it: no zone is converted, so that a walk
/// at 23:30 stays on its day.

namespace melkar::importer {

/// A day of the calendar and a time of it.
struct Moment {
    int day = 0;          ///< days since 1970-01-01
    int second = 0;       ///< of the day; 0 without a time
    bool hasTime = false; ///< whether one was told
    bool isUtc = false;   ///< told in UTC, which is nobody's clock
};

constexpr int kSecondsADay = 86400;

/// How dates are written: `YYYY` or `YY`, `MM` (`MMM`: an English name), `DD`, and for times `hh`, `mm`, `ss`; anything
/// else stands for itself. One digit will do for two, where something stands between.
class MomentFormat {
public:
    /// None if the pattern doesn't tell day, month and year.
    static std::optional<MomentFormat> Parse(const std::string& pattern);
    /// The year first, which can't be mistaken: 2026-03-31, 2026/03/31, 20260331.
    static MomentFormat Usual();

    /// None if the text isn't one from 1900 to 2199. A time may stand behind a date, in any usual form.
    std::optional<Moment> Read(std::string_view text) const;
    const std::string& Example() const { return m_patterns.front(); }

private:
    explicit MomentFormat(std::vector<std::string> patterns) : m_patterns(std::move(patterns)) {}

    std::vector<std::string> m_patterns;
};

std::string ShowDay(int day); ///< YYYYMMDD
/// By a pattern as above, in which `DDD` is an English weekday, and one letter for day or month drops its zero.
std::string ShowDay(int day, std::string_view pattern);
std::string ShowTime(int second); ///< hh:mm
int WeekdayOf(int day);           ///< Monday 1 to Sunday 7

} // namespace melkar::importer
