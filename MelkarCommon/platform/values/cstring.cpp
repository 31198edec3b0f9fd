#include <MelkarCommon/platform/cstring.h>

#include <MelkarCommon/platform/values/ascii.h>
#include <MelkarCommon/platform/values/locales.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace {

/// Where in a text of `size` bytes a position lies once it is cut to what is there.
std::size_t Clamp(int position, std::size_t size) {
    return position <= 0 ? 0 : std::min(static_cast<std::size_t>(position), size);
}

int PositionOrNone(std::size_t position) {
    return position == std::string_view::npos ? -1 : static_cast<int>(position);
}

/// Empty if the arguments can't be formatted.
std::string FormatArguments(const char* format, std::va_list arguments) {
    const melkar::ScopedCLocale numbers;
    std::va_list again;
    va_copy(again, arguments);
    char brief[256]; // most texts are captions and figures
    const int length = std::vsnprintf(brief, sizeof brief, format, arguments);
    std::string text;
    if (length > 0 && static_cast<std::size_t>(length) < sizeof brief)
        text.assign(brief, static_cast<std::size_t>(length));
    else if (length > 0) {
        text.resize(static_cast<std::size_t>(length));
        std::vsnprintf(text.data(), text.size() + 1, format, again);
    }
    va_end(again);
    return text;
}

} // namespace

CString::CString(const char* text, int length) {
    if (text && length > 0)
        m_text.assign(text, strnlen(text, static_cast<std::size_t>(length)));
}

void CString::Format(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    // The arguments may point into this text, so it changes only at the end.
    m_text = format ? FormatArguments(format, arguments) : std::string();
    va_end(arguments);
}

CString CString::Left(int count) const { return CString(View().substr(0, Clamp(count, m_text.size()))); }

CString CString::Right(int count) const { return CString(View().substr(m_text.size() - Clamp(count, m_text.size()))); }

CString CString::Mid(int first) const { return CString(View().substr(Clamp(first, m_text.size()))); }

CString CString::Mid(int first, int count) const { return Mid(first).Left(count); }

int CString::Find(const char* what, int from) const {
    return what ? PositionOrNone(m_text.find(what, Clamp(from, m_text.size()))) : -1;
}

int CString::Find(char what, int from) const { return PositionOrNone(m_text.find(what, Clamp(from, m_text.size()))); }

int CString::Replace(const char* what, const char* with) {
    const std::string_view sought = what ? what : "";
    const std::string_view substitute = with ? with : "";
    std::size_t found = sought.empty() ? std::string::npos : m_text.find(sought);
    if (found == std::string::npos)
        return 0;

    std::string replaced; // built aside: either argument may point into this text
    std::size_t copied = 0;
    int count = 0;
    for (; found != std::string::npos; found = m_text.find(sought, copied)) {
        replaced.append(m_text, copied, found - copied).append(substitute);
        copied = found + sought.size();
        ++count;
    }
    replaced.append(m_text, copied);
    m_text = std::move(replaced);
    return count;
}

CString& CString::MakeLower() {
    std::transform(m_text.begin(), m_text.end(), m_text.begin(), melkar::LowerAscii);
    return *this;
}

int CString::Compare(const char* other) const { return View().compare(other ? other : ""); }

CString& CString::operator+=(const CString& tail) {
    m_text += tail.m_text;
    return *this;
}

CString& CString::operator+=(const char* tail) {
    m_text += tail ? tail : "";
    return *this;
}

CString& CString::operator+=(char tail) {
    m_text += tail;
    return *this;
}

CString operator+(const CString& a, const CString& b) { return CString(a) += b; }
CString operator+(const CString& a, const char* b) { return CString(a) += b; }
CString operator+(const char* a, const CString& b) { return CString(a) += b; }
