#include <MelkarCommon/support/figure_format.h>

#include <MelkarCommon/platform/values/ascii.h>
#include <MelkarCommon/support/ring_log.h>

#include <string_view>
#include <utility>

namespace melkar {
namespace {

constexpr int kWidest = 99;
constexpr int kMostDecimals = 30;

bool Is(char c, std::string_view any) { return c != 0 && any.find(c) != std::string_view::npos; }

/// Steps over a number. @return false if it is beyond `limit`.
bool SkipNumber(const char*& at, int limit) {
    int number = 0;
    for (; IsDigit(*at); ++at) {
        number = number * 10 + (*at - '0');
        if (number > limit)
            return false;
    }
    return true;
}

/// Steps over what stands behind a per cent sign. @return whether it converts a double.
bool SkipConversion(const char*& at) {
    while (Is(*at, "-+ #0"))
        ++at;
    if (!SkipNumber(at, kWidest))
        return false;
    if (*at == '.' && !SkipNumber(++at, kMostDecimals))
        return false;
    if (*at == 'l') // as in "%lf", which is the same
        ++at;
    return Is(*at, "eEfFgGaA") && *at++;
}

} // namespace

bool IsFigureFormat(const char* format) {
    int conversions = 0;
    for (const char* at = format; *at;) {
        if (*at++ != '%')
            continue;
        if (*at == '%') {
            ++at;
            continue;
        }
        if (!SkipConversion(at))
            return false;
        ++conversions;
    }
    return conversions == 1;
}

FigureFormat::FigureFormat(CString format, const char* fallback) : m_format(std::move(format)) {
    if (m_format.IsEmpty() || IsFigureFormat(m_format))
        return;
    LogText("a format of the profile isn't one of a figure: " + m_format);
    m_format = fallback;
}

CString FigureFormat::Of(double value) const {
    CString text;
    if (!m_format.IsEmpty())
        text.Format(m_format, value);
    return text;
}

} // namespace melkar
