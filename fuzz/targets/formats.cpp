// Numbers, figures and dates, whose formats come from profiles too, and the services for a host's own figures.

#include "../input.h"
#include "../room.h"

#include <MelkarCommon/platform/datetime.h>
#include <MelkarCommon/support/activity_figures.h>
#include <MelkarCommon/support/figure_format.h>
#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/support.h>

#include <clocale>
#include <cmath>
#include <cstring>

namespace melkar::fuzz {
namespace {

void CheckNumbers(const CString& text) {
    const double value = ToDouble(text);
    const int whole = Truncate(value);
    const bool fits = std::abs(value) < 2e9;
    Require(fits ? whole == static_cast<int>(value) : !std::isnan(value) || whole == 0, "truncates towards zero");
    ToInt(text);
    for (const int decimals : {-1, 0, 2, 31}) {
        getDecimalNumber(text, decimals);
        Require(FormatFixed(value, decimals).GetLength() < 400, "a figure has a length");
    }
    MetsDouble2Intensity(value);
    Intensity2MetsDouble(ToInt(text));
    ChartMulDiv(ToInt(text), whole, ToInt(text));
}

void CheckFormat(const CString& format, double value) {
    constexpr int kMostConverted = 99 + 400; // the widest field, the longest number
    const FigureFormat figures(format, "%g");
    Require(figures.Of(value).GetLength() <= format.GetLength() + kMostConverted, "a format adds a figure, no more");
}

/// The levels hold together whatever they are: what is rounded up here is taken there.
void CheckLevels(const CString& text, int from, int to) {
    CStringArray levels;
    for (int level = 0; level < kLevels; ++level)
        levels.Add(text.Mid(level));
    double light = 0, moderate = 0, vigorous = 0;
    CalcLMV(&light, &moderate, &vigorous, levels, from, to);
    CalcLMV(nullptr, nullptr, nullptr, levels, to, from);
    ExistData(&levels);
    ExistExcludedData(&levels);
    CStringArray none;
    CalcLMV(&light, &moderate, &vigorous, none, from, to);
    Require(light == 0 && moderate == 0 && vigorous == 0, "no levels, no minutes");
    for (const int level : {from, to}) {
        Intensity2MetsInt(level);
        MetsInt2Intensity(level);
    }
}

/// Lines: a number, the format of a figure, a date, the format of a date, a locale.
void ReadFormats(std::string_view input) {
    Visit visit;
    const auto next = [&input] { return CString(std::string(TakeLine(input)).c_str()); };
    const CString number = next(), figure = next(), date = next(), dateFormat = next(), locale = next();
    CheckNumbers(number);
    CheckFormat(figure, ToDouble(number));
    CheckLevels(number, ToInt(figure), ToInt(date));
    visit.Give("conf/config.cnf", std::string("[SYSTEM]\nDATE=") + static_cast<const char*>(dateFormat));
    FormatDate(date, dateFormat, locale);
    FormatDateEx(date, "DATE", locale);
    Require(locale.IsEmpty() || std::strcmp(std::setlocale(LC_ALL, nullptr), "C") == 0, "the process stays in C");
    COleDateTime moment;
    const int part = ToInt(number);
    Require(moment.SetDateTime(ToInt(date), part, part, part, part, part) == (moment.IsValid() ? 0 : 1), "a moment");
    moment.Format(dateFormat);
    moment.GetDayOfWeek();
}

void SeedFormats(Seeds& seeds) {
    const std::string formats[] = {"%.1f", "%05.2e", "%g %%", "%+ -#0.30lG", "%a", "%n", "%.31f", "%100f", "%s%f", "%"};
    const std::string dates[] = {"20260228", "20240229", "00010101", "99991231", "2026022", "-1-1-1-1", "18000101x"};
    const std::string dateFormats[] = {"%m/%d/%Y", "%a %e %B", "%Ex%OS%c%+", "%%%", "%10000d", "%E", "%x\x82\xA0"};
    const std::string locales[] = {"", "C", "ja_JP.UTF-8", "de_DE", "ru_RU.KOI8-R", "no-such", "../../etc"};
    for (std::size_t i = 0; i < kHurtful.size(); ++i)
        seeds.add(std::to_string(i), kHurtful[i] + "\n" + formats[i % std::size(formats)] + "\n" +
                                         dates[i % std::size(dates)] + "\n" + dateFormats[i % std::size(dateFormats)] +
                                         "\n" + locales[i % std::size(locales)]);
    seeds.words.insert(kHurtful.begin(), kHurtful.end());
    for (const auto& words : {std::vector<std::string>(std::begin(formats), std::end(formats)),
                              std::vector<std::string>(std::begin(dates), std::end(dates)),
                              std::vector<std::string>(std::begin(dateFormats), std::end(dateFormats)),
                              std::vector<std::string>(std::begin(locales), std::end(locales))})
        seeds.words.insert(words.begin(), words.end());
}

} // namespace

extern const Target kFormats;
const Target kFormats{"formats", "lines: a number, the format of a figure, a date, its format, a locale", ReadFormats,
                      SeedFormats};

} // namespace melkar::fuzz
